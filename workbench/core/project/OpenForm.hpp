#pragma once

#include "workbench/core/project/Project.hpp"

#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/ui/Form.hpp>
#include <corvane/workbench/ui/PushButton.hpp>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

/// An element's property form, built and alive.
class OpenForm {
public:
    /// `element` must outlive the form.
    explicit OpenForm(model::Element& element);

    /// Shows another element of the same class with the same controls. False, with nothing
    /// changed, where the class's forms cannot: then a new one is needed, which shows the same.
    [[nodiscard]] bool moveTo(model::Element& element) {
        return binding_->moveTo(*element.getSkillElement());
    }

    /// The controls in form order.
    [[nodiscard]] std::vector<ui::Control*> controls() const { return contents_.controls(); }

    /// The control with this key; null if the form has none.
    [[nodiscard]] ui::Control* find(std::string_view key) const { return contents_.find(key); }

    /// The button with this key; null if the form has none.
    [[nodiscard]] ui::PushButton* button(std::string_view key) const;

    /// The button that imports files with this extension (".db"); null if the form has none.
    [[nodiscard]] ui::PushButton* importButton(std::string_view extension) const;

private:
    std::unique_ptr<skill::Binding> binding_;
    ui::FormContents contents_;
};

/// The forms of many elements, one after the other. Elements of a class share one form where its
/// forms can move, which spares nearly all of the time that making a form takes.
class FormSeries {
public:
    /// The form of an element, which must outlive the series. It is good until the next one is
    /// asked for.
    [[nodiscard]] const OpenForm& of(model::Element& element);

private:
    std::map<const skill::Element::Class*, std::unique_ptr<OpenForm>> forms_;
};

/// The extension by which buttons are told what a file is: its name from the last dot on, ".db", in
/// lower case; empty where there is no dot.
[[nodiscard]] std::string importExtensionOf(const std::filesystem::path& file);

/// Whether the element's form has a button that imports files with this extension.
[[nodiscard]] bool canImport(model::Element& element, std::string_view extension);

/// The elements of the project that can import files with this extension, in their order.
[[nodiscard]] std::vector<model::Element*> importTargets(const Project& project,
                                                         std::string_view extension);

/// Files that the elements at the top of a project can import.
struct ImportKind {
    std::u16string label;  // of the button that does, translated
    std::string extension; // ".db"
};

/// All that the loaded classes offer, each extension once.
[[nodiscard]] std::vector<ImportKind> importKinds(const PluginHost& plugins);

/// Adds a new element that can import files with this extension to the top of the project, named
/// like its class; null if no loaded class can.
model::Element* addImportTarget(Project& project, std::string_view extension);

} // namespace corvane::workbench::core
