#pragma once

#include "workbench/gui/problems/ProblemsModel.hpp"

#include <QTableView>
#include <QWidget>

class QLabel;

namespace corvane::workbench::gui {

/// The list of what is wrong in the project or looks as if; a click leads to the field.
class ProblemsPanel : public QWidget {
    Q_OBJECT

public:
    ProblemsPanel(ProjectSession& session, QWidget* parent);

    [[nodiscard]] ProblemsModel& model() const { return *model_; }
    /// What the menu at a problem offers.
    void offer(const QList<QAction*>& actions);
    void focusList();
    /// Without its list the panel is one line high.
    [[nodiscard]] bool isOpen() const;
    void setOpen(bool open);
    /// Goes to the problem below the current one, from the last one to the first.
    void activateNext();

signals:
    /// The user wants to see the field of the control with this key.
    void activated(model::Element* element, const std::string& key);

private:
    void activate(const QModelIndex& index);
    void showCounts();

    ProblemsModel* model_;
    QTableView* view_;
    QLabel* title_;
    int next_ = 0; // row for activateNext
};

} // namespace corvane::workbench::gui
