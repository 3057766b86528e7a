#include "forms/ItemBinding.hpp"

#include "address/DataBlockPrefix.hpp"
#include "elements/Command.hpp"
#include "elements/DataTypes.hpp"
#include "elements/Plc.hpp"
#include "forms/FormText.hpp"

#include <corvane/workbench/model/Element.hpp>

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver {

namespace {

constexpr ui::SpinBoxControl::Range kStringSizeRange{.minimum = 0, .maximum = 254, .step = 1};

std::vector<ui::ChoiceList::Choice> dataTypeChoices() {
    std::vector<ui::ChoiceList::Choice> choices;
    choices.reserve(kDataTypes.size());
    for (const auto& type : kDataTypes)
        choices.push_back(
            {utils::string::detail::utf8ToUtf16(type.name), Item::translated(type.displayName)});
    return choices;
}

/// The commands below the item's PLC. The PLC is looked for now, so that a form for an item that
/// has none fails when it is built, and again at each call, as the item may have moved.
ui::ReferenceChooser::Candidates commandsOf(Item* const& item) {
    static_cast<void>(item->plc());
    return {.scope = [&item] { return item->plc().modelElement(); },
            .accepts = [](const model::Element& element) { return element.isA<Command>(); }};
}

} // namespace

void fixUpAddress(ui::TextEdit& edit) {
    const auto kept = stripDataBlockPrefix(std::u16string_view(edit.text));
    const std::size_t removed = edit.text.size() - kept.size();
    edit.text.erase(0, removed);
    edit.cursor -= std::min(edit.cursor, removed);
    edit.anchor -= std::min(edit.anchor, removed);
}

Item::Binding::Binding(Item& item)
    : ElementBinding(item),
      dataType_("dataType",
                translatedTexts<Item>("Data type", "The data type for the data item",
                                      "This field shows the data type used by the data item."),
                fieldHandle(item, &Item::dataType), textAccessor(pointer(), &Item::dataType),
                dataTypeChoices()),
      stringSize_(
          "stringSize",
          translatedTexts<Item>(
              "String size", "The number of characters in case the item is a String or WString",
              "This field shows the number of characters in case the data item is a String or "
              "WString."),
          fieldHandle(item, &Item::stringSize), fieldAccessor(pointer(), &Item::stringSize),
          kStringSizeRange, kSpinBoxSettings),
      address_("address",
               translatedTexts<Item>("Address", "The data item address",
                                     "This field shows the address of the data item."),
               fieldHandle(item, &Item::address), textAccessor(pointer(), &Item::address),
               {.placeholder = {},
                .minimumWidth = 0,
                .preferredWidth = 0,
                .fixUp = fixUpAddress,
                .remark = {}}),
      effectiveAddress_(
          "effectiveAddress",
          translatedTexts<Item>("Effective address", "The effective address of the data item",
                                "This field shows the effective address of the data item."),
          fieldHandle(item, &Item::effectiveAddress),
          [&item = pointer()] { return item->effectiveAddress; }),
      writable_("writable",
                translatedTexts<Item>("Writable", "The writable flag",
                                      "This field shows if the data item is writable."),
                fieldHandle(item, &Item::writable), fieldAccessor(pointer(), &Item::writable),
                translated("Read only"), translated("Writable")),
      command_("command",
               translatedTexts<Item>("Command", "The data item command",
                                     "This field shows the command attached to this data item."),
               fieldHandle(item, &Item::command), fieldAccessor(pointer(), &Item::command),
               commandsOf(pointer())) {}

void Item::Binding::buildForm(ui::Form form) {
    const auto group = form.group();
    group.add(dataType_);
    group.add(stringSize_);
    group.add(address_);
    group.add(effectiveAddress_);
    form.add(writable_);
    form.add(command_);
}

// An item's form costs far more to make than to read: eighteen texts and as many choices.
bool Item::Binding::moveTo(skill::Element& element) {
    auto& item = static_cast<Item&>(element);
    static_cast<void>(item.plc()); // as for a new form
    return move(item,
                {&dataType_, &stringSize_, &address_, &effectiveAddress_, &writable_, &command_});
}

std::unique_ptr<skill::Binding> Item::createBinding() { return std::make_unique<Binding>(*this); }

} // namespace corvane::workbench::plugins::s7Driver
