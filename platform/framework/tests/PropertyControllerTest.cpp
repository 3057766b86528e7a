#include "Probe.hpp"

#include <gtest/gtest.h>

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

} // namespace
} // namespace corvane::workbench::testing
