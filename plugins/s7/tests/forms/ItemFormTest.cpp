#include "FormTesting.hpp"

#include "forms/ItemBinding.hpp"

#include <corvane/workbench/host/Tree.hpp>

#include <limits>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

using bindings::Action;

enum Place : std::uint8_t {
    kDataType,
    kStringSize,
    kAddress,
    kEffectiveAddress,
    kWritable,
    kCommand
};

constexpr std::string_view kContext = "corvane::workbench::plugins::s7Driver::Item";

/// Stored value and shown text of each data type.
const std::vector<std::pair<std::string, std::string>> kDataTypeChoices = {
    {"Bool", "Boolean"},
    {"Byte", "Byte"},
    {"Word", "Word"},
    {"DWord", "DWord"},
    {"LWord", "LWord"},
    {"SInt", "signed 8-bit integer"},
    {"USInt", "unsigned 8-bit integer"},
    {"Int", "signed 16-bit integer"},
    {"UInt", "unsigned 16-bit integer"},
    {"DInt", "signed 32-bit integer"},
    {"UDInt", "unsigned 32-bit integer"},
    {"LInt", "signed 64-bit integer"},
    {"ULInt", "unsigned 64-bit integer"},
    {"Real", "32-bit floating point"},
    {"LReal", "64-bit floating point"},
    {"String", "String"},
    {"WString", "WString"},
};

std::vector<std::pair<std::string, std::string>> choicesOf(const ShownForm& form) {
    std::vector<std::pair<std::string, std::string>> offered;
    for (const auto& choice : form.at<ui::ChoiceList>(kDataType).choices())
        offered.emplace_back(utf8(choice.value), utf8(choice.text));
    return offered;
}

/// A data block and its member, a standalone item, and commands here and there.
struct ItemForm : ::testing::Test {
    ItemForm() { tree.finish(); }

    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a"})");
    Command& command = tree.load<Command>(&plc, "Default Command");
    Struct& group = tree.load<Struct>(&plc, "Group");
    Command& nested = tree.load<Command>(&group, "Nested");
    DataBlock& block = tree.load<DataBlock>(&plc, "Data", R"({"DBNumber":3})");
    Item& item =
        tree.load<Item>(&block, "item", R"({"address":"DBB4","command":"/PLC/Default Command"})");
    Item& standalone = tree.load<Item>(&plc, "standalone", R"({"address":"MB4"})");
    Command& last = tree.load<Command>(&plc, "Last~/");
    Plc& otherPlc = tree.load<Plc>(nullptr, "Other", R"({"address":"b"})");
    Command& otherCommand = tree.load<Command>(&otherPlc, "Command");
    ShownForm form{item};
};

TEST_F(ItemForm, HasSixControlsInOrder) {
    const std::vector<FormRow> expected = {
        {"choice", "Data type", "The data type for the data item",
         "This field shows the data type used by the data item."},
        {"spin", "String size", "The number of characters in case the item is a String or WString",
         "This field shows the number of characters in case the data item is a String or WString."},
        {"text", "Address", "The data item address",
         "This field shows the address of the data item."},
        {"info", "Effective address", "The effective address of the data item",
         "This field shows the effective address of the data item."},
        {"flag", "Writable", "The writable flag", "This field shows if the data item is writable."},
        {"reference", "Command", "The data item command",
         "This field shows the command attached to this data item."},
    };
    EXPECT_EQ(form.rows(), expected);
}

TEST_F(ItemForm, HasAGroupOfAllThatTellsTypeAndPlace) {
    EXPECT_EQ(groupedControls(item), kEffectiveAddress + 1);
}

TEST_F(ItemForm, HasASpinBoxOfSixtyFourBits) {
    auto& size = form.at<ui::SpinBox<std::uint64_t>>(kStringSize);
    item.stringSize = std::numeric_limits<std::uint64_t>::max(); // of a document
    EXPECT_EQ(size.value(), number(18'446'744'073'709'551'615U));
}

TEST_F(ItemForm, IsTranslated) {
    expectContext(item, kContext);
    const MarkingTranslator translator;
    const ShownForm translated(item);
    const auto marked = [](const std::string& text) {
        return std::string(kContext).append("|").append(text);
    };
    auto expected = kDataTypeChoices;
    for (auto& [value, shown] : expected)
        shown = marked(shown);
    EXPECT_EQ(choicesOf(translated), expected);
    const auto& writable = translated.at<ui::FlagChoice>(kWritable);
    EXPECT_EQ(utf8(writable.stateText(false)), marked("Read only"));
    EXPECT_EQ(utf8(writable.stateText(true)), marked("Writable"));
}

