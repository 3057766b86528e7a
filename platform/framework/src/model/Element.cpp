#include <corvane/workbench/model/Element.hpp>

#include <corvane/workbench/model/Model.hpp>

#include "model/ChildList.hpp"

#include <algorithm>
#include <ranges>
#include <stdexcept>
#include <utility>

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
    skillElement_->modelElement_ = this;
}

Element::Element(Model* model) : model_(model) {}

Element::~Element() {
    // The children first: they may look upwards while they go.
    children_.reset();
    skillElement_.reset();
    for (auto* data = references_; data != nullptr;) {
        static_cast<void>(data->text()); // which brings the text that stays up to date
        data->element_ = nullptr;
        data = std::exchange(data->nextOfElement_, nullptr);
    }
}

std::span<const std::unique_ptr<Element>> Element::childElements() const {
    if (children_ == nullptr)
        return {};
    return children_->elements();
}

Element* Element::findChild(std::string_view name) const {
    return children_ == nullptr ? nullptr : children_->find(name);
}

ElementReference Element::makeReference() {
    if (references_ == nullptr)
        addReference(*new ElementReferenceData(std::string()));
    return ElementReference(references_);
}

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

Model* Element::model() const {
    const auto* element = this;
    while (element->parent_ != nullptr)
        element = element->parent_;
    return element->model_;
}

unsigned Element::depth() const {
    unsigned depth = 0;
    for (const auto* above = parent_; above != nullptr; above = above->parent_)
        ++depth;
    return depth;
}

unsigned Element::height() const {
    unsigned below = 0;
    for (const auto& child : childElements())
        below = std::max(below, child->height() + 1);
    return below;
}

void Element::requireRoom(unsigned depthOfParent, const Element& child) {
    if (depthOfParent + child.height() >= kMaxDepth)
        throw std::runtime_error("elements are nested too deeply");
}

Element& Element::appendChild(std::unique_ptr<Element> child, std::string_view name) {
    requireRoom(depth(), *child);
    Element& appended = *child;
    appended.name_ = children().freeName(name, nullptr);
    appended.parent_ = this;
    appended.parentIsRoot_ = isRoot();
    if (Model* const tree = model(); tree != nullptr)
        ++tree->epoch_;
    children().append(std::move(child));
    return appended;
}

std::unique_ptr<Element> Element::removeChild(const Element& child) {
    Model* const tree = model();
    auto removed = children().remove(child);
    removed->setReferencesWaiting(tree);
    if (tree != nullptr)
        ++tree->epoch_;
    removed->parent_ = nullptr;
    removed->parentIsRoot_ = false;
    return removed;
}

std::vector<std::unique_ptr<Element>>
Element::takeChildren(std::span<const std::size_t> positions) {
    auto taken = children().take(positions);
    for (const auto& child : taken) {
        child->parent_ = nullptr;
        child->parentIsRoot_ = false;
    }
    if (Model* const tree = model(); tree != nullptr)
        ++tree->epoch_;
    return taken;
}

void Element::putChildren(std::vector<std::unique_ptr<Element>> added,
                          std::span<const std::size_t> positions) {
    for (auto& child : added) {
        child->name_ = children().freeName(child->name_, nullptr);
        child->parent_ = this;
        child->parentIsRoot_ = isRoot();
        children().append(std::move(child));
    }
    children().moveLast(positions);
    if (Model* const tree = model(); tree != nullptr)
        ++tree->epoch_;
}

const std::string& Element::rename(std::string_view name) {
    if (parent_ == nullptr)
        return name_ = name;
    auto& siblings = parent_->children();
    std::string newName = siblings.freeName(name, this);
    if (newName == name_)
        return name_;
    siblings.changeName(*this, std::move(newName));
    if (Model* const tree = model(); tree != nullptr)
        ++tree->epoch_;
    return name_;
}

bool Element::isNameTaken(std::string_view name, const Element* except) const {
    const Element* const owner = findChild(name);
    return owner != nullptr && owner != except;
}

std::unique_ptr<skill::Element> Element::replaceSkillElement(Element& successor) {
    while (auto* const data = successor.references_) {
        successor.removeReference(*data);
        addReference(*data);
    }
    auto replaced = std::move(successor.skillElement_);
    swapSkillElement(replaced);
    return replaced;
}

void Element::swapSkillElement(std::unique_ptr<skill::Element>& other) {
    std::swap(skillElement_, other);
    skillElement_->modelElement_ = this;
    other->modelElement_ = nullptr;
}

ChildList& Element::children() {
    if (children_ == nullptr)
        children_ = std::make_unique<ChildList>();
    return *children_;
}

void Element::addReference(ElementReferenceData& data) {
    data.element_ = this;
    data.textEpoch_ = 0;
    data.nextOfElement_ = std::exchange(references_, &data);
}

void Element::removeReference(ElementReferenceData& data) {
    auto** link = &references_;
    while (*link != &data)
        link = &(*link)->nextOfElement_;
    *link = std::exchange(data.nextOfElement_, nullptr);
    data.element_ = nullptr;
}

void Element::setReferencesWaiting(Model* model) {
    while (auto* const data = references_) {
        data->text_ = path();
        removeReference(*data);
        if (model != nullptr)
            model->references_.add(*data);
    }
    for (const auto& child : childElements())
        child->setReferencesWaiting(model);
}

std::string escapeName(std::string_view name) {
    std::string escaped;
    appendEscaped(escaped, name);
    return escaped;
}

} // namespace corvane::workbench::model
