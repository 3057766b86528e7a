#pragma once

#include <QTableView>

namespace corvane::workbench::gui {

/// The view of the table, whose first column stays in sight while the others are scrolled sideways:
/// then a second view of it alone lies upon the left edge.
class ElementView final : public QTableView {
    Q_OBJECT

public:
    explicit ElementView(QWidget* parent);

    using QTableView::edit;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

signals:
    /// The user wants the menu at the headings.
    void headingMenuWanted(const QPoint& globalPlace);

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void updateGeometries() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildFrozen();
    void connectFrozen();
    void connectHeadings();
    void updateFrozen();
    void placeFrozen();

    QTableView* frozen_;
};

} // namespace corvane::workbench::gui