TEST_F(ItemForm, IsTranslatedOnceWhenItIsBuilt) {
    const auto before = form.rows();
    const MarkingTranslator translator;
    EXPECT_EQ(form.rows(), before);
    EXPECT_EQ(choicesOf(form), kDataTypeChoices);
    const auto& writable = form.at<ui::FlagChoice>(kWritable);
    EXPECT_EQ(utf8(writable.stateText(false)), "Read only");
    EXPECT_EQ(utf8(writable.stateText(true)), "Writable");
}

TEST_F(ItemForm, OffersTheDataTypes) { EXPECT_EQ(choicesOf(form), kDataTypeChoices); }

TEST_F(ItemForm, TakesEachDataTypeThatItOffers) {
    auto& dataType = form.at<ui::ChoiceList>(kDataType);
    EXPECT_EQ(dataType.value(), text(u"Byte"));
    for (const auto& choice : dataType.choices()) {
        EXPECT_EQ(reasonOf(dataType.setValue(choice.value)), "");
        EXPECT_EQ(item.dataType, utf8(choice.value));
        EXPECT_EQ(dataType.value(), text(choice.value));
    }
    EXPECT_EQ(reasonOf(dataType.setValue(text(u"Date"))), "“Date” is not one of the choices");
    EXPECT_EQ(item.dataType, "WString");
}

TEST_F(ItemForm, ShowsAnUnknownDataTypeAsItIs) {
    item.dataType = "Date";
    EXPECT_EQ(form.at(kDataType).value(), text(u"Date"));
}

