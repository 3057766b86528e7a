#include <corvane/workbench/host/Staging.hpp>

#include <corvane/workbench/host/Tree.hpp>

#include "model/Internals.hpp"

#include <utility>

namespace corvane::workbench::host {

using model::Element;
using model::Internals;

Staging::Staging(Element& target) : target_(&target), holder_(Internals::makeRoot(nullptr)) {}

Staging::~Staging() = default;

Element& Staging::append(std::unique_ptr<Element> element, std::string_view name) {
    Internals::requireRoom(target_->depth(), *element);
    Element& staged = appendChild(holder_, std::move(element), name);
    Internals::setParent(staged, target_);
    return staged;
}

std::span<const std::unique_ptr<Element>> Staging::elements() const {
    return holder_.childElements();
}

std::vector<std::unique_ptr<Element>> Staging::release() { return releaseChildren(holder_); }

std::vector<std::unique_ptr<Element>> Staging::releaseChildren(Element& element) {
    if (element.childElements().empty())
        return {};
    return Internals::children(element).release();
}

void Staging::tryName(Element& released, std::string_view name) {
    Internals::name(released) = name;
}

bool Staging::isPaired(const Element& existing) { return Internals::isPaired(existing); }

void Staging::setPaired(Element& existing, bool paired) { Internals::setPaired(existing, paired); }

} // namespace corvane::workbench::host
