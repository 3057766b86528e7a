#include "elements/DataBlock.hpp"

#include "address/DataBlockPrefix.hpp"
#include "elements/DocumentKeys.hpp"
#include "elements/ImportNamespaces.hpp"
#include "elements/Item.hpp"
#include "elements/ReadNumber.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/model/Element.hpp>

namespace corvane::workbench::plugins::s7Driver {

namespace {

// As deep as elements nest, which the host bounds.
void handDown(model::Element& parent, std::uint16_t dbNumber) {
    for (const auto& child : parent.childElements()) {
        if (auto* const item = child->getSkillElement()->as<Item>())
            item->setDataBlockNumber(dbNumber);
        else
            handDown(*child, dbNumber);
    }
}

} // namespace

void DataBlock::configureProperties(bindings::PropertyConfigurationContext& context) {
    dbNumberSubscription = context.onChange<&DataBlock::handDownDbNumber>(*this, dbNumber);
}

void DataBlock::load(utils::json::decoder::Object& members, config::Context&) {
    while (auto member = members.next()) {
        const std::string_view name = member->name;
        if (name != keys::kDbNumber.text() && name != keys::kDbNumberWithBlank.text())
            config::throwUnknownParameterError(name);
        dbNumber = readNumber<std::uint16_t>(member->value);
    }
    handDownDbNumber();
}

void DataBlock::save(utils::json::encoder::Object& members) const {
    members.addPreformattedNumber(keys::kDbNumber,
                                  utils::numeric::detail::formatNumber(dbNumber).view());
}

std::optional<utils::core::Uuid> DataBlock::importId() const {
    return utils::core::Uuid::createVersion5(kElementNamespace,
                                             utils::numeric::detail::formatNumber(dbNumber).view());
}

skill::Element::Summary DataBlock::summary() const {
    Summary summary;
    i18n::fillTranslated(summary.address, kTextContext, "DB{}",
                         {utils::numeric::detail::formatNumber(dbNumber).view()});
    return summary;
}

data::MemoryUse DataBlock::memoryUse() const {
    data::MemoryBlock block{std::string(kDataBlockMarker)};
    block.designation += utils::numeric::detail::formatNumber(dbNumber).view();
    return block;
}

void DataBlock::handDownDbNumber() {
    if (dbNumber == propagatedDbNumber)
        return;
    propagatedDbNumber = dbNumber;
    if (modelElement() != nullptr)
        handDown(*modelElement(), dbNumber);
}

} // namespace corvane::workbench::plugins::s7Driver
