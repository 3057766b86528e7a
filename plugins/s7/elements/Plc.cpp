#include "elements/Plc.hpp"

#include "elements/DocumentKeys.hpp"
#include "elements/Members.hpp"
#include "elements/ReadNumber.hpp"
#include "elements/ValidationMessages.hpp"

#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

namespace corvane::workbench::plugins::s7Driver {

namespace {

// An empty address is saved as this word, on purpose: a document never says that a PLC has no
// address, and one that was saved without is valid, if of no use, when it is loaded again.
constexpr std::string_view kMissingAddress = "missing";

std::u16string missingAddressText() {
    return i18n::translate(Plc::kTextContext,
                           validationMessageText(ValidationMessage::missingNetworkAddress));
}

} // namespace

void Plc::configureProperties(bindings::PropertyConfigurationContext& context) {
    context.property(*this, address).validatedBy<&Plc::validateAddress>();
}

bindings::Validation Plc::validateAddress() {
    if (!address.empty())
        return {};
    return std::unexpected(missingAddressText());
}

// The reason is the same, only that it is no error any more.
std::u16string Plc::addressRemark() const {
    return address == kMissingAddress ? missingAddressText() : std::u16string();
}

void Plc::load(utils::json::decoder::Object& members, config::Context&) {
    while (auto member = members.next()) {
        const std::string_view name = member->name;
        if (name == keys::kAddress.text() || name == keys::kHostName.text())
            address = member->value.asString();
        else if (name == keys::kRack.text())
            rack = readNumber<std::uint8_t>(member->value);
        else if (name == keys::kSlot.text())
            slot = readNumber<std::uint8_t>(member->value);
        else
            config::throwUnknownParameterError(name);
    }
}

void Plc::save(utils::json::encoder::Object& members) const {
    members.addStringView(keys::kAddress, address.empty() ? kMissingAddress : address);
    members.addNumber(keys::kRack, rack);
    members.addNumber(keys::kSlot, slot);
}

bool Plc::forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const {
    return visit(model::Attribute::kDeviceState) || visit(kConnectionTime) || visit(kPlcError);
}

bool Plc::forEachEvent(function_ref<bool(const process::Event&)> visit) const {
    return visit(process::Event::kConnected) || visit(process::Event::kDisconnected);
}

bool Plc::forEachTask(function_ref<bool(const process::Task&)> visit) const {
    return visit(process::Task::kReconnect);
}

} // namespace corvane::workbench::plugins::s7Driver
