#include <corvane/workbench/bindings/PropertyController.hpp>

#include <corvane/utils/thread/Owner.hpp>
#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>
#include <corvane/workbench/bindings/PropertyHandle.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace corvane::workbench::bindings {

struct PropertyController::Dynamic {
    struct Error {
        std::uint32_t offset;
        std::u16string text;
    };
    std::vector<Error> errors;
    std::vector<std::weak_ptr<Observer>> observers;

    auto findError(std::uint32_t offset) {
        return std::ranges::find(errors, offset, &Error::offset);
    }
};

PropertyController::PropertyController() = default;

PropertyController::PropertyController(const PropertyController& other)
    : PropertyContainer(other) {}

PropertyController::~PropertyController() = default;

void PropertyController::propertyNotificationRaised(PropertyId, Action) {}

std::size_t PropertyController::localPropertyErrorCount() const {
    return dynamic_ == nullptr ? 0 : dynamic_->errors.size();
}

void PropertyController::forEachLocalCrossReference(
    function_ref<void(const model::ElementReference&)> visit) const {
    for (const auto& property : layout_.get().properties)
        if (property.isReference)
            visit(*static_cast<const model::ElementReference*>(idOf(property.offset).address()));
}

void PropertyController::publish(PropertyId property, Action action) {
    const auto offset = offsetOf(property);
    for (const auto& declared : layout_.get().properties)
        if (declared.offset == offset)
            runValidator(declared);
    publishValue(property, action);
}

void PropertyController::publishValue(PropertyId property, Action action) {
    react(offsetOf(property));
    notify(property, action);
}

void PropertyController::publishVisibility(PropertyId property) {
    notify(property, Action::visibility);
}

void PropertyController::validate(PropertyId property) {
    const auto offset = offsetOf(property);
    for (const auto& declared : layout_.get().properties)
        if (declared.offset == offset)
            runValidator(declared);
    notify(property, Action::error);
}

void PropertyController::validateReferences() {
    for (const auto& property : layout_.get().properties)
        if (property.isReference)
            validate(idOf(property.offset));
}

void PropertyController::publishConfigured() {
    for (const auto& property : layout_.get().properties) {
        runValidator(property);
        publishValue(idOf(property.offset));
    }
}

PropertyHandle PropertyController::propertyHandle(PropertyId property) { return {*this, property}; }

bool PropertyController::isVisible(PropertyId property) const {
    utils::thread::expectOwner();
    const auto& properties = layout_.get().properties;
    const auto found =
        std::ranges::find(properties, offsetOf(property), &PropertyLayout::Property::offset);
    return found == properties.end() || found->visibility == nullptr || found->visibility(*this);
}

const std::u16string* PropertyController::error(PropertyId property) const {
    utils::thread::expectOwner();
    if (dynamic_ == nullptr)
        return nullptr;
    const auto found = dynamic_->findError(offsetOf(property));
    return found == dynamic_->errors.end() ? nullptr : &found->text;
}

void PropertyController::forEachError(
    function_ref<void(PropertyId, const std::u16string&)> visit) const {
    if (dynamic_ == nullptr || dynamic_->errors.empty())
        return;
    for (const auto& property : layout_.get().properties)
        if (const auto* text = error(idOf(property.offset)))
            visit(idOf(property.offset), *text);
}

std::shared_ptr<void> PropertyController::observe(Observer observer) {
    utils::thread::expectOwner();
    auto handle = std::make_shared<Observer>(std::move(observer));
    dynamic().observers.push_back(handle);
    return handle;
}

void PropertyController::configurePropertyInternal(PropertyConfigurationContext& context,
                                                   const PropertyLayout::Property& property) {
    context.layout_.properties.push_back(property);
}

