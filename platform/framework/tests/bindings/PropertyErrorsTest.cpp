#include "Probe.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace corvane::workbench::testing {
namespace {

std::u16string errorOf(const Probe& probe, PropertyId property) {
    const auto* const text = probe.error(property);
    return text == nullptr ? u"none" : *text;
}

/// The errors in the order in which they are visited, each with its property.
std::vector<std::pair<std::string, std::u16string>> errorsOf(const Probe& probe) {
    std::vector<std::pair<std::string, std::u16string>> errors;
    probe.forEachError([&](PropertyId property, const std::u16string& text) {
        errors.emplace_back(probe.nameOf(property), text);
    });
    return errors;
}

TEST(PropertyErrors, AreKeptUntilTheNextValidation) {
    Probe probe;
    configureSpeedAndUnit(probe);
    probe.assign(probe.speed, 101);
    EXPECT_EQ(errorOf(probe, PropertyId(probe.speed)), u"too fast");
    EXPECT_EQ(errorOf(probe, PropertyId(probe.unit)), u"none");

    probe.speed = 0; // unpublished: the text is still that of the last publication
    EXPECT_EQ(errorOf(probe, PropertyId(probe.speed)), u"too fast");
    probe.publish(PropertyId(probe.speed));
    EXPECT_EQ(errorOf(probe, PropertyId(probe.speed)), u"none");
}

TEST(PropertyErrors, ChangesOfTheirNumberAreToldExactly) {
    Probe probe;
    configureSpeedAndUnit(probe);
    const auto counts = [&](auto change) {
        probe.log.clear();
        change();
        std::erase_if(probe.log, [](const auto& line) { return !line.ends_with(" errors"); });
        return probe.takeLog();
    };
    EXPECT_EQ(counts([&] { probe.assign(probe.speed, 50); }), Log{});
    EXPECT_EQ(counts([&] { probe.assign(probe.speed, 101); }), Log{"1 errors"});
    EXPECT_EQ(counts([&] { probe.assign(probe.speed, 102); }), Log{});
    EXPECT_EQ(counts([&] { probe.publish(PropertyId(probe.unit)); }), Log{"2 errors"});
    EXPECT_EQ(counts([&] { probe.validate(PropertyId(probe.unit)); }), Log{});
    EXPECT_EQ(counts([&] { probe.assign(probe.speed, 0); }), Log{"1 errors"});
    EXPECT_EQ(counts([&] { probe.publish(PropertyId(probe.speed)); }), Log{});
    EXPECT_EQ(counts([&] { probe.assign(probe.unit, u"mm"); }), Log{"0 errors"});
}

TEST(PropertyErrors, AreVisitedInTheOrderOfDeclaration) {
    Probe probe;
    configureSpeedAndUnit(probe);
    EXPECT_TRUE(errorsOf(probe).empty());
    probe.publish(PropertyId(probe.unit));
    probe.assign(probe.speed, 101);
    EXPECT_EQ(errorsOf(probe), (std::vector<std::pair<std::string, std::u16string>>{
                                   {"speed", u"too fast"}, {"unit", u"no unit"}}));
    EXPECT_EQ(probe.localPropertyErrorCount(), 2u);
}

TEST(PropertyErrors, AChangeOfTheirNumberMayPublish) {
    Probe probe;
    configureSpeedAndUnit(probe);
    probe.inErrorCountChange = [&] { probe.validate(PropertyId(probe.unit)); };
    probe.assign(probe.speed, 101);
    EXPECT_EQ(probe.localPropertyErrorCount(), 2u);
    EXPECT_EQ(errorsOf(probe).size(), 2u);
}

TEST(PropertyErrors, AValidatorMayValidateAnotherProperty) {
    Probe probe;
    configureSpeedAndUnit(probe);
    probe.inValidator = [&] { probe.validate(PropertyId(probe.unit)); };
    probe.assign(probe.speed, 101);
    EXPECT_EQ(errorOf(probe, PropertyId(probe.speed)), u"too fast");
    EXPECT_EQ(errorOf(probe, PropertyId(probe.unit)), u"no unit");

    probe.unit = u"mm";
    probe.assign(probe.speed, 1);
    EXPECT_EQ(probe.localPropertyErrorCount(), 0u);
}

TEST(PropertyErrors, StayOverAReconfigurationThatStillValidates) {
    Probe probe;
    configureSpeedAndUnit(probe);
    probe.publishConfigured();
    configureSpeedAndUnit(probe);
    EXPECT_EQ(errorOf(probe, PropertyId(probe.unit)), u"no unit");
    EXPECT_EQ(probe.localPropertyErrorCount(), 1u);
}

TEST(PropertyErrors, GoWithTheDeclarationOfTheirProperty) {
    Probe probe;
    configureSpeedAndUnit(probe);
    probe.assign(probe.speed, 101);
    probe.publish(PropertyId(probe.unit));
    probe.log.clear();
    configure(probe, [&](auto& context) {
        context.property(probe, probe.speed);
        context.property(probe, probe.unit).template validatedBy<&Probe::validateUnit>();
    });
    EXPECT_EQ(probe.takeLog(), Log{"1 errors"});
    EXPECT_EQ(errorsOf(probe),
              (std::vector<std::pair<std::string, std::u16string>>{{"unit", u"no unit"}}));
}

TEST(PropertyErrors, ControllersOfAKindHaveTheirOwn) {
    Probe fast;
    Probe slow;
    configureSpeedAndUnit(fast);
    configureSpeedAndUnit(slow);
    fast.assign(fast.speed, 101);
    slow.assign(slow.speed, 1);
    EXPECT_EQ(errorOf(fast, PropertyId(fast.speed)), u"too fast");
    EXPECT_EQ(errorOf(slow, PropertyId(slow.speed)), u"none");
}

} // namespace
} // namespace corvane::workbench::testing
