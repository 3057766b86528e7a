#include "ElementTree.hpp"

#include "elements/Members.hpp"

#include <corvane/workbench/host/Tree.hpp>

#include <limits>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

using bindings::Action;

constexpr auto kLargest = std::numeric_limits<std::uint64_t>::max();

/// The data types, spelled once more: code and width of the value, and whether there is a size.
struct TypeRow {
    std::string_view name;
    int code;
    int bits;
    bool isString;
};

constexpr TypeRow kTypes[] = {
    {"Bool", 0, 1, false},
    {"Byte", 2, 8, false},
    {"Word", 2, 16, false},
    {"DWord", 2, 32, false},
    {"LWord", 2, 64, false},
    {"SInt", 1, 8, false},
    {"USInt", 2, 8, false},
    {"Int", 1, 16, false},
    {"UInt", 2, 16, false},
    {"DInt", 1, 32, false},
    {"UDInt", 2, 32, false},
    {"LInt", 1, 64, false},
    {"ULInt", 2, 64, false},
    {"Real", 3, 32, false},
    {"LReal", 3, 64, false},
    {"String", 4, 8, true},
    {"WString", 4, 16, true},
    // What only a hand-edited document can hold.
    {"Date", 11, 0, false},
    {"bool", 11, 0, false},
    {"", 11, 0, false},
};

const model::Attribute& valueOf(const Item& item) {
    const model::Attribute* value = nullptr;
    item.forEachAttribute([&](const model::Attribute& attribute) {
        value = &attribute;
        return true;
    });
    return *value;
}

/// An item in a data block with number 5, one beside it, and what they need.
struct Items {
    explicit Items(std::string_view memberAddress = "DBW2", std::string_view address = "MW2") {
        member.address = memberAddress;
        standalone.address = address;
        tree.finish();
    }

    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a"})");
    Command& command = tree.load<Command>(&plc, "Default Command");
    Command& otherCommand = tree.load<Command>(&plc, "Other");
    DataBlock& block = tree.load<DataBlock>(&plc, "Data", R"({"DBNumber":5})");
    Struct& structure = tree.load<Struct>(&block, "structure");
    Item& member = tree.load<Item>(&structure, "member", R"({"command":"/PLC/Default Command"})");
    Item& standalone = tree.load<Item>(&plc, "standalone", R"({"command":"/PLC/Other"})");
};

std::string identityOf(const Item& item) { return item.importId().value().toString(); }

TEST(Item, KnowsWhoHasItsIdentityWithoutHashing) {
    const Items tree("DBX0.0");
    Item twin;
    Item other;
    Item malformed;
    Item otherMalformed;
    twin.effectiveAddress = tree.member.effectiveAddress;
    other.effectiveAddress = u"DB5.DBX0.1";
    malformed.effectiveAddress = u"\xd800"; // both halves become U+FFFD in the identity
    otherMalformed.effectiveAddress = u"\xdc00";
    const std::initializer_list<const Item*> items = {&tree.member, &tree.standalone, &twin, &other,
                                                      &malformed,   &otherMalformed};
    for (const Item* const a : items)
        for (const Item* const b : items)
            EXPECT_EQ(a->hasImportIdOf(*b), identityOf(*a) == identityOf(*b));
    EXPECT_TRUE(twin.hasImportIdOf(tree.member));
    EXPECT_TRUE(malformed.hasImportIdOf(otherMalformed));
    EXPECT_FALSE(twin.hasImportIdOf(other));
    EXPECT_FALSE(tree.member.hasImportIdOf(tree.structure));
}

TEST(Item, SummarisesItsTypeAndWhereItIs) {
    const auto expectSummary = [](const Item& item, std::u16string_view type,
                                  std::u16string_view address) {
        const auto summary = item.summary();
        EXPECT_EQ(summary.type, type);
        EXPECT_EQ(summary.address, address);
    };
    Items tree("DBX0.0");
    expectSummary(tree.member, u"Byte", u"DB5.DBX0.0");
    expectSummary(tree.standalone, u"Byte", u"MW2");
    tree.member.assign(tree.member.dataType, std::string("WString"));
    tree.member.assign(tree.member.stringSize, std::uint64_t{16});
    tree.block.assign(tree.block.dbNumber, std::uint16_t{7});
    expectSummary(tree.member, u"WString[16]", u"DB7.DBX0.0");
    EXPECT_EQ(tree.block.summary().type, u"");
    EXPECT_EQ(tree.block.summary().address, u"DB7");
    EXPECT_EQ(tree.structure.summary().address, u"");
}

