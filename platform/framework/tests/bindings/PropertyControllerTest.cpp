#include "Probe.hpp"

#include "MessageOf.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace corvane::workbench::testing {
namespace {

/// A probe with a validator, a reaction and an observer on its speed.
class PropertyControllerTest : public ::testing::Test {
protected:
    PropertyControllerTest() {
        configure(probe_, [&](auto& context) {
            context.property(probe_, probe_.speed).template validatedBy<&Probe::validateSpeed>();
            context.template onChange<&Probe::speedChanged>(probe_, probe_.speed).detach();
        });
        observation_ = probe_.observe([this](PropertyId property, Action action) {
            probe_.log.push_back("observed " + probe_.describe(property, action));
        });
    }

    Probe probe_;
    std::shared_ptr<void> observation_;
};

TEST_F(PropertyControllerTest, PublishingValidatesThenTellsSubscribersThenObservers) {
    probe_.publish(PropertyId(probe_.speed));
    EXPECT_EQ(probe_.takeLog(), (Log{"validate speed", "speed changed", "observed speed value",
                                     "raised speed value"}));
}

TEST_F(PropertyControllerTest, PublishingAValueSkipsTheValidator) {
    probe_.speed = 500;
    probe_.publishValue(PropertyId(probe_.speed));
    EXPECT_EQ(probe_.takeLog(),
              (Log{"speed changed", "observed speed value", "raised speed value"}));
    EXPECT_EQ(probe_.localPropertyErrorCount(), 0u);
}

TEST_F(PropertyControllerTest, PublishingVisibilityTellsObserversOnly) {
    probe_.publishVisibility(PropertyId(probe_.speed));
    EXPECT_EQ(probe_.takeLog(), (Log{"observed speed visibility", "raised speed visibility"}));
}

TEST_F(PropertyControllerTest, ValidatingTellsObserversButNoSubscriber) {
    probe_.speed = 500;
    probe_.validate(PropertyId(probe_.speed));
    EXPECT_EQ(probe_.takeLog(),
              (Log{"validate speed", "1 errors", "observed speed error", "raised speed error"}));
}

TEST_F(PropertyControllerTest, TheActionIsHandedOn) {
    probe_.publish(PropertyId(probe_.speed), Action::visibility);
    EXPECT_EQ(probe_.takeLog().back(), "raised speed visibility");
    probe_.publishValue(PropertyId(probe_.speed), Action::members);
    EXPECT_EQ(probe_.takeLog().back(), "raised speed members");
}

TEST_F(PropertyControllerTest, AnUndeclaredPropertyCanBePublished) {
    probe_.publish(PropertyId(probe_.limit));
    EXPECT_EQ(probe_.takeLog(), (Log{"observed limit value", "raised limit value"}));
}

TEST_F(PropertyControllerTest, AssigningPublishesOnlyWhatDiffers) {
    EXPECT_FALSE(probe_.assign(probe_.speed, 0));
    EXPECT_EQ(probe_.takeLog(), Log{});
    EXPECT_TRUE(probe_.assign(probe_.speed, 9));
    EXPECT_EQ(probe_.speed, 9);
    EXPECT_EQ(probe_.takeLog(), (Log{"validate speed", "speed changed", "observed speed value",
                                     "raised speed value"}));
    EXPECT_FALSE(probe_.assign(probe_.speed, 9));
    EXPECT_EQ(probe_.takeLog(), Log{});
}

TEST_F(PropertyControllerTest, AValidatorMayPublishAnotherProperty) {
    probe_.inValidator = [&] { probe_.publishVisibility(PropertyId(probe_.unit)); };
    probe_.publish(PropertyId(probe_.speed));
    EXPECT_EQ(probe_.takeLog(),
              (Log{"validate speed", "observed unit visibility", "raised unit visibility",
                   "speed changed", "observed speed value", "raised speed value"}));
}

TEST_F(PropertyControllerTest, AReactionMayPublishItsOwnProperty) {
    // As a setter that corrects its value does.
    probe_.inReaction = [&] { probe_.assign(probe_.speed, 50); };
    probe_.assign(probe_.speed, 60);
    EXPECT_EQ(probe_.speed, 50);
    EXPECT_EQ(probe_.takeLog(), (Log{"validate speed", "speed changed", "validate speed",
                                     "speed changed", "observed speed value", "raised speed value",
                                     "observed speed value", "raised speed value"}));
}

TEST_F(PropertyControllerTest, TheErrorIsKnownWhenSubscribersAndObserversAreTold) {
    std::vector<bool> known;
    probe_.inReaction = [&] { known.push_back(probe_.error(PropertyId(probe_.speed)) != nullptr); };
    const auto observation = probe_.observe(
        [&](PropertyId property, Action) { known.push_back(probe_.error(property) != nullptr); });
    probe_.assign(probe_.speed, 500);
    EXPECT_EQ(known, (std::vector{true, true}));
}

TEST(PropertyController, PublishesEachConfiguredPropertyInTheOrderOfDeclaration) {
    Probe probe;
    configure(probe, [&](auto& context) {
        context.property(probe, probe.unit).template validatedBy<&Probe::validateUnit>();
        context.property(probe, probe.limit);
        context.template onChange<&Probe::unitChanged>(probe, probe.unit).detach();
        context.property(probe, probe.speed).template validatedBy<&Probe::validateSpeed>();
    });
    EXPECT_EQ(probe.takeLog(), Log{}); // declaring alone does nothing
    probe.publishConfigured();
    EXPECT_EQ(probe.takeLog(),
              (Log{"validate unit", "1 errors", "unit changed", "raised unit value",
                   "raised limit value", "validate speed", "raised speed value"}));
}

TEST(PropertyController, WithoutConfigurationOnlyTheNotificationIsRaised) {
    Probe probe;
    probe.speed = 500;
    probe.publish(PropertyId(probe.speed));
    probe.validateReferences();
    probe.publishConfigured();
    EXPECT_EQ(probe.takeLog(), Log{"raised speed value"});
    EXPECT_TRUE(probe.isVisible(PropertyId(probe.speed)));
    EXPECT_EQ(probe.error(PropertyId(probe.speed)), nullptr);
}

TEST(PropertyController, VisibilityIsAskedForEachTime) {
    Probe probe;
    configure(probe, [&](auto& context) {
        context.property(probe, probe.speed).template visibleWhen<&Probe::isShown>();
        context.property(probe, probe.limit);
    });
    EXPECT_TRUE(probe.isVisible(PropertyId(probe.speed)));
    probe.shown = false;
    EXPECT_FALSE(probe.isVisible(PropertyId(probe.speed)));
    EXPECT_TRUE(probe.isVisible(PropertyId(probe.limit)));
    EXPECT_TRUE(probe.isVisible(PropertyId(probe.unit)));
}

TEST(PropertyController, AHandleSeesOneProperty) {
    Probe probe;
    configure(probe, [&](auto& context) {
        context.property(probe, probe.speed)
            .template validatedBy<&Probe::validateSpeed>()
            .template visibleWhen<&Probe::isShown>();
    });
    const auto handle = probe.propertyHandle(PropertyId(probe.speed));
    EXPECT_EQ(handle.id(), PropertyId(probe.speed));
    EXPECT_EQ(&handle.controller(), &probe);
    EXPECT_TRUE(handle.isVisible());
    EXPECT_EQ(handle.error(), nullptr);

    probe.shown = false;
    probe.assign(probe.speed, 101);
    EXPECT_FALSE(handle.isVisible());
    ASSERT_NE(handle.error(), nullptr);
    EXPECT_EQ(*handle.error(), u"too fast");
}

TEST(PropertyController, ValidatesAndVisitsReferencesAlone) {
    Probe probe;
    configure(probe, [&](auto& context) {
        context.property(probe, probe.speed).template validatedBy<&Probe::validateSpeed>();
        context.property(probe, probe.target).template validatedBy<&Probe::validateTarget>();
    });
    probe.validateReferences();
    EXPECT_EQ(probe.takeLog(), (Log{"validate target", "1 errors", "raised target error"}));

    std::vector<const model::ElementReference*> visited;
    probe.forEachLocalCrossReference(
        [&](const model::ElementReference& reference) { visited.push_back(&reference); });
    EXPECT_EQ(visited, std::vector{&std::as_const(probe).target});
}

TEST(PropertyController, OneContextServesManyControllers) {
    Probe first;
    Probe second;
    PropertyConfigurationContext context;
    context.begin(first);
    context.property(first, first.speed).validatedBy<&Probe::validateSpeed>();
    context.commit();
    context.begin(second);
    context.property(second, second.unit).validatedBy<&Probe::validateUnit>();
    context.commit();

    first.publishConfigured();
    second.publishConfigured();
    EXPECT_EQ(first.takeLog(), (Log{"validate speed", "raised speed value"}));
    EXPECT_EQ(second.takeLog(), (Log{"validate unit", "1 errors", "raised unit value"}));
}

TEST(PropertyController, ACopyDeclaresItsPropertiesAnew) {
    Probe original;
    configureSpeedAndUnit(original);
    const auto observation =
        original.observe([&](auto, auto) { original.log.emplace_back("seen"); });
    original.publishConfigured();
    EXPECT_EQ(original.localPropertyErrorCount(), 1u);

    Probe copy(original);
    copy.log.clear();
    EXPECT_EQ(copy.localPropertyErrorCount(), 0u);
    copy.publishConfigured();
    EXPECT_EQ(copy.takeLog(), Log{});
    configureSpeedAndUnit(copy);
    original.log.clear();
    copy.publishConfigured();
    EXPECT_EQ(copy.localPropertyErrorCount(), 1u);
    EXPECT_EQ(original.takeLog(), Log{});
}

TEST(PropertyContainer, IsEmptyByDefault) {
    class Container final : public bindings::PropertyContainer {
    } container;
    container.propertyErrorCountChanged();
    EXPECT_EQ(container.localPropertyErrorCount(), 0u);
    container.forEachSubPropertyContainer([](auto&) { ADD_FAILURE() << "nothing is below it"; });
    container.forEachLocalCrossReference([](auto&) { ADD_FAILURE() << "it refers to nothing"; });
}

// A declaration that had to be made by a destructor could not say that it failed.
static_assert(std::is_trivially_destructible_v<PropertyConfigurationContext::Declaration<Probe>>);

TEST(PropertyConfiguration, ADeclarationStandsAtOnce) {
    Probe probe;
    PropertyConfigurationContext context;
    context.begin(probe);
    auto speed = context.property(probe, probe.speed);
    auto unit = context.property(probe, probe.unit);
    speed.validatedBy<&Probe::validateSpeed>();
    unit.validatedBy<&Probe::validateUnit>().visibleWhen<&Probe::isShown>();
    context.commit();
    probe.publishConfigured();
    EXPECT_EQ(probe.takeLog(), (Log{"validate speed", "raised speed value", "validate unit",
                                    "1 errors", "raised unit value"}));
}

TEST(PropertyConfiguration, RefusesWhatIsNoFieldOfTheController) {
    constexpr const char* kText = "internal_error: a property is no field of its controller";
    using utils::test::messageOf;
    // Before it, behind it, half of it outside, and far away.
    const auto neighbours = std::make_unique<std::array<Probe, 3>>();
    auto& [before, probe, behind] = *neighbours;
    const auto& end = *reinterpret_cast<const int*>(&probe + 1);
    const auto& overhang = *reinterpret_cast<const std::array<char, 16>*>(
        reinterpret_cast<const char*>(&probe + 1) - 8);
    const int local = 0;

    PropertyConfigurationContext context;
    context.begin(probe);
    const auto declare = [&](const auto& field) {
        return messageOf<std::logic_error>([&] {
            context.property(probe, field);
            return 0;
        });
    };
    const auto subscribe = [&](const auto& field) {
        return messageOf<std::logic_error>(
            [&] { return context.onChange<&Probe::speedChanged>(probe, field); });
    };
    EXPECT_EQ(declare(before.speed), kText);
    EXPECT_EQ(declare(behind.speed), kText);
    EXPECT_EQ(declare(behind.target), kText);
    EXPECT_EQ(declare(end), kText);
    EXPECT_EQ(declare(overhang), kText);
    EXPECT_EQ(declare(local), kText);
    EXPECT_EQ(subscribe(before.speed), kText);
    EXPECT_EQ(subscribe(behind.speed), kText);
    EXPECT_EQ(subscribe(local), kText);
    context.commit();
    probe.publishConfigured();
    EXPECT_EQ(probe.takeLog(), Log{});
}

// As far away as a number of 32 bits counts, and further: there the offset would begin anew.
TEST(PropertyConfiguration, NoFieldFromElsewhereIsTakenForAProperty) {
    Probe probe;
    configureSpeedAndUnit(probe);
    const auto speed = reinterpret_cast<std::uintptr_t>(&probe.speed);
    constexpr std::uintptr_t kTurn = std::uintptr_t{1} << 32U;
    for (const std::uintptr_t place : {speed + kTurn, speed - kTurn, speed + sizeof(Probe)}) {
        const PropertyId foreign(*reinterpret_cast<const int*>(place));
        probe.publish(foreign);
        EXPECT_EQ(probe.takeLog(), Log{"raised unknown value"});
        probe.validate(foreign);
        EXPECT_EQ(probe.takeLog(), Log{"raised unknown error"});
        EXPECT_EQ(probe.error(foreign), nullptr);
    }
}

} // namespace
} // namespace corvane::workbench::testing
