// Where imports are asked for, and what is seen of them afterwards.
#include "GuiTesting.hpp"

namespace corvane::workbench::gui {

namespace {

class ImportingTest : public GuiTest {
public:
    ImportingTest() {
        addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
        press(Qt::Key_Return);
    }

    const QStringList blocks{"Line", "Filler", "Recipe", "DB50"};
};

} // namespace

TEST_F(ImportingTest, TheNewBlocksShowInTheTable) {
    trigger(Command::showTable);
    dropFile(*window_, example("bottling-line.db"));
    ASSERT_TRUE(settleUntil([&] { return table().model()->rowCount() != 0; }));
    EXPECT_EQ(column(table(), 0), blocks);
    // Whoever selects a single one sees what is below it, be it the one that is current.
    auto* const current = child<TreePanel>().current();
    ASSERT_EQ(current, element("/PLC/Default Command"));
    select("/PLC/Default Command");
    EXPECT_NE(column(table(), 0), blocks);
    select("/PLC/Filler");
    EXPECT_FALSE(column(table(), 0).contains(blocks.front()));
}

TEST_F(ImportingTest, TheMenuOfTheTreeImportsIntoWhatIsSelected) {
    addFromMenu("addButton", QStringLiteral("S7 Compatible PLC"));
    press(Qt::Key_Return);
    select("/PLC");
    dialogs_.fileToImport = example("bottling-line.db");
    ASSERT_EQ(tree().contextMenuPolicy(), Qt::ActionsContextMenu);
    ASSERT_TRUE(tree().actions().contains(&action(Command::importFile)));
    action(Command::importFile).trigger();
    EXPECT_TRUE(settleUntil([&] { return element("/PLC/Line") != nullptr; }));
    EXPECT_EQ(element("/PLC 2/Line"), nullptr);
}

} // namespace corvane::workbench::gui
