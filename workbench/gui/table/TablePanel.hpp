#pragma once

#include "workbench/gui/look/Actions.hpp"
#include "workbench/gui/session/ElementPart.hpp"
#include "workbench/gui/table/BulkEditBar.hpp"
#include "workbench/gui/table/ColumnLayout.hpp"
#include "workbench/gui/table/ElementView.hpp"
#include "workbench/gui/table/TableClipboard.hpp"
#include "workbench/gui/table/TableModel.hpp"

#include <QWidget>

class QComboBox;
class QLabel;
class QToolButton;

namespace corvane::workbench::gui {

class FilterLine;

/// The table of the elements below the selected one, class by class.
class TablePanel : public QWidget, public ElementPart {
    Q_OBJECT

public:
    TablePanel(ProjectSession& session, ClassIcons& icons, const Actions& actions, QWidget* parent);

    /// Shows what is below an element, or beside it where nothing is below; null for everything.
    void setScope(model::Element* element);

    /// Shows elements that stand beside each other, with their siblings, as long as the scope is
    /// the first of them. There is at least one.
    void showSiblings(const std::vector<model::Element*>& elements);
    [[nodiscard]] bool showsSiblings() const { return amongSiblings_ != nullptr; }
    /// Shows what `setScope` was told, as ever.
    void leaveSiblings();

    [[nodiscard]] model::Element* current() const override;
    [[nodiscard]] std::vector<model::Element*> selected() const override;
    [[nodiscard]] bool hasSelection() const override;
    void renameCurrent() override;

    /// What the menu at a row offers.
    void offer(const QList<QAction*>& actions);

    [[nodiscard]] TableClipboard& clipboard() const { return *clipboard_; }

    void focusTable();
    void focusFilter();
    /// Offers to change all selected rows at once.
    void changeSelected();

signals:
    /// The user wants to see this element in the tree.
    void elementActivated(model::Element* element);
    void selectionChanged();

protected:
    /// The table's own keys, which mean something else in other parts of the window.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildLayout();
    void connectParts();
    void offerClasses();
    void takeClass();
    void fitColumns();
    void showCount();
    void updateBulkEdit();
    void showColumn(const std::string& key);
    void updateCommands();
    [[nodiscard]] QAction* ownCommand(const QKeyEvent& key) const;
    void offerColumns(const QPoint& globalPlace);

    ProjectSession* session_;
    ClassIcons* icons_;
    const Actions* actions_;
    TableModel* model_;
    ElementView* view_;
    ColumnLayout* columns_ = nullptr;
    TableClipboard* clipboard_;
    QComboBox* classes_;
    FilterLine* filter_;
    QLabel* count_;
    QToolButton* change_;
    BulkEditBar* bulkEdit_;
    QTimer filterLater_;
    QTimer selectionLater_;                              // a selection of many ranges tells of each
    const skill::Element::Class* wantedClass_ = nullptr; // the user's last choice
    model::Element* amongSiblings_ = nullptr;            // the scope meanwhile; null for none
    const skill::Element::Class* siblingsClass_ = nullptr;
    bool bulkEditWanted_ = false;
};

} // namespace corvane::workbench::gui
