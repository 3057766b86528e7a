#pragma once

#include "workbench/core/Project.hpp"

#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/ui/Form.hpp>
#include <corvane/workbench/ui/PushButton.hpp>

#include <memory>
#include <optional>
#include <string_view>

namespace corvane::workbench::core {

/// An element's property form, built and alive.
class OpenForm {
public:
    /// `element` must outlive the form.
    explicit OpenForm(model::Element& element);

    /// The controls in form order.
    [[nodiscard]] std::vector<ui::Control*> controls() const { return contents_.controls(); }

    /// The button that imports files with this extension (".db"); null if the form has none.
    [[nodiscard]] ui::PushButton* importButton(std::string_view extension) const;

private:
    std::unique_ptr<skill::Binding> binding_;
    ui::FormContents contents_;
};

/// The elements of the project that can import files with this extension, in their order.
[[nodiscard]] std::vector<model::Element*> importTargets(const Project& project,
                                                         std::string_view extension);

/// Adds a new element that can import files with this extension to the top of the project, named
/// like its class; null if no loaded class can.
model::Element* addImportTarget(Project& project, std::string_view extension);

} // namespace corvane::workbench::core