TEST(Item, BeginsWithItsDefaults) {
    const Item item;
    EXPECT_EQ(item.dataType, "Byte");
    EXPECT_EQ(item.stringSize, 254U);
    EXPECT_EQ(item.address, "");
    EXPECT_EQ(item.effectiveAddress, u"");
    EXPECT_EQ(item.dbNumber, std::nullopt);
    EXPECT_FALSE(item.dbNumberResolved);
    EXPECT_FALSE(item.writable);
    EXPECT_TRUE(item.command.empty());
    EXPECT_EQ(saved(item), R"({"dataType":"Byte","address":"","writable":false,"command":""})");
}

TEST(Item, LoadsItsMembersInAnyOrder) {
    struct Case {
        std::string_view members;
        std::string_view saved;
    };
    const Case cases[] = {
        {"{}", R"({"dataType":"Byte","address":"","writable":false,"command":""})"},
        {R"({"command":"/PLC/x","writable":true,"address":"MW2","stringSize":7,"dataType":"String"})",
         R"({"dataType":"String","stringSize":7,"address":"MW2","writable":true,"command":"/PLC/x"})"},
        {R"({"dataType":"Real","stringSize":7})",
         R"({"dataType":"Real","address":"","writable":false,"command":""})"},
        {R"({"dataType":"of a later version"})",
         R"({"dataType":"of a later version","address":"","writable":false,"command":""})"},
        {R"({"address":"no address at all"})",
         R"({"dataType":"Byte","address":"no address at all","writable":false,"command":""})"},
        {R"({"dataType":"Int","dataType":"WString","bufferLength":10})",
         R"({"dataType":"WString","stringSize":8,"address":"","writable":false,"command":""})"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.members);
        ElementTree tree;
        EXPECT_EQ(saved(tree.load<Item>(nullptr, "item", one.members)), one.saved);
    }
}

TEST(Item, ReadsStringSizesAndBufferLengths) {
    const std::pair<std::string_view, std::uint64_t> cases[] = {
        {R"({"stringSize":0})", 0},
        {R"({"stringSize":254})", 254},
        {R"({"stringSize":18446744073709551615})", kLargest},
        {R"({"bufferLength":0})", 0},
        {R"({"bufferLength":1})", 0},
        {R"({"bufferLength":2})", 0},
        {R"({"bufferLength":3})", 1},
        {R"({"bufferLength":256})", 254},
        {R"({"dataType":"WString","bufferLength":256})", 254},
        {R"({"bufferLength":256,"dataType":"WString"})", 254},
        {R"({"bufferLength":18446744073709551615})", kLargest - 2},
        {R"({"bufferLength":10,"stringSize":20})", 20},
        {R"({"stringSize":20,"bufferLength":10})", 8},
    };
    for (const auto& [members, size] : cases) {
        ElementTree tree;
        EXPECT_EQ(tree.load<Item>(nullptr, "item", members).stringSize, size) << members;
    }
}

TEST(Item, TakesTheBlockOffAddressesOfTheOldForm) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"DB5.DB12", "DB12"},          {"DB5.DB", "DB"},           {"DB5.DBX0.0", "DB5.DBX0.0"},
        {"DB3.DBW8", "DB3.DBW8"},      {"DB.DB12", "DB.DB12"},     {"MW2", "MW2"},
        {" DB5.DB12", " DB5.DB12"},    {"DB5.DB12 ", "DB5.DB12 "}, {"", ""},
        {"DB1.DB2.DB3", "DB1.DB2.DB3"}};
    for (const auto& [written, kept] : cases) {
        ElementTree tree;
        const std::string members = R"({"address":")" + std::string(written) + R"("})";
        EXPECT_EQ(tree.load<Item>(nullptr, "item", members).address, kept) << written;
    }
}

TEST(Item, RefusesDocuments) {
    constexpr std::string_view kSize =
        R"(member "stringSize": value out of range, expected 0 to 18446744073709551615)";
    constexpr std::string_view kLength =
        R"(member "bufferLength": value out of range, expected 0 to 18446744073709551615)";
    const Refusal cases[] = {
        {R"({"stringSize":18446744073709551616})", kSize},
        {R"({"stringSize":-1})", kSize},
        {R"({"stringSize":"1"})", kSize},
        {R"({"bufferLength":18446744073709551616})", kLength},
        {R"({"bufferLength":-1})", kLength},
        {R"({"bufferLength":3.5})", kLength},
        {R"({"bufferLength":3e2})", kLength},
        {R"({"bufferLength":"3"})", kLength},
        {R"({"bufferLength":null})", kLength},
        {R"({"effectiveAddress":"DB5.DBW2"})", "unknown member “effectiveAddress”"},
        {R"({"DBNumber":5})", "unknown member “DBNumber”"},
        {R"({"datatype":"Int"})", "unknown member “datatype”"},
    };
    for (const Refusal& one : cases)
        expectRefusal<Item>(one);
}

