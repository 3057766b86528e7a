#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/bindings/PropertyContainer.hpp>
#include <corvane/workbench/bindings/PropertyId.hpp>
#include <corvane/workbench/bindings/PropertyLayout.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace corvane::workbench::bindings {

class PropertyConfigurationContext;
class PropertyHandle;

/// What a notification is about.
enum class Action : std::uint8_t {
    value = 0,
    visibility = 1,
    error = 2,
    /// The attributes, events or tasks of an element; the property is the element itself.
    members = 3,
};

/// Keeps an object's properties consistent: runs validators, keeps their errors, tells subscribers
/// and open forms what changed.
///
/// Publishing a property runs its validator, then its subscribers in the order in which they
/// subscribed, then the observers (open forms). Publishing from inside a validator or a subscriber
/// is allowed.
///
/// A property is named by the field of the controller that holds its value. Declaring one that lies
/// elsewhere is a mistake of the program, which std::logic_error tells; publishing one reaches the
/// observers, and no property is ever taken for it.
class CORVANE_EXPORT PropertyController : public PropertyContainer {
public:
    using Observer = std::move_only_function<void(PropertyId, Action)>;
    class Subscription;

    /// The most bytes that a controller with all its fields may have.
    static constexpr std::size_t kLargestController = 65536;

    ~PropertyController() override;
    PropertyController& operator=(const PropertyController&) = delete;

    /// Called at the end of every publication; the observers have been told by then.
    virtual void propertyNotificationRaised(PropertyId property, Action action);

    [[nodiscard]] std::size_t localPropertyErrorCount() const override;
    void forEachLocalCrossReference(
        function_ref<void(const model::ElementReference&)> visit) const override;

    /// The value of a property has changed: validator, subscribers, observers.
    void publish(PropertyId property, Action action = Action::value);

    /// A value that no user edits has changed: subscribers and observers, no validator.
    void publishValue(PropertyId property, Action action = Action::value);

    /// Stores `value` in one of the controller's fields and publishes it, unless the field has that
    /// value already. True if it was stored.
    template <class Field>
    bool assign(Field& field, std::type_identity_t<Field> value) {
        if (field == value)
            return false;
        field = std::move(value);
        publish(PropertyId(field));
        return true;
    }

    /// Whether a property is shown may have changed: observers only.
    void publishVisibility(PropertyId property);

    /// Something that a property's validator depends on has changed: validator, then observers.
    void validate(PropertyId property);

    /// Validates every property that refers to another element: what it refers to has come, gone
    /// or moved.
    void validateReferences();

    /// Publishes each configured property once, in the order of their declaration.
    void publishConfigured();

    /// The property as a form sees it.
    [[nodiscard]] PropertyHandle propertyHandle(PropertyId property);

    /// The id here of what `property` is of `other`, a controller of the same class.
    [[nodiscard]] PropertyId counterpartOf(const PropertyController& other,
                                           PropertyId property) const {
        return idOf(other.offsetOf(property));
    }

    [[nodiscard]] bool isVisible(PropertyId property) const;

    /// The validator's text of the last publication; null where there is no error.
    [[nodiscard]] const std::u16string* error(PropertyId property) const;

    /// Visits the properties that have an error, in the order of their declaration.
    void forEachError(function_ref<void(PropertyId, const std::u16string&)> visit) const;

    /// Tells `observer` of every notification until the returned handle is destroyed. Observers are
    /// for what looks at the object from outside, such as a form; the handle may outlive the
    /// controller.
    [[nodiscard]] std::shared_ptr<void> observe(Observer observer);

protected:
    PropertyController();
    /// A copy has the same fields and declares its own properties anew.
    PropertyController(const PropertyController& other);

    /// Declares a property: see PropertyConfigurationContext, whose typed operations end here.
    static void configurePropertyInternal(PropertyConfigurationContext& context,
                                          const PropertyLayout::Property& property);

    /// Calls `reaction` after each change of the property, as long as the returned subscription
    /// lives. For use while the properties are configured. Throws std::logic_error for the 33rd
    /// subscription of one controller.
    [[nodiscard]] Subscription subscribe(PropertyConfigurationContext& context, PropertyId property,
                                         PropertyLayout::Reaction reaction);

private:
    friend class PropertyConfigurationContext;
    struct Dynamic;

    // The offset of a field that the controller does not have is no other property's, however far
    // away it lies. What lies in front of the controller wraps around to far behind it.
    [[nodiscard]] std::uint32_t offsetOf(PropertyId property) const {
        const auto offset = reinterpret_cast<std::uintptr_t>(property.address()) -
                            reinterpret_cast<std::uintptr_t>(this);
        return static_cast<std::uint32_t>(std::min<std::uintptr_t>(offset, kLargestController));
    }
    [[nodiscard]] PropertyId idOf(std::uint32_t offset) const {
        return PropertyId(*(reinterpret_cast<const char*>(this) + offset));
    }
    [[noreturn]] static void throwNoMember();
    void runValidator(const PropertyLayout::Property& property);
    void setError(std::uint32_t offset, std::u16string text);
    void clearError(std::uint32_t offset);
    void dropUndeclaredErrors();
    void react(std::uint32_t offset);
    void notify(PropertyId property, Action action);
    Dynamic& dynamic();

    SharedLayout layout_;
    std::unique_ptr<Dynamic> dynamic_;     // what few controllers have: errors, observers
    std::uint32_t endedSubscriptions_ = 0; // one bit per subscription of the layout
    std::uint32_t configuration_ = 0;      // tells the subscriptions of earlier layouts apart
};

/// Keeps one change subscription alive: destroying it, or assigning another, ends the subscription.
/// It must not outlive its controller, so it is a field of the controller or of something that the
/// controller outlives.
class CORVANE_EXPORT PropertyController::Subscription {
public:
    Subscription() = default;
    /// A copy keeps nothing alive: the original stays the one owner, and the owner of the copy
    /// subscribes for itself when it is configured.
    Subscription(const Subscription&) {}
    Subscription& operator=(const Subscription&) = delete;
    Subscription(Subscription&& other) noexcept
        : controller_(std::exchange(other.controller_, nullptr)),
          index_(other.index_),
          configuration_(other.configuration_) {}
    Subscription& operator=(Subscription&& other) noexcept;
    ~Subscription() { reset(); }

    /// Whether there is a subscription that this object keeps alive.
    [[nodiscard]] explicit operator bool() const { return controller_ != nullptr; }

    /// Ends the subscription. One whose controller was configured anew has ended already.
    void reset();

    /// Lets the subscription live as long as its controller.
    void detach() { controller_ = nullptr; }

private:
    friend class PropertyController;
    Subscription(PropertyController& controller, std::uint32_t index, std::uint32_t configuration)
        : controller_(&controller), index_(index), configuration_(configuration) {}

    PropertyController* controller_ = nullptr;
    std::uint32_t index_ = 0;
    std::uint32_t configuration_ = 0; // of the controller, in which the index counts
};

} // namespace corvane::workbench::bindings
