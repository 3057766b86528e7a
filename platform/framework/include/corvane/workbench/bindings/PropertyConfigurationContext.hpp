#pragma once

#include <corvane/workbench/bindings/PropertyController.hpp>

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

    /// The declaration of one property; it takes effect when the object goes out of scope.
    template <class Controller>
    class Declaration {
    public:
        Declaration(const Declaration&) = delete;
        Declaration& operator=(const Declaration&) = delete;
        ~Declaration() { PropertyController::configurePropertyInternal(*context_, property_); }

        /// `member` is `Validation (Controller::*)()`.
        template <auto member>
        Declaration& validatedBy() {
            property_.validator = [](PropertyController& controller) -> Validation {
                return (static_cast<Controller&>(controller).*member)();
            };
            return *this;
        }

        /// `member` is `bool (Controller::*)() const`. Without it a property is always visible.
        template <auto member>
        Declaration& visibleWhen() {
            property_.visibility = [](const PropertyController& controller) -> bool {
                return (static_cast<const Controller&>(controller).*member)();
            };
            return *this;
        }

    private:
        friend class PropertyConfigurationContext;
        Declaration(PropertyConfigurationContext& context, PropertyLayout::Property property)
            : context_(&context), property_(property) {}
        PropertyConfigurationContext* context_;
        PropertyLayout::Property property_;
    };

    template <class Controller, class Field>
    Declaration<Controller> property(Controller& controller, const Field& field) {
        return {*this,
                {.offset = controller.PropertyController::offsetOf(PropertyId(field)),
                 .isReference = std::is_same_v<Field, model::ElementReference>,
                 .validator = nullptr,
                 .visibility = nullptr}};
    }

    /// Calls the member function `void (Controller::*)()` after each change of the field.
    template <auto member, class Controller, class Field>
    [[nodiscard]] Subscription onChange(Controller& controller, const Field& field) {
        return controller.PropertyController::subscribe(
            *this, PropertyId(field),
            [](PropertyController& self) { (static_cast<Controller&>(self).*member)(); });
    }

private:
    friend class PropertyController;
    PropertyController* controller_ = nullptr;
    PropertyLayout layout_;
};

} // namespace corvane::workbench::bindings
