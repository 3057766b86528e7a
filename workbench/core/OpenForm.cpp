#include "workbench/core/OpenForm.hpp"

#include "workbench/core/ElementWalk.hpp"

#include <map>

namespace corvane::workbench::core {

namespace {

/// Picks the button with an extension out of a form.
class ButtonFinder final : public ui::ControlVisitor {
public:
    explicit ButtonFinder(std::string_view extension) : extension_(extension) {}

    void visit(ui::TextField&) override {}
    void visit(ui::SpinBoxControl&) override {}
    void visit(ui::InfoField&) override {}
    void visit(ui::ChoiceList&) override {}
    void visit(ui::FlagChoice&) override {}
    void visit(ui::ReferenceChooser&) override {}
    void visit(ui::PushButton& button) override {
        if (found == nullptr && button.extension() == extension_)
            found = &button;
    }

    ui::PushButton* found = nullptr;

private:
    std::string_view extension_;
};

bool canImport(model::Element& element, std::string_view extension) {
    return OpenForm(element).importButton(extension) != nullptr;
}

} // namespace

OpenForm::OpenForm(model::Element& element) : binding_(element.getSkillElement()->createBinding()) {
    binding_->buildForm(ui::Form(contents_));
}

ui::PushButton* OpenForm::importButton(std::string_view extension) const {
    ButtonFinder finder(extension);
    for (ui::Control* const control : controls())
        control->accept(finder);
    return finder.found;
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

model::Element* addImportTarget(Project& project, std::string_view extension) {
    auto& root = project.model().root();
    for (const auto& skill : project.plugins().skills())
        for (const auto& entry : skill.classes) {
            if (!entry.topLevel)
                continue;
            auto& element = project.add(root, entry, entry.elementClass->name());
            if (canImport(element, extension))
                return &element;
            static_cast<void>(root.removeChild(element));
        }
    return nullptr;
}

} // namespace corvane::workbench::core
