#include <corvane/workbench/host/Tree.hpp>

#include <corvane/workbench/host/Model.hpp>

#include "model/Internals.hpp"

#include <algorithm>
#include <utility>

namespace corvane::workbench::host {

using model::Element;
using model::Internals;

namespace {

void notePathChange(const Element& element) {
    if (Model* const tree = modelOf(element))
        tree->notePathChange();
}

/// Gives the references to an element and to what is below it their last paths, to wait in `tree`,
/// if there is one.
void setReferencesWaiting(Element& element, Model* tree) {
    while (auto* const data = Internals::references(element)) {
        Internals::text(*data) = element.path();
        Internals::removeReference(element, *data);
        if (tree != nullptr)
            tree->references().add(*data);
    }
    for (const auto& child : element.childElements())
        setReferencesWaiting(*child, tree);
}

} // namespace

Element& appendChild(Element& parent, std::unique_ptr<Element> child, std::string_view name) {
    Internals::requireRoom(parent.depth(), *child);
    Element& appended = *child;
    auto& children = Internals::children(parent);
    Internals::name(appended) = children.freeName(name, nullptr);
    Internals::setParent(appended, &parent);
    notePathChange(parent);
    children.append(std::move(child));
    return appended;
}

std::unique_ptr<Element> removeChild(Element& parent, const Element& child) {
    auto removed = Internals::children(parent).remove(child);
    setReferencesWaiting(*removed, modelOf(parent));
    notePathChange(parent);
    Internals::setParent(*removed, nullptr);
    return removed;
}

std::vector<std::unique_ptr<Element>> takeChildren(Element& parent,
                                                   std::span<const std::size_t> positions) {
    auto taken = Internals::children(parent).take(positions);
    for (const auto& child : taken)
        Internals::setParent(*child, nullptr);
    notePathChange(parent);
    return taken;
}

void putChildren(Element& parent, std::vector<std::unique_ptr<Element>> added,
                 std::span<const std::size_t> positions) {
    auto& children = Internals::children(parent);
    for (auto& child : added) {
        Internals::name(*child) = children.freeName(child->name(), nullptr);
        Internals::setParent(*child, &parent);
        children.append(std::move(child));
    }
    children.moveLast(positions);
    notePathChange(parent);
}

bool isReferenced(const Element& element) { return Internals::references(element) != nullptr; }

const std::string& rename(Element& element, std::string_view name) {
    Element* const parent = Internals::parent(element);
    if (parent == nullptr)
        return Internals::name(element) = name;
    auto& siblings = Internals::children(*parent);
    std::string newName = siblings.freeName(name, &element);
    if (newName == element.name())
        return element.name();
    siblings.changeName(element, std::move(newName));
    notePathChange(element);
    return element.name();
}

void renameAll(std::span<const NewName> names) {
    while (!names.empty()) {
        Element* const parent = Internals::parent(*names.front().element);
        const auto end = std::ranges::find_if(
            names, [&](const NewName& one) { return Internals::parent(*one.element) != parent; });
        const auto siblings = static_cast<std::size_t>(end - names.begin());
        std::vector<Element*> children;
        std::vector<std::string_view> wanted;
        for (const auto& [child, name] : names.first(siblings)) {
            children.push_back(child);
            wanted.push_back(name);
        }
        Internals::children(*parent).changeNames(children, wanted);
        notePathChange(*parent);
        names = names.subspan(siblings);
    }
}

std::unique_ptr<skill::Element> replaceSkillElement(Element& element, Element& successor) {
    while (auto* const data = Internals::references(successor)) {
        Internals::removeReference(successor, *data);
        Internals::addReference(element, *data);
    }
    auto replaced = std::move(Internals::skillElement(successor));
    swapSkillElement(element, replaced);
    return replaced;
}

void swapSkillElement(Element& element, std::unique_ptr<skill::Element>& other) {
    auto& own = Internals::skillElement(element);
    std::swap(own, other);
    Internals::setModelElement(*own, &element);
    Internals::setModelElement(*other, nullptr);
}

} // namespace corvane::workbench::host
