#pragma once

#include <corvane/utils/thread/Owner.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/skill/ElementClass.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <algorithm>
#include <span>

namespace corvane::workbench::skill {

/// The identity of an element class, the argument of ConcreteClass: a constant of the plug-in,
/// whose texts live as long as it does.
struct ClassIdentity {
    /// In documents; never changed, or old projects do not load any more.
    std::string_view name;
    /// Made once, and as lasting as the name.
    utils::core::Uuid uuid;
    // English; translated whenever they are asked for.
    std::string_view description;
    std::string_view displayName;
    /// For narrow places such as a column of a table; not translated.
    std::string_view shortName;
    /// A small number by which the runtime tells the classes of a skill apart.
    int classCode;
};

/// The class object of elements of type T: a constant-initialised static of its plug-in, beside the
/// factory that it hands out. Nothing runs to build it, so that it can be referred to from other
/// statics in any order.
///
///     constexpr ClassIdentity kPumpIdentity{.name = "Pump", ...};
///     constinit const ElementFactory<Pump> kPumpFactory;
///     constinit const ConcreteClass<Pump, kPumpIdentity> kPumpClass(kPumpFactory, kPumpChildren);
template <class T, const ClassIdentity& identity>
class ConcreteClass final : public Element::Class {
public:
    /// `children` lists the classes that it accepts below it. Both arguments must outlive the
    /// class.
    constexpr ConcreteClass(const ElementFactory<T>& factory,
                            std::span<const Element::Class* const> children)
        : factory_(&factory), children_(children) {}

    [[nodiscard]] std::string_view name() const override { return identityForOwner().name; }
    [[nodiscard]] utils::core::Uuid uuid() const override { return identityForOwner().uuid; }
    [[nodiscard]] std::u16string description() const override {
        return i18n::translate(kTextContext, identityForOwner().description);
    }
    [[nodiscard]] std::u16string displayName() const override {
        return i18n::translate(kTextContext, identityForOwner().displayName);
    }
    [[nodiscard]] std::string_view shortName() const override {
        return identityForOwner().shortName;
    }
    [[nodiscard]] int classCode() const override { return identityForOwner().classCode; }

    [[nodiscard]] bool acceptsChild(const Element::Class& child) const override {
        utils::thread::expectOwner();
        return std::ranges::find(children_, &child) != children_.end();
    }
    [[nodiscard]] const AbstractElementFactory& factory() const override {
        utils::thread::expectOwner();
        return *factory_;
    }

private:
    static constexpr std::string_view kTextContext = "workbench::skill::Element::Class";

    static const ClassIdentity& identityForOwner() {
        utils::thread::expectOwner();
        return identity;
    }

    const ElementFactory<T>* factory_;
    std::span<const Element::Class* const> children_;
};

} // namespace corvane::workbench::skill
