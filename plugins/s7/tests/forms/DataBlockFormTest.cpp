#include "FormTesting.hpp"

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

struct DataBlockForm : ::testing::Test {
    DataBlockForm() { tree.finish(); }

    ElementTree tree;
    DataBlock& block = tree.load<DataBlock>(nullptr, "Data", R"({"DBNumber":3})");
    Struct& structure = tree.load<Struct>(&block, "structure");
    Item& item = tree.load<Item>(&structure, "item", R"({"address":"DBB0"})");
    ShownForm form{block};
};

TEST_F(DataBlockForm, HasOneControl) {
    const std::vector<FormRow> expected = {{"spin", "DB number", "The DB number of the data block",
                                            "This field shows the DB number of the data block."}};
    EXPECT_EQ(form.rows(), expected);
    EXPECT_TRUE(form.at(0).isVisible());
    expectSpinBox(form.at<ui::SpinBoxControl>(0), 1, 65535);
    EXPECT_EQ(form.at<ui::SpinBox<std::uint16_t>>(0).value(), number(3));
    EXPECT_EQ(groupedControls(block), 0);
}

TEST_F(DataBlockForm, IsTranslated) {
    expectContext(block, "corvane::workbench::plugins::s7Driver::DataBlock");
}

TEST_F(DataBlockForm, IsTranslatedOnceWhenItIsBuilt) {
    const auto before = form.rows();
    const MarkingTranslator translator;
    EXPECT_EQ(form.rows(), before);
}

TEST_F(DataBlockForm, LimitsTheNumber) {
    constexpr std::string_view kRefusal = "the value must lie between 1 and 65535";
    EXPECT_EQ(reasonOf(form.at(0).setValue(number(0))), kRefusal);
    EXPECT_EQ(reasonOf(form.at(0).setValue(number(65536))), kRefusal);
    EXPECT_EQ(block.dbNumber, 3);
    for (const std::uint16_t limit : {std::uint16_t{1}, std::uint16_t{65535}}) {
        EXPECT_EQ(reasonOf(form.at(0).setValue(number(limit))), "");
        EXPECT_EQ(block.dbNumber, limit);
    }
}

TEST_F(DataBlockForm, HandsANewNumberToTheItems) {
    const Notifications ofBlock(block);
    const Notifications ofItem(item);
    EXPECT_EQ(reasonOf(form.at(0).setValue(number(3))), "");
    EXPECT_TRUE(ofBlock.none());
    EXPECT_TRUE(ofItem.none());

    EXPECT_EQ(reasonOf(form.at(0).setValue(number(4))), "");
    EXPECT_EQ(ofBlock.count(block.dbNumber), 1);
    EXPECT_EQ(ofItem.count(item.dbNumber), 1);
    EXPECT_EQ(item.effectiveAddress, u"DB4.DBB0");
    EXPECT_EQ(form.at(0).value(), number(4));
}

TEST_F(DataBlockForm, ShowsTheNumberZeroOfADocument) {
    auto& zero = tree.load<DataBlock>(nullptr, "Zero", R"({"DBNumber":0})");
    tree.finish();
    const ShownForm shown(zero);
    EXPECT_EQ(shown.at(0).value(), number(0));
    EXPECT_EQ(errorAt(shown.at(0)), "");
}

TEST_F(DataBlockForm, NeedsAForm) { expectFormNeeded(block); }

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
