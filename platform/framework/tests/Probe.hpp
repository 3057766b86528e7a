#pragma once

#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>
#include <corvane/workbench/bindings/PropertyController.hpp>
#include <corvane/workbench/bindings/PropertyHandle.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::testing {

using bindings::Action;
using bindings::PropertyConfigurationContext;
using bindings::PropertyId;
using bindings::Validation;
using Subscription = bindings::PropertyController::Subscription;

using Log = std::vector<std::string>;

/// A controller that writes down everything that happens to it.
class Probe final : public bindings::PropertyController {
public:
    int speed = 0;
    int limit = 100;
    std::u16string unit;
    model::ElementReference target;
    bool shown = true;

    Log log;
    std::function<void()> inValidator; // called where set, as the next two
    std::function<void()> inReaction;
    std::function<void()> inErrorCountChange;

    Validation validateSpeed() {
        log.emplace_back("validate speed");
        if (inValidator)
            inValidator();
        if (speed > limit)
            return std::unexpected(std::u16string(u"too fast"));
        return {};
    }
    Validation validateUnit() {
        log.emplace_back("validate unit");
        if (unit.empty())
            return std::unexpected(std::u16string(u"no unit"));
        return {};
    }
    Validation validateTarget() {
        log.emplace_back("validate target");
        if (target.empty())
            return std::unexpected(std::u16string(u"no target"));
        return {};
    }
    [[nodiscard]] bool isShown() const { return shown; }
    void speedChanged() {
        log.emplace_back("speed changed");
        if (inReaction)
            inReaction();
    }
    void speedChangedToo() { log.emplace_back("speed changed too"); }
    void limitChanged() { log.emplace_back("limit changed"); }
    void unitChanged() { log.emplace_back("unit changed"); }

    void propertyErrorCountChanged() override {
        log.push_back(std::to_string(localPropertyErrorCount()) + " errors");
        if (inErrorCountChange)
            inErrorCountChange();
    }
    void propertyNotificationRaised(PropertyId property, Action action) override {
        log.push_back("raised " + describe(property, action));
    }

    [[nodiscard]] std::string describe(PropertyId property, Action action) const {
        static constexpr const char* kActions[] = {"value", "visibility", "error", "members"};
        return nameOf(property) + " " + kActions[static_cast<unsigned>(action)];
    }

    [[nodiscard]] std::string nameOf(PropertyId property) const {
        if (property == PropertyId(speed))
            return "speed";
        if (property == PropertyId(limit))
            return "limit";
        if (property == PropertyId(unit))
            return "unit";
        if (property == PropertyId(target))
            return "target";
        if (property == PropertyId(shown))
            return "shown";
        return "unknown";
    }

    /// What was written down since the last call.
    [[nodiscard]] Log takeLog() { return std::exchange(log, {}); }
};

/// Gives a controller the properties that `declare(context)` declares.
void configure(bindings::PropertyController& controller, auto declare) {
    PropertyConfigurationContext context;
    context.begin(controller);
    declare(context);
    context.commit();
}

/// Declares the speed and the unit, each with its validator.
inline void configureSpeedAndUnit(Probe& probe) {
    configure(probe, [&](auto& context) {
        context.property(probe, probe.speed).template validatedBy<&Probe::validateSpeed>();
        context.property(probe, probe.unit).template validatedBy<&Probe::validateUnit>();
    });
}

} // namespace corvane::workbench::testing