TEST_F(ItemForm, PublishesChangesOnce) {
    struct Row {
        Place place;
        const void* field;
        ui::ControlValue value;
    };
    const Row rows[] = {
        {kDataType, &item.dataType, text(u"String")},
        {kStringSize, &item.stringSize, number(20)},
        {kAddress, &item.address, text(u"DBB8")},
        {kWritable, &item.writable, true},
        {kCommand, &item.command, text(u"/PLC/Last~0~1")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(form.rows()[row.place].label);
        int published = 0;
        const auto handle = item.observe([&](bindings::PropertyId property, Action action) {
            published += property.address() == row.field && action == Action::value ? 1 : 0;
        });
        EXPECT_EQ(reasonOf(form.at(row.place).setValue(row.value)), "");
        EXPECT_EQ(published, 1);
        EXPECT_EQ(form.at(row.place).value(), row.value);
        EXPECT_EQ(reasonOf(form.at(row.place).setValue(row.value)), "");
        EXPECT_EQ(published, 1);
    }
}

TEST_F(ItemForm, ShowsTheStringSizeOfStringsAlone) {
    auto& dataType = form.at(kDataType);
    const auto& size = form.at<ui::SpinBoxControl>(kStringSize);
    expectSpinBox(size, 0, 254);
    EXPECT_FALSE(size.isVisible());
    for (const std::u16string_view type : {u"String", u"WString"}) {
        EXPECT_EQ(reasonOf(dataType.setValue(text(type))), "");
        EXPECT_TRUE(size.isVisible());
    }
    EXPECT_EQ(reasonOf(form.at(kStringSize).setValue(number(10))), "");
    EXPECT_EQ(reasonOf(dataType.setValue(text(u"Real"))), "");
    EXPECT_FALSE(size.isVisible());
    EXPECT_EQ(item.stringSize, 10U); // kept, though not saved
    EXPECT_EQ(saved(item).find("stringSize"), std::string::npos);
}

TEST_F(ItemForm, LimitsTheStringSize) {
    auto& size = form.at(kStringSize);
    EXPECT_EQ(reasonOf(size.setValue(number(255))), "the value must lie between 0 and 254");
    EXPECT_EQ(item.stringSize, 254U);
    EXPECT_EQ(reasonOf(size.setValue(number(0))), "");
    EXPECT_EQ(item.stringSize, 0U);
    item.stringSize = 1000; // of a document
    EXPECT_EQ(size.value(), number(1000));
}

TEST_F(ItemForm, HasAnAddressWithoutPlaceholderOrWidth) {
    const auto& settings = form.at<ui::TextField>(kAddress).settings();
    EXPECT_EQ(settings.placeholder, u"");
    EXPECT_EQ(settings.minimumWidth, 0);
    EXPECT_EQ(settings.preferredWidth, 0);
    EXPECT_TRUE(settings.fixUp);
}

TEST_F(ItemForm, FixesUpWhatIsTypedAsAddress) {
    struct Case {
        ui::TextEdit typed;
        ui::TextEdit left;
    };
    const Case cases[] = {
        {{u"DB7.DB20", 8, 8}, {u"DB20", 4, 4}},           // pasted
        {{u"DB7.DB20", 8, 0}, {u"DB20", 4, 0}},           // all of it selected
        {{u"DB7.DB20", 5, 6}, {u"DB20", 1, 2}},           //
        {{u"DB7.DB20", 3, 4}, {u"DB20", 0, 0}},           // inside what goes
        {{u"DB123.DB", 8, 7}, {u"DB", 2, 1}},             //
        {{u"DB7.DBX2.0", 10, 3}, {u"DB7.DBX2.0", 10, 3}}, // not of that form
        {{u"MW20", 2, 1}, {u"MW20", 2, 1}},
        {{u"", 0, 0}, {u"", 0, 0}},
    };
    auto& address = form.at<ui::TextField>(kAddress);
    for (const Case& one : cases) {
        SCOPED_TRACE(utf8(one.typed.text));
        const auto edit = address.corrected(one.typed);
        EXPECT_EQ(edit.text, one.left.text);
        EXPECT_EQ(edit.cursor, one.left.cursor);
        EXPECT_EQ(edit.anchor, one.left.anchor);
        EXPECT_EQ(reasonOf(address.setValue(one.typed.text)), "");
        EXPECT_EQ(item.address, utf8(one.left.text));
    }
}

TEST_F(ItemForm, ShowsTheEffectiveAddressOfMembersAlone) {
    const auto& effective = form.at(kEffectiveAddress);
    EXPECT_TRUE(effective.isVisible());
    EXPECT_EQ(effective.value(), text(u"DB3.DBB4"));
    EXPECT_EQ(reasonOf(form.at(kAddress).setValue(text(u"DBW6"))), "");
    EXPECT_EQ(effective.value(), text(u"DB3.DBW6"));

    const ShownForm other(standalone);
    EXPECT_FALSE(other.at(kEffectiveAddress).isVisible());
    EXPECT_EQ(other.at(kEffectiveAddress).value(), text(u""));
    EXPECT_EQ(reasonOf(other.at(kAddress).setValue(text(u"MB6"))), "");
    EXPECT_FALSE(other.at(kEffectiveAddress).isVisible());
}

TEST_F(ItemForm, ShowsTheEffectiveAddressForInformation) {
    EXPECT_EQ(reasonOf(form.at(kEffectiveAddress).setValue(text(u"DB1.DBB0"))),
              "the field is shown for information and cannot be set");
    EXPECT_EQ(item.effectiveAddress, u"DB3.DBB4");
}

TEST_F(ItemForm, HasATextForEachStateOfTheFlag) {
    auto& writable = form.at<ui::FlagChoice>(kWritable);
    EXPECT_EQ(utf8(writable.stateText(false)), "Read only");
    EXPECT_EQ(utf8(writable.stateText(true)), "Writable");
    EXPECT_EQ(writable.value(), ui::ControlValue(false));
    EXPECT_EQ(reasonOf(writable.setValue(true)), "");
    EXPECT_TRUE(item.writable);
}

TEST_F(ItemForm, PublishesTheMembersThatChange) {
    skill::Element& element = item;
    const Notifications notifications(element);
    EXPECT_EQ(reasonOf(form.at(kWritable).setValue(true)), "");
    EXPECT_EQ(reasonOf(form.at(kDataType).setValue(text(u"Real"))), "");
    EXPECT_EQ(notifications.count(element, Action::members), 2);
}

TEST_F(ItemForm, OffersTheCommandsBelowThePlc) {
    auto& chooser = form.at<ui::ReferenceChooser>(kCommand);
    const std::vector<model::Element*> expected = {command.modelElement(), nested.modelElement(),
                                                   last.modelElement()};
    EXPECT_EQ(chooser.candidates(), expected);
    EXPECT_EQ(chooser.value(), text(u"/PLC/Default Command"));

    // Those of the moment in which they are asked for.
    const Command& added = tree.add<Command>(&plc, "Added");
    EXPECT_EQ(chooser.candidates().back(), added.modelElement());
}

TEST_F(ItemForm, OffersTheCommandsOfThePlcThatTheItemWasMovedTo) {
    auto& chooser = form.at<ui::ReferenceChooser>(kCommand);
    auto& from = *block.modelElement();
    host::appendChild(*otherPlc.modelElement(), host::removeChild(from, *item.modelElement()),
                      "item");
    EXPECT_EQ(chooser.candidates(), std::vector{otherCommand.modelElement()});
    EXPECT_EQ(reasonOf(chooser.setValue(text(u"/PLC/Default Command"))),
              "“/PLC/Default Command” is not one of the elements that can be chosen");
    EXPECT_EQ(reasonOf(chooser.setValue(text(u"/Other/Command"))), "");
    EXPECT_EQ(item.command.element().value(), otherCommand.modelElement());
}

TEST_F(ItemForm, TakesTheCommandsThatItOffers) {
    auto& chooser = form.at(kCommand);
    EXPECT_EQ(reasonOf(chooser.setValue(text(u"/PLC/Last~0~1"))), "");
    EXPECT_EQ(item.command.element().value(), last.modelElement());
    EXPECT_EQ(reasonOf(chooser.setValue(text(u"/Other/Command"))),
              "“/Other/Command” is not one of the elements that can be chosen");
    EXPECT_EQ(item.command.element().value(), last.modelElement());
    EXPECT_EQ(reasonOf(chooser.setValue(text(u""))), "");
    EXPECT_TRUE(item.command.empty());
}

TEST_F(ItemForm, ShowsErrorsAtTheirFields) {
    auto& address = form.at(kAddress);
    auto& chooser = form.at(kCommand);
    EXPECT_EQ(errorAt(address), "");
    EXPECT_EQ(errorAt(chooser), "");

    EXPECT_EQ(reasonOf(address.setValue(text(u""))), "");
    EXPECT_EQ(errorAt(address), "please enter the s7 memory address of the data item");
    EXPECT_EQ(reasonOf(address.setValue(text(u"MW2"))), "");
    EXPECT_EQ(errorAt(address), "invalid address for a data block member data item, the memory "
                                "area marker must be “DB”");
    EXPECT_EQ(reasonOf(address.setValue(text(u"DBX0.9"))), "");
    EXPECT_EQ(errorAt(address), "bit offset out of range, the maximum acceptable value is 7");

    EXPECT_EQ(reasonOf(chooser.setValue(text(u""))), "");
    EXPECT_EQ(errorAt(chooser), "please specify the command used to read and write the data item");
    EXPECT_EQ(reasonOf(chooser.setValue(text(u"/PLC/Group/Nested"))), "");
    EXPECT_EQ(errorAt(chooser), "the command and the data item must share a common parent");

    for (const auto place : {kDataType, kStringSize, kEffectiveAddress, kWritable})
        EXPECT_EQ(errorAt(form.at(place)), "");
}

TEST_F(ItemForm, NeedsAPlc) {
    Item& outside = tree.add<Item>(nullptr, "outside");
    try {
        static_cast<void>(outside.createBinding());
        ADD_FAILURE() << "the binding was made";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "internal_error: S7 item is not part of a PLC");
    }
    EXPECT_THROW(static_cast<void>(form.moveTo(outside)), std::logic_error);
    EXPECT_EQ(form.at(kAddress).value(), text(u"DBB4")) << "it has not moved";
}

