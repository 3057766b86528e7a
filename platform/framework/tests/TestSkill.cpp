#include "TestSkill.hpp"

#include <corvane/workbench/skill/ConcreteClass.hpp>

#include <array>

namespace corvane::workbench::testing {

namespace {

using skill::ConcreteClass;
using skill::ElementFactory;

constexpr skill::ClassIdentity kStationIdentity{
    .name = "Station",
    .uuid = utils::core::Uuid::fromRawData({1}),
    .description = "a station",
    .displayName = "Station",
    .shortName = "St",
    .classCode = 1,
};
constexpr skill::ClassIdentity kMachineIdentity{
    .name = "Machine",
    .uuid = utils::core::Uuid::fromRawData({2}),
    .description = "a machine",
    .displayName = "Machine",
    .shortName = "Ma",
    .classCode = 2,
};

extern const std::array<const skill::Element::Class*, 2> kStationChildren;

constinit const ElementFactory<Station> kStationFactory;
constinit const ConcreteClass<Station, kStationIdentity> kStationClass(kStationFactory,
                                                                       kStationChildren);
constinit const ElementFactory<Machine> kMachineFactory;
constinit const ConcreteClass<Machine, kMachineIdentity> kMachineClass(kMachineFactory, {});

constinit const std::array<const skill::Element::Class*, 2> kStationChildren{&kStationClass,
                                                                             &kMachineClass};

} // namespace

const skill::Element::Class& Station::elementClass() { return kStationClass; }
const skill::Element::Class& Machine::elementClass() { return kMachineClass; }

void Machine::configureProperties(bindings::PropertyConfigurationContext& context) {
    context.property(*this, label);
    context.property(*this, feeder).validatedBy<&Machine::validateFeeder>();
}

bindings::Validation Machine::validateFeeder() {
    if (feeder.empty())
        return {};
    if (auto element = feeder.element(); !element)
        return std::unexpected(element.error());
    return {};
}

void configureAndPublish(skill::Element& element) {
    bindings::PropertyConfigurationContext context;
    context.begin(element);
    element.configureProperties(context);
    context.commit();
    element.publishConfigured();
}

std::string namesOf(const model::Element& parent) {
    std::string names;
    for (const auto& child : parent.childElements())
        names.append(child->name()).append(",");
    return names;
}

} // namespace corvane::workbench::testing
