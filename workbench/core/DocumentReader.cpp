#include "workbench/core/DocumentReader.hpp"

#include "workbench/core/DocumentError.hpp"

#include <corvane/workbench/config/DocumentKeys.hpp>
#include <corvane/workbench/model/Model.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <array>
#include <string>

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;

constexpr std::array<std::string_view, 2> kHostMembers{config::kNameKey.text(),
                                                       config::kChildrenKey.text()};

std::string nameOf(decoder::Object& members) {
    auto name = members.find(config::kNameKey.text());
    if (!name)
        members.fail("the element has no name", config::kNameKey.text());
    const std::string_view text = name->asString();
    if (text.empty())
        members.fail("an element's name must not be empty", config::kNameKey.text());
    return std::string(text);
}

void load(model::Element& element, decoder::Object& members, config::Context& context) try {
    members.rewind();
    element.getSkillElement()->load(members, context);
    // A member that the element left unread would be lost when the project is saved.
    if (const auto left = members.next())
        config::throwUnknownParameterError(left->name);
} catch (const std::runtime_error& error) {
    throw DocumentError("element \"" + element.path() + "\": " + error.what());
}

} // namespace

template <class Accepts, class Append>
void DocumentReader::readDocument(decoder::Value document, const Accepts& accepts,
                                  const Append& append) {
    auto object = document.asObject();
    auto member = object.next();
    if (!member)
        object.fail("an element document has one member, its class and content");
    const auto& entry = classOf(member->name);
    if (!accepts(entry))
        object.fail("an element of this class cannot stand here", entry.documentKey);

    auto members = member->value.asObject();
    members.passOver(kHostMembers);
    const auto name = nameOf(members);
    model::Element& element =
        append(std::make_unique<model::Element>(*entry.elementClass,
                                                entry.elementClass->factory().createElement()),
               name);
    load(element, members, context_);
    readChildren(members, element);
    if (object.next())
        object.fail("an element document has only one member");
}

void DocumentReader::readProject(decoder::Array& documents, model::Element& root) {
    while (auto document = documents.next())
        readDocument(
            *document, [](const LoadedClass& entry) { return entry.topLevel; },
            [&](auto element, const auto& name) -> model::Element& {
                return root.appendChild(std::move(element), name);
            });
}

void DocumentReader::readStaged(decoder::Array& documents, model::Staging& staging) {
    const auto& target = staging.target();
    const auto* const model = target.model();
    const bool atTop = model != nullptr && &model->root() == &target;
    while (auto document = documents.next())
        readDocument(
            *document,
            [&](const LoadedClass& entry) {
                return atTop ? entry.topLevel
                             : target.elementClass().acceptsChild(*entry.elementClass);
            },
            [&](auto element, const auto& name) -> model::Element& {
                return staging.append(std::move(element), name);
            });
}

void DocumentReader::readChildren(decoder::Object& members, model::Element& parent) {
    auto children = members.find(config::kChildrenKey.text());
    if (!children)
        return;
    auto documents = children->asArray();
    const auto& parentClass = parent.elementClass();
    while (auto document = documents.next())
        readDocument(
            *document,
            [&](const LoadedClass& entry) { return parentClass.acceptsChild(*entry.elementClass); },
            [&](auto element, const auto& name) -> model::Element& {
                return parent.appendChild(std::move(element), name);
            });
}

const LoadedClass& DocumentReader::classOf(std::string_view documentKey) {
    if (lastClass_ != nullptr && lastClass_->documentKey == documentKey)
        return *lastClass_;
    const auto* const found = plugins_->findClass(documentKey);
    if (found == nullptr)
        throw DocumentError("no loaded plug-in has the element class \"" +
                            std::string(documentKey) + "\"");
    lastClass_ = found;
    return *found;
}

} // namespace corvane::workbench::core
