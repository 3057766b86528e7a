#include "workbench/core/project/DocumentReader.hpp"

#include <corvane/workbench/config/DocumentKeys.hpp>
#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <array>
#include <initializer_list>
#include <string>

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;

constexpr std::array<std::string_view, 2> kHostMembers{config::kNameKey.text(),
                                                       config::kChildrenKey.text()};

std::string textOf(std::string_view text, std::initializer_list<std::string_view> arguments = {}) {
    return i18n::translateToUtf8("corvane::workbench::core::DocumentReader", text, arguments);
}

std::string nameOf(decoder::Object& members, bool mayBeEmpty) {
    auto name = members.find(config::kNameKey.text());
    if (!name)
        members.fail(textOf("the element has no name"), config::kNameKey.text());
    const std::string_view text = name->asString();
    if (text.empty() && !mayBeEmpty)
        members.fail(textOf("an element's name must not be empty"), config::kNameKey.text());
    return std::string(text);
}

void load(model::Element& element, decoder::Object& members, config::Context& context) try {
    members.rewind();
    element.getSkillElement()->load(members, context);
    // A member that the element left unread would be lost when the project is saved.
    if (const auto left = members.next())
        config::throwUnknownParameterError(left->name);
} catch (const std::runtime_error& error) {
    throw DocumentError(textOf("element “{}”: {}", {element.path(), error.what()}));
}

} // namespace

template <class Append>
void DocumentReader::readDocument(decoder::Value document, const model::Element& parent,
                                  const Append& append) {
    auto object = document.asObject();
    auto member = object.next();
    if (!member)
        object.fail(textOf("an element document has one member, its class and content"));
    const auto& entry = classOf(member->name);
    if (!entry.mayStandBelow(parent))
        object.fail(textOf("an element of this class cannot stand here"), entry.documentKey);

    auto members = member->value.asObject();
    members.passOver(kHostMembers);
    const auto name = nameOf(members, mayBeNameless_);
    model::Element& element =
        append(std::make_unique<model::Element>(*entry.elementClass,
                                                entry.elementClass->factory().createElement()),
               name);
    load(element, members, context_);
    if (readsChildren_)
        if (auto children = members.find(config::kChildrenKey.text()))
            readBelow(children->asArray(), element);
    if (object.next())
        object.fail(textOf("an element document has only one member"));
}

void DocumentReader::readBelow(decoder::Array documents, model::Element& parent) {
    while (auto document = documents.next())
        readDocument(*document, parent, [&](auto element, const auto& name) -> model::Element& {
            return host::appendChild(parent, std::move(element), name);
        });
}

void DocumentReader::readProject(decoder::Array documents, model::Element& root) {
    mayBeNameless_ = false;
    readBelow(documents, root);
}

void DocumentReader::readStaged(decoder::Array documents, host::Staging& staging) {
    mayBeNameless_ = true;
    while (auto document = documents.next())
        readDocument(*document, staging.target(),
                     [&](auto element, const auto& name) -> model::Element& {
                         return staging.append(std::move(element), name);
                     });
}

const LoadedClass& DocumentReader::classOf(std::string_view documentKey) {
    if (lastClass_ != nullptr && lastClass_->documentKey == documentKey)
        return *lastClass_;
    const auto* const found = plugins_->findClass(documentKey);
    if (found == nullptr)
        throw DocumentError(textOf("no loaded plug-in has the element class “{}”", {documentKey}));
    lastClass_ = found;
    return *found;
}

} // namespace corvane::workbench::core