TEST_F(ItemForm, NeedsAForm) { expectFormNeeded(item); }

TEST_F(ItemForm, NeedsAGroup) {
    try {
        ui::Group().add(form.at(kDataType));
        ADD_FAILURE() << "added";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "internal error: attempt to access default constructed "
                                   "corvane::workbench::ui::Group object");
    }
}

// A form that has moved is a form of the other item in every respect.
TEST_F(ItemForm, ShowsAnotherItemAfterAMove) {
    Item& sized = tree.load<Item>(&block, "sized", R"({"dataType":"String","stringSize":7,
        "address":"DBB8","writable":true,"command":"/PLC/Default Command"})");
    Item& odd = tree.load<Item>(&otherPlc, "odd",
                                R"({"dataType":"Foo","address":"DB1.DBB8","command":"/PLC/gone"})");
    tree.finish();
    for (Item* const other : {&sized, &odd, &standalone, &item}) {
        ASSERT_TRUE(form.moveTo(*other));
        const ShownForm fresh(*other);
        EXPECT_EQ(form.rows(), fresh.rows());
        for (std::size_t place = kDataType; place <= kCommand; ++place) {
            const auto& moved = form.at(place);
            EXPECT_EQ(moved.value(), fresh.at(place).value());
            EXPECT_EQ(moved.storedValue(), fresh.at(place).storedValue());
            EXPECT_EQ(moved.isVisible(), fresh.at(place).isVisible());
            EXPECT_EQ(errorAt(moved), errorAt(fresh.at(place)));
            EXPECT_EQ(moved.property()->id(), fresh.at(place).property()->id());
        }
        EXPECT_EQ(form.at<ui::ReferenceChooser>(kCommand).candidates(),
                  fresh.at<ui::ReferenceChooser>(kCommand).candidates());
    }
}

TEST_F(ItemForm, EditsTheItemThatItHasMovedTo) {
    ASSERT_TRUE(form.moveTo(standalone));
    const auto before = item.address;
    EXPECT_EQ(reasonOf(form.at(kAddress).setValue(u"MB9")), "");
    EXPECT_EQ(reasonOf(form.at(kWritable).setValue(true)), "");
    EXPECT_EQ(standalone.address, "MB9");
    EXPECT_TRUE(standalone.writable);
    EXPECT_EQ(item.address, before);
    EXPECT_FALSE(item.writable);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
