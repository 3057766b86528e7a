#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <vector>

namespace corvane::workbench::gui {

/// A part of the window in which the user selects elements, to give commands on them.
class ElementPart {
public:
    /// The element that the keyboard is at; null for none.
    [[nodiscard]] virtual model::Element* current() const = 0;

    /// The selected elements, in the order in which they are shown.
    [[nodiscard]] virtual std::vector<model::Element*> selected() const = 0;
    [[nodiscard]] virtual bool hasSelection() const = 0;

    /// Lets the user type another name for the current element.
    virtual void renameCurrent() = 0;

protected:
    ElementPart() = default;
    ElementPart(const ElementPart&) = default;
    ElementPart& operator=(const ElementPart&) = default;
    ~ElementPart() = default;
};

} // namespace corvane::workbench::gui
