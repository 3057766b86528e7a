#include "ElementTree.hpp"

#include <corvane/workbench/host/Tree.hpp>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

struct LoadCase {
    std::string_view members;
    int dbNumber;
    std::string_view saved;
};

/// Two data blocks, the first with structures inside.
struct Blocks {
    Blocks() { tree.finish(); }

    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a"})");
    DataBlock& block = tree.load<DataBlock>(&plc, "Data", R"({"DBNumber":3})");
    Item& first = tree.load<Item>(&block, "first", R"({"address":"DBB0"})");
    Struct& outer = tree.load<Struct>(&block, "outer");
    Item& second = tree.load<Item>(&outer, "second", R"({"address":"DBB1"})");
    Struct& inner = tree.load<Struct>(&outer, "inner");
    Item& third = tree.load<Item>(&inner, "third", R"({"address":"DBB2"})");
    DataBlock& otherBlock = tree.load<DataBlock>(&plc, "Other", R"({"DBNumber":9})");
    Item& otherItem = tree.load<Item>(&otherBlock, "item", R"({"address":"DBB3"})");
    Item& standalone = tree.load<Item>(&plc, "standalone", R"({"address":"MB0"})");
};

TEST(DataBlock, BeginsWithNumberOneThatIsNotHandedDown) {
    const DataBlock block;
    EXPECT_EQ(block.dbNumber, 1);
    EXPECT_EQ(block.propagatedDbNumber, 0);
    EXPECT_FALSE(block.dbNumberSubscription);
}

TEST(DataBlock, LoadsAndSaves) {
    const LoadCase cases[] = {
        {"{}", 1, R"({"DBNumber":1})"},
        {R"({"DBNumber":7})", 7, R"({"DBNumber":7})"},
        {R"({"DB number":5})", 5, R"({"DBNumber":5})"},
        {R"({"DBNumber":5,"DB number":6})", 6, R"({"DBNumber":6})"},
        {R"({"DB number":6,"DBNumber":5})", 5, R"({"DBNumber":5})"},
        {R"({"DBNumber":0})", 0, R"({"DBNumber":0})"},
        {R"({"DBNumber":65535})", 65535, R"({"DBNumber":65535})"},
        {R"({"DBNumber":12.7})", 12, R"({"DBNumber":12})"},
        {R"({"DBNumber":3e2})", 3, R"({"DBNumber":3})"},
    };
    for (const LoadCase& one : cases) {
        SCOPED_TRACE(one.members);
        ElementTree tree;
        const auto& block = tree.load<DataBlock>(nullptr, "Data", one.members);
        EXPECT_EQ(block.dbNumber, one.dbNumber);
        EXPECT_EQ(block.propagatedDbNumber, one.dbNumber);
        EXPECT_EQ(saved(block), one.saved);
    }
}

TEST(DataBlock, RefusesDocuments) {
    constexpr std::string_view kRange =
        R"(member "DBNumber": value out of range, expected 0 to 65535)";
    const Refusal cases[] = {
        {R"({"DBNumber":65536})", kRange},
        {R"({"DBNumber":99999999999999999999})", kRange},
        {R"({"DBNumber":-1})", kRange},
        {R"({"DBNumber":"5"})", kRange},
        {R"({"DBNumber":null})", kRange},
        {R"({"DB number":65536})",
         R"(member "DB number": value out of range, expected 0 to 65535)"},
        {R"({"dbNumber":5})", "unknown member “dbNumber”"},
        {R"({"DB Number":5})", "unknown member “DB Number”"},
        {R"({"DBNumber":5,"address":"a"})", "unknown member “address”"},
    };
    for (const Refusal& one : cases)
        expectRefusal<DataBlock>(one);
}

TEST(DataBlock, HandsNothingDownWhenLoadingFails) {
    for (const std::string_view members :
         {R"({"DBNumber":4,"extra":1})", R"({"DBNumber":4,"DB number":-1})"}) {
        Blocks blocks;
        const Notifications notifications(blocks.first);
        EXPECT_THROW(blocks.tree.loadMembers(blocks.block, members), std::runtime_error);
        EXPECT_EQ(blocks.block.propagatedDbNumber, 3);
        EXPECT_EQ(blocks.first.dbNumber, 3);
        EXPECT_TRUE(notifications.none());
    }
}

