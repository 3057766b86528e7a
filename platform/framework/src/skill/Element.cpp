#include <corvane/workbench/skill/Element.hpp>

#include <corvane/workbench/config/UnknownParameterError.hpp>
#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/skill/Binding.hpp>

#include <ranges>
#include <vector>

namespace corvane::workbench::skill {

Binding::~Binding() = default;

void Binding::buildForm(ui::Form form) {
    // An element without fields still refuses a form that is none.
    static_cast<void>(form.group());
}

bool Binding::moveTo(Element&) { return false; }

void Element::forEachSubPropertyContainer(function_ref<void(PropertyContainer&)> visit) {
    if (modelElement_ == nullptr)
        return;
    for (const auto& child : modelElement_->childElements())
        visit(*child->getSkillElement());
}

void Element::configureProperties(bindings::PropertyConfigurationContext&) {}

void Element::load(utils::json::decoder::Object& members, config::Context&) {
    if (const auto member = members.next())
        config::throwUnknownParameterError(member->name);
}

void Element::save(utils::json::encoder::Object&) const {}

void Element::makeDefault() {}

bool Element::forEachAttribute(function_ref<bool(const model::Attribute&)>) const { return false; }

bool Element::forEachEvent(function_ref<bool(const process::Event&)>) const { return false; }

bool Element::forEachTask(function_ref<bool(const process::Task&)>) const { return false; }

std::unique_ptr<Binding> Element::createBinding() {
    return std::make_unique<ElementBinding<Element>>(*this);
}

std::optional<utils::core::Uuid> Element::importId() const { return std::nullopt; }

bool Element::hasImportIdOf(const Element& other) const {
    const auto id = importId();
    return id && id == other.importId();
}

Element::Summary Element::summary() const { return {}; }

data::MemoryUse Element::memoryUse() const { return {}; }

void Element::importMerge(const Element&) {}

bool Element::preserveExistingNameOnImport() const { return false; }

const std::string& Element::name() const {
    static const std::string none;
    return modelElement_ == nullptr ? none : modelElement_->name();
}

std::string Element::primaryKey() const {
    std::vector<const std::string*> names;
    for (const auto* element = modelElement_; element != nullptr;
         element = element->parentElement())
        names.push_back(&element->name());
    std::string key;
    for (const auto* name : std::views::reverse(names)) {
        if (!key.empty())
            key += '.';
        key += *name;
    }
    return key;
}

void Element::publishElementMembers() {
    publishValue(bindings::PropertyId(*this), bindings::Action::members);
}

} // namespace corvane::workbench::skill