TEST(Item, RefusesValuesOfOtherTypes) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"dataType", "1"}, {"address", "null"}, {"writable", "\"true\""},
        {"writable", "1"}, {"command", "5"},    {"command", "{}"},
    };
    for (const auto& [key, value] : cases) {
        const std::string members =
            std::string("{\"").append(key).append("\":").append(value).append("}");
        SCOPED_TRACE(members);
        ElementTree tree;
        try {
            tree.load<Item>(nullptr, "item", members);
            ADD_FAILURE() << "loaded";
        } catch (const utils::json::decoder::DecodeError& error) {
            EXPECT_EQ(error.member(), key);
        }
    }
}

TEST(Item, SavesTheStringSizeOfStringsAlone) {
    for (const TypeRow& type : kTypes) {
        Item item;
        item.dataType = type.name;
        const std::string size = type.isString ? R"("stringSize":254,)" : "";
        EXPECT_EQ(saved(item), R"({"dataType":")" + std::string(type.name) + "\"," + size +
                                   R"("address":"","writable":false,"command":""})");
    }
}

TEST(Item, SavesTheAddressAsItWasWritten) {
    const Items items;
    EXPECT_EQ(
        saved(items.member),
        R"({"dataType":"Byte","address":"DBW2","writable":false,"command":"/PLC/Default Command"})");
}

TEST(Item, PublishesTheValueOfItsType) {
    for (const TypeRow& type : kTypes) {
        SCOPED_TRACE(type.name);
        Item item;
        item.dataType = type.name;
        for (const bool writable : {false, true}) {
            item.writable = writable;
            const auto& value = valueOf(item);
            EXPECT_EQ(value.name(), "value");
            EXPECT_EQ(static_cast<int>(value.type().code), type.code);
            EXPECT_EQ(static_cast<int>(value.type().bits), type.bits);
            EXPECT_EQ(static_cast<int>(value.access()), writable ? 2 : 0);
            EXPECT_EQ(static_cast<int>(value.directions().bits()), 3);
            const auto& set = writable ? kReadWriteValues : kReadOnlyValues;
            EXPECT_TRUE(&value >= set.data() && &value < set.data() + set.size());
        }
    }
}

TEST(Item, SharesTheValuesOfBitStringsWithUnsignedIntegers) {
    const std::pair<std::string_view, std::string_view> pairs[] = {
        {"Byte", "USInt"}, {"Word", "UInt"}, {"DWord", "UDInt"}, {"LWord", "ULInt"}};
    for (const auto& [bits, integer] : pairs) {
        Item first;
        Item second;
        first.dataType = bits;
        second.dataType = integer;
        EXPECT_EQ(&valueOf(first), &valueOf(second)) << bits;
    }
}

TEST(Item, PublishesMoreWhenItIsWritable) {
    Item item;
    expectAttributes(item, {&valueOf(item), &model::Attribute::kChangeTime,
                            &model::Attribute::kQuality, &kReadError});
    expectEvents(item, {&process::Event::kChanged, &kReadEvent});
    expectTasks(item, {});

    item.writable = true;
    expectAttributes(item,
                     {&valueOf(item), &model::Attribute::kChangeTime, &model::Attribute::kQuality,
                      &kReadError, &model::Attribute::kWriteTime, &kWriteError});
    expectEvents(item,
                 {&process::Event::kChanged, &kReadEvent, &kWrittenEvent, &kWriteFailedEvent});
    expectTasks(item, {});
}

TEST(Item, HasAnEffectiveAddressInDataBlocksAlone) {
    struct Case {
        std::string_view address;
        std::string_view effective;
    };
    const Case cases[] = {{"DBW2", "DB5.DBW2"},
                          {"DBX0.0", "DB5.DBX0.0"},
                          {"DB5.DBX0.0", "DB5.DB5.DBX0.0"},
                          {"MW2", "DB5.MW2"},
                          {"", "DB5."},
                          {"DBWÄ", "DB5.DBWÄ"}};
    for (const Case& one : cases) {
        const Items items(one.address, one.address);
        EXPECT_EQ(utf8(items.member.effectiveAddress), one.effective);
        EXPECT_EQ(items.standalone.effectiveAddress, u"");
    }
}

