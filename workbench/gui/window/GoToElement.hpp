#pragma once

#include "workbench/gui/look/TextMatch.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/session/TreeWalk.hpp"

#include <QDialog>

#include <vector>

class QLineEdit;
class QListWidget;

namespace corvane::workbench::gui {

class ProjectSession;

/// Finds an element by a part of its path, as the user types: the first ones are listed, and Enter
/// goes to the chosen one.
class GoToElement : public QDialog {
    Q_OBJECT

public:
    /// More than anyone looks through.
    static constexpr int kMaxListed = 100;

    GoToElement(ProjectSession& session, QWidget* parent);

    /// Begins anew.
    void open() override;

signals:
    void chosen(model::Element* element);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look();
    bool lookOn(TreeWalk& walk);
    void choose();
    void forget();

    ProjectSession* session_;
    Slicer slicer_;
    QLineEdit* line_;
    QListWidget* list_;
    std::vector<model::Element*> found_; // as they are listed
    TextMatch match_{QString()};
};

} // namespace corvane::workbench::gui