TEST(DataBlock, HandsItsNumberDownOnce) {
    ElementTree tree;
    auto& block = tree.add<DataBlock>(nullptr, "Data");
    Item& item = tree.add<Item>(&block, "item");
    const Notifications notifications(item);

    tree.loadMembers(block, "{}"); // the first load of all, even without a number
    EXPECT_EQ(notifications.count(item.dbNumber), 1);
    EXPECT_EQ(item.dbNumber, 1);
    EXPECT_TRUE(item.dbNumberResolved);
    EXPECT_EQ(block.propagatedDbNumber, 1);

    tree.loadMembers(block, "{}");
    tree.loadMembers(block, R"({"DBNumber":1})");
    EXPECT_EQ(notifications.count(item.dbNumber), 1);

    tree.loadMembers(block, R"({"DBNumber":2})");
    EXPECT_EQ(notifications.count(item.dbNumber), 2);
    EXPECT_EQ(item.dbNumber, 2);
}

TEST(DataBlock, HandsItsNumberDownThroughStructures) {
    Blocks blocks;
    blocks.block.assign(blocks.block.dbNumber, 4);
    for (const Item* const item : {&blocks.first, &blocks.second, &blocks.third})
        EXPECT_EQ(item->dbNumber, 4);
    EXPECT_EQ(utf8(blocks.first.effectiveAddress), "DB4.DBB0");
    EXPECT_EQ(utf8(blocks.second.effectiveAddress), "DB4.DBB1");
    EXPECT_EQ(utf8(blocks.third.effectiveAddress), "DB4.DBB2");

    EXPECT_EQ(blocks.otherItem.dbNumber, 9);
    EXPECT_EQ(utf8(blocks.otherItem.effectiveAddress), "DB9.DBB3");
    EXPECT_EQ(blocks.standalone.dbNumber, std::nullopt);
}

TEST(DataBlock, LeavesItemsAloneWhenTheNumberStays) {
    Blocks blocks;
    const Notifications notifications(blocks.third);
    EXPECT_FALSE(blocks.block.assign(blocks.block.dbNumber, 3));
    blocks.block.publish(bindings::PropertyId(blocks.block.dbNumber));
    EXPECT_TRUE(notifications.none());
}

TEST(DataBlock, HandsDownOnceHoweverOftenItIsConfigured) {
    Blocks blocks;
    ElementTree::configure(blocks.block);
    EXPECT_TRUE(blocks.block.dbNumberSubscription);
    const Notifications notifications(blocks.third);
    blocks.block.assign(blocks.block.dbNumber, 4);
    EXPECT_EQ(notifications.count(blocks.third.dbNumber), 1);

    blocks.block.dbNumberSubscription.reset();
    blocks.block.assign(blocks.block.dbNumber, 5);
    EXPECT_EQ(blocks.third.dbNumber, 4);
}

TEST(DataBlock, IsIdentifiedByItsNumber) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {R"({"DBNumber":0})", "b6232a91-eaca-5933-992e-87ba5a0b21d0"},
        {"{}", "532309d1-e8ec-5bb3-b86d-5800f892a88d"},
        {R"({"DB number":5})", "d1b80e7c-3bef-51ef-8909-76fcd3e25112"},
        {R"({"DBNumber":7})", "e627b835-4e67-505d-a74d-db0a0ffbc078"},
        {R"({"DBNumber":65535})", "025e19a0-fffb-5ea8-99ed-10f9a14471b8"},
    };
    for (const auto& [members, uuid] : cases) {
        ElementTree tree;
        const auto& block = tree.load<DataBlock>(nullptr, "Data", members);
        const auto& sameNumber = tree.load<DataBlock>(nullptr, "Other name", members);
        ASSERT_TRUE(block.importId());
        EXPECT_EQ(block.importId()->toString(), uuid);
        EXPECT_EQ(sameNumber.importId(), block.importId());
        host::rename(*tree.model().findElement("/Data"), "Renamed");
        EXPECT_EQ(block.importId()->toString(), uuid);
        EXPECT_FALSE(block.preserveExistingNameOnImport());
    }
}

TEST(DataBlock, PublishesNoMembers) {
    const DataBlock block;
    expectAttributes(block, {});
    expectEvents(block, {});
    expectTasks(block, {});
}

TEST(DataBlock, HasNoInvalidNumber) {
    ElementTree tree;
    const auto& block = tree.load<DataBlock>(nullptr, "Data", R"({"DBNumber":0})");
    tree.finish();
    EXPECT_EQ(block.localPropertyErrorCount(), 0U);
}

TEST(DataBlock, IsCopiedWithBothNumbers) {
    Blocks blocks;
    blocks.block.dbNumber = 8; // not handed down yet
    {
        const auto copy = dataBlockClass().factory().cloneElement(blocks.block);
        EXPECT_EQ(copy->as<DataBlock>()->dbNumber, 8);
        EXPECT_EQ(copy->as<DataBlock>()->propagatedDbNumber, 3);
    }
    // The end of the copy is not the end of the original's subscription.
    blocks.block.assign(blocks.block.dbNumber, 4);
    EXPECT_EQ(blocks.first.dbNumber, 4);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
