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
ui::ReferenceChooser::Candidates commandsOf(const Item& item) {
    static_cast<void>(item.plc());
    return {.scope = [&item] { return item.plc().modelElement(); },
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
      dataType_(translatedTexts<Item>("Data type", "The data type for the data item",
                                      "This field shows the data type used by the data item."),
                fieldHandle(item, &Item::dataType), textAccessor(item, &Item::dataType),
                dataTypeChoices()),
      stringSize_(
          translatedTexts<Item>(
              "String size", "The number of characters in case the item is a String or WString",
              "This field shows the number of characters in case the data item is a String or "
              "WString."),
          fieldHandle(item, &Item::stringSize), fieldAccessor(item, &Item::stringSize),
          kStringSizeRange, kSpinBoxSettings),
      address_(translatedTexts<Item>("Address", "The data item address",
                                     "This field shows the address of the data item."),
               fieldHandle(item, &Item::address), textAccessor(item, &Item::address),
               {.placeholder = {}, .minimumWidth = 0, .preferredWidth = 0, .fixUp = fixUpAddress}),
      effectiveAddress_(
          translatedTexts<Item>("Effective address", "The effective address of the data item",
                                "This field shows the effective address of the data item."),
          fieldHandle(item, &Item::effectiveAddress), [&item] { return item.effectiveAddress; }),
      writable_(translatedTexts<Item>("Writable", "The writable flag",
                                      "This field shows if the data item is writable."),
                fieldHandle(item, &Item::writable), fieldAccessor(item, &Item::writable),
                translated("Read only"), translated("Writable")),
      command_(translatedTexts<Item>("Command", "The data item command",
                                     "This field shows the command attached to this data item."),
               fieldHandle(item, &Item::command), fieldAccessor(item, &Item::command),
               commandsOf(item)) {}

void Item::Binding::buildForm(ui::Form form) {
    const auto group = form.group();
    group.add(dataType_);
    group.add(stringSize_);
    group.add(address_);
    group.add(effectiveAddress_);
    form.add(writable_);
    form.add(command_);
}

std::unique_ptr<skill::Binding> Item::createBinding() { return std::make_unique<Binding>(*this); }

} // namespace corvane::workbench::plugins::s7Driver
