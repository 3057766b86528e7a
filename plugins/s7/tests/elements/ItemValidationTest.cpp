#include "ElementTree.hpp"

#include "elements/ValidationMessages.hpp"

#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

using enum ValidationMessage;
using bindings::Action;

constexpr std::string_view kItemContext = "corvane::workbench::plugins::s7Driver::Item";

constexpr std::string_view kMemberMessage =
    "invalid address for a data block member data item, the memory area marker must be “DB”";
constexpr std::string_view kStandaloneMessage =
    "invalid address for a standalone data item, the memory area marker must not be “DB”";
constexpr std::string_view kParentMessage =
    "the command and the data item must share a common parent";

/// A project with two PLCs, and a place for items in the first one's data block and beside it.
struct Project {
    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a"})");
    Command& command = tree.load<Command>(&plc, "Command");
    Struct& group = tree.load<Struct>(&plc, "Group");
    Command& nested = tree.load<Command>(&group, "Nested");
    DataBlock& block = tree.load<DataBlock>(&plc, "Data", R"({"DBNumber":5})");
    Struct& structure = tree.load<Struct>(&block, "Structure");
    Plc& otherPlc = tree.load<Plc>(nullptr, "Other", R"({"address":"b"})");
    Command& otherCommand = tree.load<Command>(&otherPlc, "Command");

    Item& member(std::string_view members) {
        Item& item = tree.load<Item>(&structure, "member", members);
        tree.finish();
        return item;
    }
    Item& standalone(std::string_view members) {
        Item& item = tree.load<Item>(&plc, "standalone", members);
        tree.finish();
        return item;
    }
};

std::string withAddress(std::string_view address) {
    return std::string(R"({"address":")").append(address).append("\"}");
}

std::string withCommand(std::string_view path) {
    return std::string(R"({"command":")").append(path).append("\"}");
}

std::string addressError(bool isMember, std::string_view address) {
    Project project;
    const auto members = withAddress(address);
    const Item& item = isMember ? project.member(members) : project.standalone(members);
    return errorAt(item, item.address);
}

std::string memberError(std::string_view address) { return addressError(true, address); }
std::string standaloneError(std::string_view address) { return addressError(false, address); }

std::string commandError(std::string_view path) {
    Project project;
    const Item& item = project.member(withCommand(path));
    return errorAt(item, item.command);
}

/// A document that produces a message, and the text that it must have.
struct Case {
    ValidationMessage message;
    std::string_view expected;
    std::string (*produce)();
};

const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {missingNetworkAddress, "Please enter the network address of the target PLC",
         [] {
             ElementTree tree;
             const Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":""})");
             tree.finish();
             return errorAt(plc, plc.address);
         }},
        {missingAddress, "please enter the s7 memory address of the data item",
         [] { return memberError("") == standaloneError("") ? memberError("") : "two texts"; }},
        {memberOutsideDataBlock, kMemberMessage, [] { return memberError("MW2"); }},
        {standaloneInDataBlock, kStandaloneMessage, [] { return standaloneError("DBW2"); }},
        {missingCommand, "please specify the command used to read and write the data item",
         [] { return commandError(""); }},
        {notACommand, "the command must be a S7 command", [] { return commandError("/PLC"); }},
        {commandOfAnotherParent, kParentMessage, [] { return commandError("/Other/Command"); }},
    };
    return all;
}

TEST(ValidationMessages, EveryMessageHasACase) {
    for (const ValidationMessage message : kValidationMessages)
        EXPECT_EQ(std::ranges::count(cases(), message, &Case::message), 1)
            << validationMessageText(message);
}

TEST(ValidationMessages, EveryCaseGivesItsMessage) {
    for (const Case& one : cases()) {
        EXPECT_EQ(one.produce(), one.expected);
        EXPECT_EQ(validationMessageText(one.message), one.expected);
    }
}

TEST(ItemAddress, IsParsedWhereverTheItemStands) {
    const std::pair<std::string_view, std::string_view> faults[] = {
        {"mW20", "missing memory area in the address"},
        {" MW20", "missing memory area in the address"},
        {"DB65536.DBB0", "DB number out of range, the maximum acceptable value is 65535"},
        {"DB12.MW8",
         "inconsistent address, while a DB number is set, the memory area marker is not \"DB\""},
        {"M", "invalid or missing byte offset"},
        {"IecT5", "invalid or missing byte offset"},
        {"IecC5", "invalid or missing byte offset"},
        {"MB65536", "byte offset out of range, the maximum acceptable value is 65535"},
        {"DBB65536", "byte offset out of range, the maximum acceptable value is 65535"},
        {"M0x", "invalid address, expected nothing or a ‘.’ after the byte offset"},
        {"M0.", "invalid or missing bit offset"},
        {"M0.8", "bit offset out of range, the maximum acceptable value is 7"},
        {"M0.300", "bit offset out of range, the maximum acceptable value is 7"},
        {"M0.1.2", "encountered extra characters at the end of the address"},
    };
    for (const auto& [address, message] : faults) {
        EXPECT_EQ(memberError(address), message) << address;
        EXPECT_EQ(standaloneError(address), message) << address;
    }
}

