#include <corvane/workbench/bindings/Subscription.hpp>

#include <corvane/workbench/bindings/PropertyController.hpp>

#include <utility>

namespace corvane::workbench::bindings {

Subscription& Subscription::operator=(Subscription&& other) noexcept {
    if (this != &other) {
        reset();
        controller_ = std::exchange(other.controller_, nullptr);
        index_ = other.index_;
        configuration_ = other.configuration_;
    }
    return *this;
}

void Subscription::reset() {
    if (controller_ != nullptr && controller_->configuration_ == configuration_)
        controller_->endedSubscriptions_ |= 1U << index_;
    controller_ = nullptr;
}

} // namespace corvane::workbench::bindings
