#include <corvane/workbench/model/Element.hpp>

#include "model/ChildList.hpp"
#include "model/Internals.hpp"

#include <ranges>
#include <utility>
#include <vector>

namespace corvane::workbench::model {

namespace {

void appendEscaped(std::string& path, std::string_view name) {
    for (const char c : name) {
        if (c == '~')
            path += "~0";
        else if (c == '/')
            path += "~1";
        else
            path += c;
    }
}

} // namespace

Element::Element(const skill::Element::Class& elementClass, std::unique_ptr<skill::Element> element)
    : elementClass_(&elementClass), skillElement_(std::move(element)) {
    Internals::setModelElement(*skillElement_, this);
}

Element::Element(Tree* tree) : tree_(tree) {}

Element::~Element() {
    utils::thread::expectOwner();
    // The children first: they may look upwards while they go.
    children_.reset();
    skillElement_.reset();
    if (references_ != nullptr)
        Internals::letReferencesGo(*this);
}

std::span<const std::unique_ptr<Element>> Element::childElements() const {
    if (children_ == nullptr)
        return {};
    return children_->elements();
}

Element* Element::findChild(std::string_view name) const {
    return children_ == nullptr ? nullptr : children_->find(name);
}

ElementReference Element::makeReference() { return Internals::makeReference(*this); }

std::string Element::path() const {
    std::vector<const std::string*> names;
    for (const auto* element = this; element != nullptr; element = element->parentElement())
        names.push_back(&element->name_);
    std::string path;
    for (const auto* name : std::views::reverse(names)) {
        path += '/';
        appendEscaped(path, *name);
    }
    return path;
}

const Tree* Element::tree() const { return Internals::tree(*this); }

unsigned Element::depth() const {
    unsigned depth = 0;
    for (const auto* above = parent_; above != nullptr; above = above->parent_)
        ++depth;
    return depth;
}

bool Element::isNameTaken(std::string_view name, const Element* except) const {
    const Element* const owner = findChild(name);
    return owner != nullptr && owner != except;
}

std::string escapeName(std::string_view name) {
    std::string escaped;
    appendEscaped(escaped, name);
    return escaped;
}

} // namespace corvane::workbench::model
