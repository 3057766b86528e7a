#pragma once

#include "workbench/core/edit/workspace/Workspace.hpp"

#include <string>

namespace corvane::workbench::core {

/// One edit, which knows how it is made, taken back and made again. A step has one life: it is made
/// knowing only what it shall do, performed once by the history, then undone and redone in turns.
/// Steps are undone from the last to the first and redone in their order, so each finds the project
/// as it left it.
class Step {
public:
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step() = default;

    /// Makes the edit for the first time; false where there was nothing to change, and the step is
    /// not worth keeping. What is thrown (EditError where the project refuses the edit) leaves the
    /// project as it was.
    [[nodiscard]] virtual bool perform(Workspace& workspace) = 0;

    /// Neither way can fail, but for want of memory.
    virtual void undo(Workspace& workspace) = 0;
    virtual void redo(Workspace& workspace) = 0;

    /// What the step does, for menus; translated.
    [[nodiscard]] const std::u16string& text() const { return text_; }

protected:
    Step() = default;
    explicit Step(std::u16string text) : text_(std::move(text)) {}

    /// For a step that can say only while it is performed what it does.
    void setText(std::u16string text) { text_ = std::move(text); }

private:
    std::u16string text_;
};

} // namespace corvane::workbench::core
