#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/bindings/PropertyContainer.hpp>
#include <corvane/workbench/bindings/PropertyId.hpp>
#include <corvane/workbench/bindings/PropertyLayout.hpp>
#include <corvane/workbench/bindings/Subscription.hpp>

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
class CORVANE_EXPORT PropertyController : public PropertyContainer {
public:
    using Observer = std::move_only_function<void(PropertyId, Action)>;

    ~PropertyController() override;
    PropertyController& operator=(const PropertyController&) = delete;

    /// Called at the end of every publication; the observers have been told by then.
    virtual void propertyNotificationRaised(PropertyId property, Action action);

    [[nodiscard]] std::size_t localPropertyErrorCount() const override;
    void forEachLocalCrossReference(
        FunctionRef<void(const model::ElementReference&)> visit) const override;

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

    [[nodiscard]] bool isVisible(PropertyId property) const;

    /// The validator's text of the last publication; null where there is no error.
    [[nodiscard]] const std::u16string* error(PropertyId property) const;

    /// Visits the properties that have an error, in the order of their declaration.
    void forEachError(FunctionRef<void(PropertyId, const std::u16string&)> visit) const;

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
    /// lives. For use while the properties are configured.
    [[nodiscard]] Subscription subscribe(PropertyConfigurationContext& context, PropertyId property,
                                         PropertyLayout::Reaction reaction);

private:
    friend class PropertyConfigurationContext;
    friend class Subscription;
    struct Dynamic;

    [[nodiscard]] std::uint32_t offsetOf(PropertyId property) const;
    [[nodiscard]] PropertyId idOf(std::uint32_t offset) const;
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

} // namespace corvane::workbench::bindings
