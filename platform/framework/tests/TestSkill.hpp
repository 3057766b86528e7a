#pragma once

#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/model/ElementReference.hpp>
#include <corvane/workbench/skill/Element.hpp>
#include <corvane/workbench/skill/ElementClass.hpp>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// A small skill: stations stand at the top and in stations, machines stand in stations.
namespace corvane::workbench::testing {

/// An element with nothing of its own.
class Station final : public skill::Element {
public:
    static const Class& elementClass();
};

/// An element with a property of each kind.
class Machine final : public skill::Element {
public:
    static const Class& elementClass();

    std::u16string label;
    std::uint16_t speed = 7;
    model::ElementReference feeder;   // validated
    model::ElementReference operated; // not a property
    std::function<void()> whenDestroyed;

    ~Machine() override {
        if (whenDestroyed)
            whenDestroyed();
    }
    void configureProperties(bindings::PropertyConfigurationContext& context) override;
    /// Tells the host that the members have changed.
    void changeMembers() { publishElementMembers(); }

private:
    bindings::Validation validateFeeder();
};

/// A new element that stands nowhere.
template <class T>
std::unique_ptr<model::Element> make() {
    return std::make_unique<model::Element>(T::elementClass(), std::make_unique<T>());
}

template <class T>
model::Element& add(model::Element& parent, std::string_view name) {
    return host::appendChild(parent, make<T>(), name);
}

/// The skill element, which is a T.
template <class T>
T& as(model::Element& element) {
    return *element.getSkillElement()->as<T>();
}

/// Declares the properties of an element and publishes them, as a host does.
void configureAndPublish(skill::Element& element);

/// The names of an element's children, each with a comma behind it.
std::string namesOf(const model::Element& parent);

} // namespace corvane::workbench::testing
