#include "address/S7Address.hpp"
#include "elements/Command.hpp"
#include "elements/Item.hpp"
#include "elements/Plc.hpp"
#include "elements/ValidationMessages.hpp"

#include <corvane/workbench/model/Element.hpp>

namespace corvane::workbench::plugins::s7Driver {

namespace {

std::unexpected<std::u16string> refuse(ValidationMessage message) {
    return std::unexpected(Item::translated(validationMessageText(message)));
}

} // namespace

bindings::Validation Item::validateAddress() {
    resolveDbNumber();
    publishVisibility(bindings::PropertyId(effectiveAddress));

    if (address.empty())
        return refuse(ValidationMessage::missingAddress);
    const auto parsed = readAddress(address);
    if (!parsed)
        return std::unexpected(translated(addressMessageText(parsed.error())));
    const bool inDataBlock = parsed->memoryArea == MemoryArea::DataBlock;
    if (isMember() && !inDataBlock)
        return refuse(ValidationMessage::memberOutsideDataBlock);
    if (!isMember() && inDataBlock)
        return refuse(ValidationMessage::standaloneInDataBlock);
    return {};
}

bindings::Validation Item::validateCommand() {
    if (command.empty())
        return refuse(ValidationMessage::missingCommand);
    const auto target = command.element();
    if (!target)
        return std::unexpected(target.error());
    if (!(*target)->isA<Command>())
        return refuse(ValidationMessage::notACommand);

    // An item that stands outside any PLC has nothing to share with its command.
    const auto* const plc =
        modelElement() == nullptr ? nullptr : modelElement()->findAncestor<Plc>();
    if (plc != nullptr && (*target)->parentElement() != plc->modelElement())
        return refuse(ValidationMessage::commandOfAnotherParent);
    return {};
}

} // namespace corvane::workbench::plugins::s7Driver
