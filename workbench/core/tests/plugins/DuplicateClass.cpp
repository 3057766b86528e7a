#include "GivenSkill.hpp"

#include <corvane/workbench/skill/ConcreteClass.hpp>

#include <array>

namespace corvane::workbench::test {

namespace {

class Thing final : public skill::Element {};

constexpr skill::ClassIdentity kThingIdentity{.name = "Thing",
                                              .uuid = numberedUuid(31),
                                              .description = "thing",
                                              .displayName = "Thing",
                                              .shortName = "Thing",
                                              .classCode = 1};
constinit const skill::ElementFactory<Thing> kThingFactory;
constinit const skill::ConcreteClass<Thing, kThingIdentity> kThingClass(kThingFactory, {});
constinit const std::array<const skill::Element::Class*, 2> kClasses{&kThingClass, &kThingClass};

const GivenSkill kSkill("Twice", numberedUuid(30), kClasses);

} // namespace

} // namespace corvane::workbench::test
