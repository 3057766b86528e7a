#include "workbench/core/project/OpenForm.hpp"

#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/utils/string/Ascii.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <algorithm>

namespace corvane::workbench::core {

namespace {

/// Keeps a control that is a button.
class ButtonFinder final : public ui::ControlVisitor {
public:
    void visit(ui::TextField&) override {}
    void visit(ui::SpinBoxControl&) override {}
    void visit(ui::InfoField&) override {}
    void visit(ui::ChoiceList&) override {}
    void visit(ui::FlagChoice&) override {}
    void visit(ui::ReferenceChooser&) override {}
    void visit(ui::PushButton& button) override { found = &button; }

    ui::PushButton* found = nullptr;
};

ui::PushButton* asButton(ui::Control& control) {
    ButtonFinder finder;
    control.accept(finder);
    return finder.found;
}

} // namespace

OpenForm::OpenForm(model::Element& element) : binding_(element.getSkillElement()->createBinding()) {
    binding_->buildForm(ui::Form(contents_));
}

ui::PushButton* OpenForm::button(std::string_view key) const {
    auto* const control = find(key);
    return control == nullptr ? nullptr : asButton(*control);
}

ui::PushButton* OpenForm::importButton(std::string_view extension) const {
    for (ui::Control* const control : controls())
        if (auto* const button = asButton(*control);
            button != nullptr && button->extension() == extension)
            return button;
    return nullptr;
}

const OpenForm& FormSeries::of(model::Element& element) {
    auto& form = forms_[&element.elementClass()];
    if (!form || !form->moveTo(element))
        form = std::make_unique<OpenForm>(element);
    return *form;
}

std::string importExtensionOf(const std::filesystem::path& file) {
    const auto name = file.filename().string();
    const auto dot = name.rfind('.');
    if (dot == std::string::npos)
        return {};
    auto extension = name.substr(dot);
    std::ranges::transform(extension, extension.begin(), utils::string::ascii::foldCase);
    return extension;
}

bool canImport(model::Element& element, std::string_view extension) {
    return OpenForm(element).importButton(extension) != nullptr;
}

std::vector<model::Element*> importTargets(const Project& project, std::string_view extension) {
    // All elements of a class have the same controls: one form of each class is looked at.
    std::map<const skill::Element::Class*, bool> known;
    std::vector<model::Element*> targets;
    forEachElement(project.model().root().childElements(), [&](model::Element& element) {
        const auto [entry, isNew] = known.try_emplace(&element.elementClass(), false);
        if (isNew)
            entry->second = canImport(element, extension);
        if (entry->second)
            targets.push_back(&element);
    });
    return targets;
}

std::vector<ImportKind> importKinds(const PluginHost& plugins) {
    Project scratch(plugins);
    std::vector<ImportKind> kinds;
    for (const auto& skill : plugins.skills())
        for (const auto& entry : skill.classes) {
            if (!entry.topLevel)
                continue;
            const OpenForm form(
                scratch.add(scratch.model().root(), entry, entry.elementClass->name()));
            for (ui::Control* const control : form.controls()) {
                const auto* const button = asButton(*control);
                if (button != nullptr && std::ranges::find(kinds, button->extension(),
                                                           &ImportKind::extension) == kinds.end())
                    kinds.push_back({button->texts().label, button->extension()});
            }
        }
    return kinds;
}

model::Element* addImportTarget(Project& project, std::string_view extension) {
    auto& root = project.model().root();
    for (const auto& skill : project.plugins().skills())
        for (const auto& entry : skill.classes) {
            if (!entry.mayStandBelow(root))
                continue;
            auto& element = project.add(root, entry, entry.elementClass->name());
            if (canImport(element, extension))
                return &element;
            static_cast<void>(host::removeChild(root, element));
        }
    return nullptr;
}

} // namespace corvane::workbench::core
