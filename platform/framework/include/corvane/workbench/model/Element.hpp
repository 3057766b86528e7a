#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/memory/Pool.hpp>
#include <corvane/workbench/FunctionRef.hpp>
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

class Model;
class ChildList;

/// A node of the project tree: its name, its place, and the plug-in's half of the element.
///
/// Sibling names are unique and not empty: a name that is taken becomes "NAME 2", "NAME 3" and so
/// on. A parent owns its children, and every element its skill element.
class CORVANE_EXPORT Element {
public:
    /// The deepest level at which an element can stand; the elements at the top are on level 1.
    static constexpr unsigned kMaxDepth = 300;

    /// An element that stands nowhere yet.
    Element(const skill::Element::Class& elementClass, std::unique_ptr<skill::Element> element);
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element();

    static void* operator new(std::size_t size) { return utils::memory::allocatePooled(size); }
    static void operator delete(void* element, std::size_t size) {
        utils::memory::freePooled(element, size);
    }

    [[nodiscard]] const std::string& name() const { return name_; }

    /// The class that the host knows the element by.
    [[nodiscard]] const skill::Element::Class& elementClass() const { return *elementClass_; }

    /// The plug-in's half; never null for an element of the tree.
    [[nodiscard]] skill::Element* getSkillElement() { return skillElement_.get(); }
    [[nodiscard]] const skill::Element* getSkillElement() const { return skillElement_.get(); }

    /// Whether the skill element is of the class T, exactly.
    template <class T>
    [[nodiscard]] bool isA() const {
        return skillElement_ != nullptr && skillElement_->template as<T>() != nullptr;
    }

    /// The element above; null at the top of the project.
    [[nodiscard]] Element* parentElement() { return parentIsRoot_ ? nullptr : parent_; }
    [[nodiscard]] const Element* parentElement() const { return parentIsRoot_ ? nullptr : parent_; }

    /// The nearest element above whose skill element is a T; null if there is none.
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

    /// The path of escaped names from the project's root, "/PLC/Data/speed".
    [[nodiscard]] std::string path() const;

    /// The tree that the element stands in; null if it stands in none.
    [[nodiscard]] Model* model() const;

    /// The level below the project's root: 1 at the top.
    [[nodiscard]] unsigned depth() const;

    // What follows changes the tree. It is the host's: plug-ins do not call it.

    /// Appends `child` under `name`, or under the next free name made from it. Throws
    /// std::runtime_error where it, or something below it, would stand deeper than kMaxDepth.
    Element& appendChild(std::unique_ptr<Element> child, std::string_view name);

    /// Takes a child out of the tree; references to it and to what is below it keep their paths and
    /// wait for an element that stands there again.
    [[nodiscard]] std::unique_ptr<Element> removeChild(const Element& child);

    /// Takes the children at `positions`, which ascend, out of the tree, in one pass. References to
    /// them go on following them: either they come back, or the references were let go before.
    [[nodiscard]] std::vector<std::unique_ptr<Element>>
    takeChildren(std::span<const std::size_t> positions);

    /// Puts elements that stand nowhere among the children, in one pass, so that they stand at
    /// `positions`, which ascend, when all are in. Each keeps its name or gets the next free one
    /// made from it. Nothing below them may come to stand deeper than kMaxDepth.
    void putChildren(std::vector<std::unique_ptr<Element>> added,
                     std::span<const std::size_t> positions);

    /// Whether any reference refers to this element.
    [[nodiscard]] bool isReferenced() const { return references_ != nullptr; }

    /// Gives the element another name, made unique among its siblings if it has any, and returns
    /// it.
    const std::string& rename(std::string_view name);

    /// Whether a child other than `except` has that name.
    [[nodiscard]] bool isNameTaken(std::string_view name, const Element* except = nullptr) const;

    /// Lets the skill element of `successor` take the place of this element's own, which is
    /// returned; references to `successor` refer to this element from now on.
    [[nodiscard]] std::unique_ptr<skill::Element> replaceSkillElement(Element& successor);

    /// Exchanges the skill element for another one, made by the same class.
    void swapSkillElement(std::unique_ptr<skill::Element>& other);

private:
    friend class ChildList;
    friend class Model;
    friend class Staging;
    friend class ReferenceLog;
    friend class ReferenceTable;
    friend class ElementReferenceData;
    explicit Element(Model* model); // the root of a model, or of what is being staged

    ChildList& children();
    [[nodiscard]] bool isRoot() const { return elementClass_ == nullptr; }
    [[nodiscard]] unsigned height() const;
    static void requireRoom(unsigned depthOfParent, const Element& child);
    void addReference(ElementReferenceData& data);
    void removeReference(ElementReferenceData& data);
    void setReferencesWaiting(Model* model);

    std::string name_;
    Element* parent_ = nullptr;
    const skill::Element::Class* elementClass_ = nullptr;
    std::unique_ptr<skill::Element> skillElement_;
    std::unique_ptr<ChildList> children_; // null while there never was a child
    ElementReferenceData* references_ = nullptr;
    bool parentIsRoot_ = false;
    bool paired_ = false;    // an element that is being imported has taken its place
    Model* model_ = nullptr; // of a root only
};

} // namespace corvane::workbench::model