TEST(Item, TranslatesTheFormOfTheEffectiveAddress) {
    const MarkingTranslator translator;
    const Items items;
    EXPECT_EQ(utf8(items.member.effectiveAddress),
              "corvane::workbench::plugins::s7Driver::Item|DB5.DBW2");
    EXPECT_EQ(utf8(Item::translated("text")), "corvane::workbench::plugins::s7Driver::Item|text");
}

TEST(Item, FollowsItsAddressAndItsBlock) {
    Items items;
    const Notifications notifications(items.member);
    items.member.assign(items.member.address, "DBB4");
    EXPECT_EQ(utf8(items.member.effectiveAddress), "DB5.DBB4");
    EXPECT_EQ(notifications.count(items.member.address), 1);
    EXPECT_EQ(notifications.count(items.member.effectiveAddress), 1);

    items.member.setDataBlockNumber(4);
    EXPECT_EQ(items.member.dbNumber, 4);
    EXPECT_TRUE(items.member.dbNumberResolved);
    EXPECT_EQ(utf8(items.member.effectiveAddress), "DB4.DBB4");
    EXPECT_EQ(notifications.count(items.member.dbNumber), 1);
    EXPECT_EQ(notifications.count(items.member.effectiveAddress), 2);
}

TEST(Item, BecomesAMemberWhenItIsGivenANumber) {
    Items items("DBW2", "DBW2");
    Item& item = items.standalone;
    EXPECT_NE(errorAt(item, item.address), "");
    EXPECT_FALSE(item.isVisible(bindings::PropertyId(item.effectiveAddress)));

    item.setDataBlockNumber(7);
    EXPECT_EQ(errorAt(item, item.address), "");
    EXPECT_TRUE(item.isVisible(bindings::PropertyId(item.effectiveAddress)));
    EXPECT_EQ(utf8(item.effectiveAddress), "DB7.DBW2");
}

TEST(Item, PublishesNothingForAValueThatItHas) {
    Items items;
    const Notifications notifications(items.member);
    EXPECT_FALSE(items.member.assign(items.member.address, "DBW2"));
    EXPECT_FALSE(items.member.assign(items.member.writable, false));
    EXPECT_FALSE(items.member.assign(items.member.dataType, "Byte"));
    EXPECT_TRUE(notifications.none());
}

TEST(Item, PublishesItsMembersAgainWhenTheyChange) {
    Items items;
    skill::Element& element = items.member;
    const Notifications notifications(element);
    items.member.assign(items.member.writable, true);
    EXPECT_EQ(notifications.count(element, Action::members), 1);
    items.member.assign(items.member.dataType, "Real");
    EXPECT_EQ(notifications.count(element, Action::members), 2);
    EXPECT_EQ(notifications.count(items.member.stringSize, Action::visibility), 1);
    items.member.assign(items.member.address, "DBW4");
    EXPECT_EQ(notifications.count(element, Action::members), 2);
}

TEST(Item, ShowsTheStringSizeOfStringsAlone) {
    Items items;
    for (const TypeRow& type : kTypes) {
        items.member.assign(items.member.dataType, std::string(type.name));
        EXPECT_EQ(items.member.isVisible(bindings::PropertyId(items.member.stringSize)),
                  type.isString)
            << type.name;
    }
}

TEST(Item, IsIdentifiedByItsEffectiveAddress) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"DBW2", "8d0d3e4b-80fa-5953-97a3-bc2da1eb5890"},
        {"DBX0.0", "256de4b8-ca00-52f5-9fe0-010392d37c43"},
        {"DB5.DBX0.0", "358d894f-515c-5352-a1df-ad4bdb871276"},
        {"DBWÄ", "6515817e-d329-5abf-afe3-a140e160bf68"},
    };
    for (const auto& [address, uuid] : cases) {
        const Items items(address, address);
        EXPECT_EQ(identityOf(items.member), uuid) << address;
        EXPECT_EQ(identityOf(items.standalone), "00b264dc-50a1-57e2-882a-0dc448ec110f");
    }
}

TEST(Item, KeepsItsIdentityUnderAnotherName) {
    Items items;
    host::rename(*items.tree.model().findElement("/PLC/Data/structure/member"), "renamed");
    EXPECT_EQ(identityOf(items.member), "8d0d3e4b-80fa-5953-97a3-bc2da1eb5890");
    EXPECT_TRUE(items.member.preserveExistingNameOnImport());
}

