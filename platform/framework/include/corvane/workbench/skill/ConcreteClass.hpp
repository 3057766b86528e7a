#pragma once

#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/skill/ElementClass.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <algorithm>
#include <span>

namespace corvane::workbench::skill {

/// The identity of an element class, the argument of ConcreteClass. Texts are English.
struct ClassIdentity {
    std::string_view name;
    utils::core::Uuid uuid;
    std::string_view description;
    std::string_view displayName;
    std::string_view shortName;
    int classCode;
};

/// The class object of elements of type T: a constant-initialised static of its plug-in, beside the
/// factory that it hands out. `children` lists the classes that it accepts below it.
template <class T, const ClassIdentity& identity>
class ConcreteClass final : public Element::Class {
public:
    constexpr ConcreteClass(const ElementFactory<T>& factory,
                            std::span<const Element::Class* const> children)
        : factory_(&factory), children_(children) {}

    [[nodiscard]] std::string_view name() const override { return identity.name; }
    [[nodiscard]] utils::core::Uuid uuid() const override { return identity.uuid; }
    [[nodiscard]] std::u16string description() const override {
        return i18n::translate(kTextContext, identity.description);
    }
    [[nodiscard]] std::u16string displayName() const override {
        return i18n::translate(kTextContext, identity.displayName);
    }
    [[nodiscard]] std::string_view shortName() const override { return identity.shortName; }
    [[nodiscard]] int classCode() const override { return identity.classCode; }

    [[nodiscard]] bool acceptsChild(const Element::Class& child) const override {
        return std::ranges::find(children_, &child) != children_.end();
    }
    [[nodiscard]] const AbstractElementFactory& factory() const override { return *factory_; }

private:
    static constexpr std::string_view kTextContext = "workbench::skill::Element::Class";

    const ElementFactory<T>* factory_;
    std::span<const Element::Class* const> children_;
};

} // namespace corvane::workbench::skill
