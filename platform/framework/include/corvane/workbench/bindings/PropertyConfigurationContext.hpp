#pragma once

#include <corvane/workbench/bindings/PropertyController.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

namespace corvane::workbench::bindings {

/// Given to `configureProperties`, where an element declares its properties:
///
///     context.property(*this, address).validatedBy<&Plc::validateAddress>();
///     subscription = context.onChange<&DataBlock::handDown>(*this, dbNumber);
///
/// Callbacks are member functions named at compile time, which is what lets all elements of a class
/// share one layout.
class CORVANE_EXPORT PropertyConfigurationContext {
public:
    /// Begins to collect the declarations of one controller, whose earlier ones go, subscriptions
    /// included. One context serves any number of controllers, one after the other. Not to be
    /// called while the controller is publishing.
    void begin(PropertyController& controller);

    /// Gives the controller what was declared since `begin`. Errors of properties that are no
    /// longer validated go; the others stay until the next publication.
    void commit();

    /// The declaration of one property, to say more about it. It stands already; the object is only
    /// to be used until the next `begin`.
    template <class Controller>
    class Declaration {
    public:
        Declaration(const Declaration&) = delete;
        Declaration& operator=(const Declaration&) = delete;

        /// `member` is `Validation (Controller::*)()`. Without it a property has no errors. It is
        /// called by `publish`, `publishConfigured` and `validate`.
        template <auto member>
        Declaration& validatedBy() {
            property().validator = [](PropertyController& controller) -> Validation {
                return (static_cast<Controller&>(controller).*member)();
            };
            return *this;
        }

        /// `member` is `bool (Controller::*)() const`. Without it a property is always visible.
        /// Asked at each look; `publishVisibility` tells open forms to look again.
        template <auto member>
        Declaration& visibleWhen() {
            property().visibility = [](const PropertyController& controller) -> bool {
                return (static_cast<const Controller&>(controller).*member)();
            };
            return *this;
        }

    private:
        friend class PropertyConfigurationContext;
        explicit Declaration(PropertyConfigurationContext& context)
            : context_(&context), index_(context.layout_.properties.size() - 1) {}
        PropertyLayout::Property& property() { return context_->layout_.properties[index_]; }

        PropertyConfigurationContext* context_;
        std::size_t index_; // more properties may be declared meanwhile
    };

    /// Declares the property that `field` of the controller holds. Throws std::logic_error where
    /// the field is none of the controller's.
    template <class Controller, class Field>
    Declaration<Controller> property(Controller& controller, const Field& field) {
        requireMember(controller, field);
        PropertyController::configurePropertyInternal(
            *this, {.offset = controller.PropertyController::offsetOf(PropertyId(field)),
                    .isReference = std::is_same_v<Field, model::ElementReference>,
                    .validator = nullptr,
                    .visibility = nullptr});
        return Declaration<Controller>(*this);
    }

    /// Calls the member function `void (Controller::*)()` after each change of the field, which
    /// need not be declared as a property. The subscription is kept in a field of the controller,
    /// or detached. Throws as `property` does, and for the 33rd subscription.
    template <auto member, class Controller, class Field>
    [[nodiscard]] PropertyController::Subscription onChange(Controller& controller,
                                                            const Field& field) {
        requireMember(controller, field);
        return controller.PropertyController::subscribe(
            *this, PropertyId(field),
            [](PropertyController& self) { (static_cast<Controller&>(self).*member)(); });
    }

private:
    friend class PropertyController;

    // The offset of what lies elsewhere would lead anywhere.
    template <class Controller, class Field>
    static void requireMember(const Controller& controller, const Field& field) {
        static_assert(sizeof(Controller) <= PropertyController::kLargestController);
        const auto offset =
            reinterpret_cast<std::uintptr_t>(std::addressof(field)) -
            reinterpret_cast<std::uintptr_t>(static_cast<const PropertyController*>(&controller));
        if (offset >= sizeof(Controller) || sizeof(Field) > sizeof(Controller) - offset)
            PropertyController::throwNoMember();
    }

    PropertyController* controller_ = nullptr;
    PropertyLayout layout_;
};

} // namespace corvane::workbench::bindings
