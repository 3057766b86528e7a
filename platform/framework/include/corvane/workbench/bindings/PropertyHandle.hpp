#pragma once

#include <corvane/workbench/bindings/PropertyController.hpp>

namespace corvane::workbench::bindings {

/// A property as a form sees it: visibility and error of one property of one controller, which
/// outlives the handle. Two words, to be copied like a pointer; asking it is asking the controller,
/// so nothing has to be kept up to date.
class PropertyHandle {
public:
    PropertyHandle(PropertyController& controller, PropertyId id)
        : controller_(&controller), id_(id) {}

    [[nodiscard]] PropertyId id() const { return id_; }
    [[nodiscard]] PropertyController& controller() const { return *controller_; }

    /// The same property of another controller, which is of the same class: fields stand at the
    /// same offset in both.
    [[nodiscard]] PropertyHandle of(PropertyController& other) const {
        return {other, other.counterpartOf(*controller_, id_)};
    }

    /// Both as the controller of the same name: the present state, not the one of the handle's
    /// making.
    [[nodiscard]] bool isVisible() const { return controller_->isVisible(id_); }
    [[nodiscard]] const std::u16string* error() const { return controller_->error(id_); }

private:
    PropertyController* controller_;
    PropertyId id_;
};

} // namespace corvane::workbench::bindings