PropertyController::Subscription
PropertyController::subscribe(PropertyConfigurationContext& context, PropertyId property,
                              PropertyLayout::Reaction reaction) {
    auto& subscriptions = context.layout_.subscriptions;
    // endedSubscriptions_ has one bit for each.
    if (subscriptions.size() == 32)
        throw std::logic_error("too many property subscriptions");
    const auto offset = offsetOf(property);
    if (offset == kLargestController)
        throwNoMember();
    subscriptions.push_back({.offset = offset, .reaction = reaction});
    return {*this, static_cast<std::uint32_t>(subscriptions.size() - 1), configuration_};
}

void PropertyController::throwNoMember() {
    throw std::logic_error("internal_error: a property is no field of its controller");
}

void PropertyController::runValidator(const PropertyLayout::Property& property) {
    utils::thread::expectOwner();
    if (property.validator == nullptr)
        return;
    if (auto result = property.validator(*this))
        clearError(property.offset);
    else
        setError(property.offset, std::move(result.error()));
}

void PropertyController::setError(std::uint32_t offset, std::u16string text) {
    auto& errors = dynamic().errors;
    if (const auto found = dynamic().findError(offset); found != errors.end()) {
        found->text = std::move(text);
        return;
    }
    errors.push_back({offset, std::move(text)});
    propertyErrorCountChanged();
}

void PropertyController::clearError(std::uint32_t offset) {
    if (dynamic_ == nullptr)
        return;
    const auto found = dynamic_->findError(offset);
    if (found == dynamic_->errors.end())
        return;
    dynamic_->errors.erase(found);
    propertyErrorCountChanged();
}

void PropertyController::dropUndeclaredErrors() {
    if (dynamic_ == nullptr)
        return;
    const auto isUndeclared = [this](const Dynamic::Error& error) {
        return std::ranges::none_of(layout_.get().properties, [&](const auto& property) {
            return property.offset == error.offset && property.validator != nullptr;
        });
    };
    if (std::erase_if(dynamic_->errors, isUndeclared) != 0)
        propertyErrorCountChanged();
}

void PropertyController::react(std::uint32_t offset) {
    utils::thread::expectOwner();
    const auto& subscriptions = layout_.get().subscriptions;
    for (std::size_t i = 0; i != subscriptions.size(); ++i)
        if (subscriptions[i].offset == offset && (endedSubscriptions_ >> i & 1U) == 0)
            subscriptions[i].reaction(*this);
}

void PropertyController::notify(PropertyId property, Action action) {
    utils::thread::expectOwner();
    if (dynamic_ != nullptr && !dynamic_->observers.empty()) {
        // Observers may come and go while they are told: those of this moment are told.
        std::erase_if(dynamic_->observers, [](const auto& observer) { return observer.expired(); });
        const auto observers = dynamic_->observers;
        for (const auto& weak : observers)
            if (const auto observer = weak.lock())
                (*observer)(property, action);
    }
    propertyNotificationRaised(property, action);
}

PropertyController::Dynamic& PropertyController::dynamic() {
    if (dynamic_ == nullptr)
        dynamic_ = std::make_unique<Dynamic>();
    return *dynamic_;
}

PropertyController::Subscription&
PropertyController::Subscription::operator=(Subscription&& other) noexcept {
    if (this != &other) {
        reset();
        controller_ = std::exchange(other.controller_, nullptr);
        index_ = other.index_;
        configuration_ = other.configuration_;
    }
    return *this;
}

void PropertyController::Subscription::reset() {
    if (controller_ != nullptr && controller_->configuration_ == configuration_)
        controller_->endedSubscriptions_ |= 1U << index_;
    controller_ = nullptr;
}

void PropertyConfigurationContext::begin(PropertyController& controller) {
    controller_ = &controller;
    // Here and not in `commit`: a subscription may end before that.
    controller.layout_ = SharedLayout();
    controller.endedSubscriptions_ = 0;
    ++controller.configuration_;
    layout_.properties.clear();
    layout_.subscriptions.clear();
}

void PropertyConfigurationContext::commit() {
    controller_->layout_ = SharedLayout(layout_);
    controller_->dropUndeclaredErrors();
}

} // namespace corvane::workbench::bindings