TEST(Item, TakesTheCommandOfTheItemThatItReplaces) {
    Items items;
    items.standalone.dataType = "Real";
    items.standalone.writable = true;
    items.member.importMerge(items.standalone);
    EXPECT_EQ(saved(items.member),
              R"({"dataType":"Byte","address":"DBW2","writable":false,"command":"/PLC/Other"})");

    items.standalone.command = {};
    items.member.importMerge(items.standalone);
    EXPECT_TRUE(items.member.command.empty());
}

TEST(Item, TakesNothingFromElementsOfOtherClasses) {
    Items items;
    const auto before = saved(items.member);
    items.member.importMerge(items.command);
    items.member.importMerge(items.block);
    items.member.importMerge(items.structure);
    EXPECT_EQ(saved(items.member), before);
}

TEST(Item, IsCopiedWithAllFields) {
    Items items;
    items.member.dataType = "String";
    items.member.stringSize = 20;
    items.member.writable = true;
    const auto copy = itemClass().factory().cloneElement(items.member);
    const Item& item = *copy->as<Item>();
    EXPECT_EQ(saved(item), saved(items.member));
    EXPECT_EQ(item.effectiveAddress, u"DB5.DBW2");
    EXPECT_EQ(item.dbNumber, 5);
    EXPECT_TRUE(item.dbNumberResolved);
    EXPECT_EQ(item.command, items.member.command);
    EXPECT_EQ(item.modelElement(), nullptr);
}

TEST(Item, IsNotTouchedByTheEndOfACopy) {
    Items items;
    {
        const auto copy = itemClass().factory().cloneElement(items.member);
    }
    items.member.assign(items.member.address, "DBB4");
    EXPECT_EQ(utf8(items.member.effectiveAddress), "DB5.DBB4");
}

TEST(Item, FindsItsPlc) {
    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC");
    auto& block = tree.load<DataBlock>(&plc, "Data");
    EXPECT_EQ(&tree.load<Item>(&block, "member").plc(), &plc);
    EXPECT_EQ(&tree.load<Item>(&plc, "standalone").plc(), &plc);
}

TEST(Item, SaysThatItHasNoPlc) {
    ElementTree tree;
    const Item detached;
    const Item& alone = tree.load<Item>(nullptr, "item");
    for (const Item* const item : {&detached, &alone})
        try {
            static_cast<void>(item->plc());
            ADD_FAILURE() << "a PLC was found";
        } catch (const std::logic_error& error) {
            EXPECT_STREQ(error.what(), "internal_error: S7 item is not part of a PLC");
        }
}

TEST(Item, LooksUpTheNumberOfItsBlockOnce) {
    Items items;
    EXPECT_EQ(items.member.dbNumber, 5);
    EXPECT_TRUE(items.member.dbNumberResolved);
    items.block.dbNumber = 6; // without handing it down
    items.member.resolveDbNumber();
    EXPECT_EQ(items.member.dbNumber, 5);

    // Nothing is found above the other one, now or later.
    items.standalone.resolveDbNumber();
    EXPECT_EQ(items.standalone.dbNumber, std::nullopt);
    EXPECT_FALSE(items.standalone.dbNumberResolved);
}

TEST(Item, LooksUpTheNumberOfTheNearestBlock) {
    ElementTree tree;
    auto& outer = tree.load<DataBlock>(nullptr, "outer", R"({"DBNumber":1})");
    auto& inner = tree.load<DataBlock>(&outer, "inner", R"({"DBNumber":2})");
    EXPECT_EQ(tree.load<Item>(&inner, "item").dbNumber, 2);
}

TEST(Item, LooksUpTheNumberWhenItIsAddedByAUser) {
    Items items;
    Item& added = items.tree.add<Item>(&items.structure, "added");
    EXPECT_EQ(added.dbNumber, 5);
    EXPECT_TRUE(added.isVisible(bindings::PropertyId(added.effectiveAddress)));
    EXPECT_FALSE(items.tree.add<Item>(&items.plc, "beside").dbNumber);
}

TEST(Item, ShowsItsReferenceToTheHost) {
    const Items items;
    const model::ElementReference* const own = &items.member.command;
    std::vector<const model::ElementReference*> references;
    items.member.forEachLocalCrossReference(
        [&](const model::ElementReference& reference) { references.push_back(&reference); });
    EXPECT_EQ(references, std::vector{own});
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