TEST(ItemAddress, LiesInTheAreaOfItsPlace) {
    // "DI" is no data block to either of them.
    for (const std::string_view address :
         {"C1", "T2", "PB3", "IW4", "QD5", "MX6.7", "DI8", "DIX0.0", "LB9", "M10.3"}) {
        EXPECT_EQ(standaloneError(address), "") << address;
        EXPECT_EQ(memberError(address), kMemberMessage) << address;
    }
    // A number in the address is not compared with the block's.
    for (const std::string_view address :
         {"DBX4.1", "DBW2", "DB12", "DB1.5", "DB12.DBW8", "DB5.DBX0.0"}) {
        EXPECT_EQ(standaloneError(address), kStandaloneMessage) << address;
        EXPECT_EQ(memberError(address), "") << address;
    }
}

TEST(ItemAddress, IsWhatRemainsOfTheOldForm) {
    Project project;
    const Item& item = project.member(withAddress("DB5.DB12"));
    EXPECT_EQ(errorAt(item, item.address), "");
    EXPECT_EQ(item.effectiveAddress, u"DB5.DB12");
}

TEST(ItemAddress, IsValidatedAtEachChange) {
    Project project;
    Item& item = project.member(withAddress("DBW2"));
    EXPECT_EQ(errorAt(item, item.address), "");
    item.assign(item.address, "MW2");
    EXPECT_EQ(errorAt(item, item.address), kMemberMessage);
    item.assign(item.address, "");
    EXPECT_EQ(errorAt(item, item.address), "please enter the s7 memory address of the data item");
    item.assign(item.address, "DBW4");
    EXPECT_EQ(errorAt(item, item.address), "");
}

TEST(ItemAddress, TellsFormsThatTheEffectiveAddressMayHaveComeOrGone) {
    Project project;
    Item& item = project.standalone(withAddress("MW2"));
    const Notifications notifications(item);
    item.assign(item.address, "MW4");
    EXPECT_EQ(notifications.count(item.effectiveAddress, Action::visibility), 1);
    EXPECT_EQ(notifications.count(item.effectiveAddress), 0);
}

TEST(ItemAddress, HasTranslatedErrors) {
    const MarkingTranslator translator;
    for (const std::string_view address : {"", "MW2", "M", "DB65536.DBB0", "M0x"}) {
        const auto error = memberError(address);
        EXPECT_TRUE(error.starts_with(std::string(kItemContext) + "|")) << error;
        EXPECT_EQ(error.rfind('|'), kItemContext.size()) << error;
    }
}

TEST(ItemCommand, StandsDirectlyBelowThePlcOfTheItem) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"/PLC/Command", ""},
        {"/PLC/Group/Nested", kParentMessage},
        {"/Other/Command", kParentMessage},
        {"/PLC/Data", "the command must be a S7 command"},
        {"/PLC/Group", "the command must be a S7 command"},
        {"/PLC/Data/Structure/member", "the command must be a S7 command"},
    };
    for (const auto& [path, message] : rows)
        EXPECT_EQ(commandError(path), message) << path;
}

TEST(ItemCommand, IsCheckedForStandaloneItemsToo) {
    Project project;
    Item& item = project.standalone(withCommand("/PLC/Command"));
    EXPECT_EQ(errorAt(item, item.command), "");
    item.assign(item.command, project.otherCommand.modelElement()->makeReference());
    EXPECT_EQ(errorAt(item, item.command), kParentMessage);
}

TEST(ItemCommand, IsMissedByTheHostInItsOwnWords) {
    Project project;
    const Item& item = project.member(withCommand("/PLC/Gone"));
    const auto element = item.command.element();
    ASSERT_FALSE(element);
    EXPECT_EQ(errorAt(item, item.command), utf8(element.error()));
    EXPECT_EQ(errorAt(item, item.command), "the referenced element “/PLC/Gone” does not exist");
}

TEST(ItemCommand, MayBeAnyCommandWhereThereIsNoPlc) {
    Project project;
    Item& item = project.tree.load<Item>(nullptr, "item", withCommand("/Other/Command"));
    project.tree.finish();
    EXPECT_EQ(errorAt(item, item.command), "");
}

TEST(ItemCommand, HasTranslatedErrors) {
    const MarkingTranslator translator;
    for (const std::string_view path : {"", "/PLC", "/Other/Command"}) {
        const auto error = commandError(path);
        EXPECT_TRUE(error.starts_with(std::string(kItemContext) + "|")) << error;
    }
}

TEST(Item, CountsBothErrors) {
    Project project;
    Item& item = project.member("{}");
    EXPECT_EQ(item.localPropertyErrorCount(), 2U);
    item.assign(item.address, "DBW2");
    EXPECT_EQ(item.localPropertyErrorCount(), 1U);
    item.assign(item.command, project.command.modelElement()->makeReference());
    EXPECT_EQ(item.localPropertyErrorCount(), 0U);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
