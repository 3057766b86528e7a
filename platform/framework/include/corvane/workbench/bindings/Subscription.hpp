#pragma once

#include <corvane/utils/Export.hpp>

#include <cstdint>

namespace corvane::workbench::bindings {

class PropertyController;

/// Keeps one change subscription alive: destroying it, or assigning another, ends the subscription.
/// It must not outlive its controller, so it is a field of the controller or of something that the
/// controller outlives.
class CORVANE_EXPORT Subscription {
public:
    Subscription() = default;
    /// A copy keeps nothing alive: the original stays the one owner, and the owner of the copy
    /// subscribes for itself when it is configured.
    Subscription(const Subscription&) {}
    Subscription& operator=(const Subscription&) = delete;
    Subscription(Subscription&& other) noexcept
        : controller_(other.controller_),
          index_(other.index_),
          configuration_(other.configuration_) {
        other.controller_ = nullptr;
    }
    Subscription& operator=(Subscription&& other) noexcept;
    ~Subscription() { reset(); }

    [[nodiscard]] explicit operator bool() const { return controller_ != nullptr; }

    /// Ends the subscription.
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
