#include <corvane/workbench/model/Staging.hpp>

#include "model/ChildList.hpp"

#include <utility>

namespace corvane::workbench::model {

Staging::Staging(Element& target) : target_(&target), holder_(nullptr) {}

Staging::~Staging() = default;

Element& Staging::append(std::unique_ptr<Element> element, std::string_view name) {
    Element::requireRoom(target_->depth(), *element);
    Element& staged = holder_.appendChild(std::move(element), name);
    staged.parent_ = target_;
    staged.parentIsRoot_ = target_->isRoot();
    return staged;
}

std::span<const std::unique_ptr<Element>> Staging::elements() const {
    return holder_.childElements();
}

std::vector<std::unique_ptr<Element>> Staging::release() { return releaseChildren(holder_); }

std::vector<std::unique_ptr<Element>> Staging::releaseChildren(Element& element) {
    if (element.children_ == nullptr)
        return {};
    return element.children_->release();
}

void Staging::tryName(Element& released, std::string_view name) { released.name_ = name; }

} // namespace corvane::workbench::model
