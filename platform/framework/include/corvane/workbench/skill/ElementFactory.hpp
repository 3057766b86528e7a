#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <memory>

namespace corvane::workbench::skill {

/// Makes the elements of one class. The order of the virtual operations is part of the plug-in
/// boundary; the host calls them, and what they throw ends the load, the import or the edit that
/// asked for the element.
class CORVANE_EXPORT AbstractElementFactory {
public:
    AbstractElementFactory(const AbstractElementFactory&) = delete;
    AbstractElementFactory& operator=(const AbstractElementFactory&) = delete;
    virtual ~AbstractElementFactory();

    /// A new element in its default state, without a place in a project. Never null.
    [[nodiscard]] virtual std::unique_ptr<Element> createElement() const = 0;

    /// A copy of an element's own fields, belonging to no place in a project yet. Throws
    /// std::bad_cast when the element is of another class.
    [[nodiscard]] virtual std::unique_ptr<Element> cloneElement(const Element& element) const = 0;

protected:
    constexpr AbstractElementFactory() = default;
};

/// The factory of elements of type T, a constant-initialised static of its plug-in. T can be
/// default-constructed and copied; it is the very class of its elements, since a derived one would
/// be cloned to less than it is.
template <class T>
class ElementFactory final : public AbstractElementFactory {
public:
    constexpr ElementFactory() = default;

    [[nodiscard]] std::unique_ptr<Element> createElement() const override {
        return std::make_unique<T>();
    }
    [[nodiscard]] std::unique_ptr<Element> cloneElement(const Element& element) const override {
        return std::make_unique<T>(dynamic_cast<const T&>(element));
    }
};

} // namespace corvane::workbench::skill
