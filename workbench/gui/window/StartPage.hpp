#pragma once

#include "workbench/gui/look/Actions.hpp"

#include <QWidget>

class QMenu;
class QVBoxLayout;

namespace corvane::workbench::gui {

/// What is seen of a project without elements: how to begin.
class StartPage : public QWidget {
    Q_OBJECT

public:
    /// `addMenu` adds elements; it is shown at the button with `addText`.
    StartPage(const Actions& actions, const QString& addText, QMenu& addMenu, QWidget* parent);

    /// Lists the recent projects anew.
    void refresh();

signals:
    void projectChosen(const QString& file);

private:
    QVBoxLayout* recent_;
};

} // namespace corvane::workbench::gui
