#pragma once

#include "workbench/gui/memory/MemoryView.hpp"
#include "workbench/gui/session/ElementPart.hpp"
#include "workbench/gui/session/ProjectSession.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/session/TreeWalk.hpp"

#include <QTimer>
#include <QWidget>

class QComboBox;
class QLabel;

namespace corvane::workbench::gui {

/// The memory that the selected element is or lies in, as a picture. It is looked for only while it
/// is seen, and between events.
class MemoryPanel : public QWidget {
    Q_OBJECT

public:
    /// `selection` says which element is meant, and outlives the panel.
    MemoryPanel(ProjectSession& session, const ElementPart& selection, QWidget* parent);

    /// To be called when another element is selected.
    void refreshSoon();
    void focusMap();

signals:
    /// The user wants to see this element.
    void activated(model::Element* element);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildLayout();
    void connectToSession();
    void drop();
    void changed();
    void refresh();
    bool collect(TreeWalk& walk, core::MemoryMapBuilder& builder);
    void show(std::optional<core::MemoryMap> map);

    ProjectSession* session_;
    const ElementPart* selection_;
    MemoryView* view_;
    QLabel* title_;
    QComboBox* width_;
    Slicer slicer_;
    QTimer refresh_;
    bool stale_ = true; // the map shows what may have changed
};

} // namespace corvane::workbench::gui
