#include "elements/Item.hpp"

#include "elements/DataBlock.hpp"
#include "elements/DataTypes.hpp"
#include "elements/ImportNamespaces.hpp"
#include "elements/Members.hpp"
#include "elements/Plc.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <stdexcept>

namespace corvane::workbench::plugins::s7Driver {

using bindings::PropertyId;

void Item::configureProperties(bindings::PropertyConfigurationContext& context) {
    context.property(*this, stringSize).visibleWhen<&Item::hasStringSize>();
    context.property(*this, address).validatedBy<&Item::validateAddress>();
    context.property(*this, effectiveAddress).visibleWhen<&Item::isMember>();
    context.property(*this, command).validatedBy<&Item::validateCommand>();
    dbNumberSubscription_ = context.onChange<&Item::dbNumberChanged>(*this, dbNumber);
    addressSubscription_ = context.onChange<&Item::updateEffectiveAddress>(*this, address);
    context.onChange<&Item::dataTypeChanged>(*this, dataType).detach();
    context.onChange<&Item::writableChanged>(*this, writable).detach();
}

bool Item::forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const {
    if (visit(valueAttribute()) || visit(model::Attribute::kChangeTime) ||
        visit(model::Attribute::kQuality) || visit(kReadError))
        return true;
    return writable && (visit(model::Attribute::kWriteTime) || visit(kWriteError));
}

bool Item::forEachEvent(function_ref<bool(const process::Event&)> visit) const {
    if (visit(process::Event::kChanged) || visit(kReadEvent))
        return true;
    return writable && (visit(kWrittenEvent) || visit(kWriteFailedEvent));
}

const model::Attribute& Item::valueAttribute() const {
    const auto* const type = findDataType(dataType);
    const auto valueType = type == nullptr ? ValueType::generic : type->valueType;
    return (writable ? kReadWriteValues : kReadOnlyValues)[static_cast<std::size_t>(valueType)];
}

std::optional<utils::core::Uuid> Item::importId() const {
    return utils::core::Uuid::createVersion5(kItemNamespace,
                                             utils::string::detail::utf16ToUtf8(effectiveAddress));
}

// The identity is made of the effective address alone, so that equal ones need not be hashed;
// hashed they would be found equal, too (Item.KnowsWhoHasItsIdentityWithoutHashing).
bool Item::hasImportIdOf(const skill::Element& other) const {
    const auto* const item = other.as<Item>();
    return (item != nullptr && item->effectiveAddress == effectiveAddress) ||
           skill::Element::hasImportIdOf(other);
}

void Item::importMerge(const skill::Element& existing) {
    if (const auto* const item = existing.as<Item>())
        command = item->command;
}

skill::Element::Summary Item::summary() const {
    using utils::string::detail::utf8ToUtf16;
    auto type = utf8ToUtf16(dataType);
    if (hasStringSize())
        i18n::fillTranslated(type, kTextContext, "{}[{}]",
                             {dataType, utils::numeric::detail::formatNumber(stringSize).view()});
    return {std::move(type), isMember() ? effectiveAddress : utf8ToUtf16(address)};
}

Plc& Item::plc() const {
    auto* const model = const_cast<model::Element*>(modelElement());
    Plc* const found = model == nullptr ? nullptr : model->findAncestor<Plc>();
    if (found == nullptr)
        throw std::logic_error("internal_error: S7 item is not part of a PLC");
    return *found;
}

void Item::resolveDbNumber() {
    if (dbNumberResolved || modelElement() == nullptr)
        return;
    const auto* const block = modelElement()->findAncestor<DataBlock>();
    if (block == nullptr)
        return;
    dbNumber = block->dbNumber;
    dbNumberResolved = true;
}

void Item::setDataBlockNumber(std::uint16_t number) {
    dbNumber = number;
    dbNumberResolved = true;
    publishValue(PropertyId(dbNumber));
}

std::u16string Item::translated(std::string_view text) {
    return i18n::translate(kTextContext, text);
}

bool Item::hasStringSize() const { return isStringType(dataType); }

void Item::updateEffectiveAddress() {
    if (!dbNumber)
        return;
    const auto number = utils::numeric::detail::formatNumber(*dbNumber);
    i18n::fillTranslated(effectiveAddress, kTextContext, "{}{}{}{}",
                         {"DB", number.view(), ".", address});
    publish(PropertyId(effectiveAddress));
}

void Item::dbNumberChanged() {
    updateEffectiveAddress();
    validate(PropertyId(address)); // what is allowed depends on whether the item is a member
}

void Item::dataTypeChanged() {
    publishVisibility(PropertyId(stringSize));
    publishElementMembers();
}

void Item::writableChanged() { publishElementMembers(); }

} // namespace corvane::workbench::plugins::s7Driver
