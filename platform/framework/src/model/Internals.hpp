#pragma once

#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include "model/ChildList.hpp"

#include <memory>
#include <string>
#include <utility>

namespace corvane::workbench::model {

/// The one friend of elements and references: what the host's operations need beyond what everybody
/// may ask. Only the sources of this library see it.
class Internals {
public:
    using Data = ElementReferenceData;

    /// An element without a class: the root of `tree`, or of what is being staged (null).
    static Element makeRoot(Tree* tree) { return Element(tree); }

    /// The tree that the element stands in; null if it stands in none.
    static Tree* tree(const Element& element);

    static std::string& name(Element& element) { return element.name_; }

    /// The element above, be it a root.
    static Element* parent(const Element& element) { return element.parent_; }

    /// Says that `child` stands below `parent`; nowhere, where that is null.
    static void setParent(Element& child, Element* parent) {
        child.parent_ = parent;
        child.parentIsRoot_ = parent != nullptr && parent->isRoot();
    }

    /// The list of children, made where there never was one.
    static ChildList& children(Element& element) {
        utils::thread::expectOwner();
        if (element.children_ == nullptr)
            element.children_ = std::make_unique<ChildList>();
        return *element.children_;
    }

    /// Throws std::runtime_error where `child`, below an element on level `depthOfParent`, or
    /// something below it would stand too deep.
    static void requireRoom(unsigned depthOfParent, const Element& child);

    /// Whether an element that is being imported has taken the place of this one.
    static bool isPaired(const Element& element) { return element.paired_; }
    static void setPaired(Element& element, bool paired) { element.paired_ = paired; }

    static std::unique_ptr<skill::Element>& skillElement(Element& element) {
        utils::thread::expectOwner();
        return element.skillElement_;
    }
    static void setModelElement(skill::Element& element, Element* place) {
        element.modelElement_ = place;
    }

    // References. An element knows the data of those that refer to it, in a chain.

    static Data& makeData(std::string text) { return *new Data(std::move(text)); }
    static ElementReference referTo(Data* data) { return ElementReference(data); }
    static Data* dataOf(const ElementReference& reference) { return reference.data_; }

    static Element*& element(Data& data) { return data.element_; }
    static ReferenceKeeper*& keeper(Data& data) { return data.keeper_; }
    static std::string& text(Data& data) { return data.text_; }
    static Data* next(const Data& data) { return data.nextOfElement_; }
    static Data* references(const Element& element) { return element.references_; }

    static ElementReference makeReference(Element& element);
    static void addReference(Element& element, Data& data);
    static void removeReference(Element& element, Data& data);

    /// Leaves the element's references with its present path, waiting for nothing.
    static void letReferencesGo(Element& element);
};

} // namespace corvane::workbench::model
