#pragma once

#include "workbench/core/edit/Workspace.hpp"

#include <string>

namespace corvane::workbench::core {

/// One edit that was made, and how it is taken back and made again. Steps are undone from the last
/// to the first and redone in their order, so each finds the project as it left it. Neither way can
/// fail, but for want of memory.
class Step {
public:
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step() = default;

    virtual void undo(Workspace& workspace) = 0;
    virtual void redo(Workspace& workspace) = 0;

    /// What the step did, for menus; translated.
    [[nodiscard]] const std::u16string& text() const { return text_; }

protected:
    explicit Step(std::u16string text) : text_(std::move(text)) {}

private:
    std::u16string text_;
};

} // namespace corvane::workbench::core
