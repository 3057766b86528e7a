#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/memory/Pool.hpp>
#include <corvane/utils/thread/Owner.hpp>
#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/model/ElementReference.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::model {

class ChildList;
class Internals;

/// A tree of elements, as far as they know of it. The host's model of a project is one.
class CORVANE_EXPORT Tree {
public:
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    /// Grows with every change of a name or a place: what was derived from paths is valid as long
    /// as it stays the same.
    [[nodiscard]] std::uint64_t epoch() const { return epoch_; }

protected:
    Tree() = default;
    ~Tree() = default;

    void notePathChange() { ++epoch_; }

private:
    std::uint64_t epoch_ = 1;
};

/// A node of the project tree: its name, its place, and the plug-in's half of the element.
///
/// Sibling names are unique and not empty: a name that is taken becomes "NAME 2", "NAME 3" and so
/// on. A parent owns its children, and every element its skill element.
///
/// What is here only looks, apart from making an element and a reference to one: changing the tree
/// is the host's.
///
/// Only the thread that owns the model (thread/Owner.hpp) makes, changes and destroys elements and
/// gets at their skill elements. Another one may at most look at names and places, and that only as
/// long as the owner is known to leave them as they are.
class CORVANE_EXPORT Element : public utils::memory::Pooled {
public:
    /// The deepest level at which an element can stand; the elements at the top are on level 1.
    static constexpr unsigned kMaxDepth = 300;

    /// An element that stands nowhere yet.
    Element(const skill::Element::Class& elementClass, std::unique_ptr<skill::Element> element);
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element();

    [[nodiscard]] const std::string& name() const { return name_; }

    /// The class that the host knows the element by.
    [[nodiscard]] const skill::Element::Class& elementClass() const { return *elementClass_; }

    /// The plug-in's half; never null for an element of the tree.
    [[nodiscard]] skill::Element* getSkillElement() {
        utils::thread::expectOwner();
        return skillElement_.get();
    }
    [[nodiscard]] const skill::Element* getSkillElement() const {
        utils::thread::expectOwner();
        return skillElement_.get();
    }

    /// Whether the skill element is of the class T, exactly.
    template <class T>
    [[nodiscard]] bool isA() const {
        return skillElement_ != nullptr && skillElement_->template as<T>() != nullptr;
    }

    /// The element above; null at the top of the project.
    [[nodiscard]] Element* parentElement() { return parentIsRoot_ ? nullptr : parent_; }
    [[nodiscard]] const Element* parentElement() const { return parentIsRoot_ ? nullptr : parent_; }

    /// The nearest element above whose skill element is a T; null if there is none. T is that
    /// element's very class: a base of it finds nothing.
    template <class T>
    [[nodiscard]] T* findAncestor() {
        for (Element* above = parentElement(); above != nullptr; above = above->parentElement())
            if (above->isA<T>())
                return static_cast<T*>(above->skillElement_.get());
        return nullptr;
    }
    template <class T>
    [[nodiscard]] const T* findAncestor() const {
        return const_cast<Element*>(this)->findAncestor<T>();
    }

    /// The elements directly below, in their order. Valid until a child is added or removed.
    [[nodiscard]] std::span<const std::unique_ptr<Element>> childElements() const;

    /// The child of that name; null if there is none.
    [[nodiscard]] Element* findChild(std::string_view name) const;

    /// A reference that follows this element wherever it goes.
    [[nodiscard]] ElementReference makeReference();

    /// The path of escaped names from the project's root, "/PLC/Data/speed"; "/" for the root,
    /// which host::Model does not find by it. Put together at each call.
    [[nodiscard]] std::string path() const;

    /// The tree that the element stands in; null if it stands in none.
    [[nodiscard]] const Tree* tree() const;

    /// Whether this is what the elements at the top of a project stand below. It is no element of
    /// the project: it has no name, no class and no skill element.
    [[nodiscard]] bool isRoot() const { return elementClass_ == nullptr; }

    /// The level below the project's root: 1 at the top.
    [[nodiscard]] unsigned depth() const;

    /// Whether a child other than `except` has that name.
    [[nodiscard]] bool isNameTaken(std::string_view name, const Element* except = nullptr) const;

private:
    // Whatever changes an element or its place is the host's, and goes through this one.
    friend class Internals;

    explicit Element(Tree* tree); // the root of a tree, or of what is being staged

    std::string name_;
    Element* parent_ = nullptr;
    const skill::Element::Class* elementClass_ = nullptr;
    std::unique_ptr<skill::Element> skillElement_;
    std::unique_ptr<ChildList> children_; // null while there never was a child
    ElementReferenceData* references_ = nullptr;
    bool parentIsRoot_ = false;
    bool paired_ = false;  // an element that is being imported has taken its place
    Tree* tree_ = nullptr; // of a root only
};

} // namespace corvane::workbench::model
