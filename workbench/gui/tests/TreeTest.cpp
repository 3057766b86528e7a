#include "GuiTesting.hpp"

#include <QComboBox>
#include <QLabel>
#include <QMimeData>
#include <QTreeView>

#include <algorithm>

namespace corvane::workbench::gui {

TEST_F(GuiTest, TheAddMenuOffersWhatTheElementAccepts) {
    importExample();
    select("/PLC/Line");
    EXPECT_EQ(offeredByAddMenu(), QStringList({"Data Item", "Structure", "S7 Compatible PLC"}));
    select("/PLC/Default Command");
    EXPECT_EQ(offeredByAddMenu(), QStringList({"S7 Compatible PLC"}));
    select("/PLC");
    EXPECT_EQ(offeredByAddMenu(), QStringList({"Command", "Data Block", "Data Item", "Structure",
                                               "S7 Compatible PLC"}));
}

TEST_F(GuiTest, TheFilterShowsMatchesWithWhatIsAboveThem) {
    importExample();
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
    auto& line = child<QLineEdit>("treeFilter");
    EXPECT_TRUE(line.hasFocus());
    QTest::keyClicks(&line, QStringLiteral("maximum"));
    settle();
    const auto* const model = tree().model();
    QModelIndex at;
    QStringList chain;
    while (model->rowCount(at) == 1) {
        at = model->index(0, 0, at);
        chain += at.data().toString();
    }
    EXPECT_EQ(chain, QStringList({"PLC", "Line", "Drive", "Limits", "Maximum"}));
    const auto labels = child<TreePanel>().findChildren<QLabel*>();
    EXPECT_TRUE(
        std::ranges::any_of(labels, [](auto* label) { return label->text() == "1 match"; }));
    QTest::keyClick(&line, Qt::Key_Escape);
    settle();
    EXPECT_EQ(line.text(), "");
    EXPECT_GT(model->rowCount(model->index(0, 0)), 1);
    QTest::keyClick(&line, Qt::Key_Down);
    EXPECT_TRUE(tree().hasFocus());
}

TEST_F(GuiTest, TheTreeShowsDataTypesAndAddressesWhichFollow) {
    importExample();
    const auto summaryOf = [&](const char* elementPath) {
        auto* const model = window().findChild<TreeModel*>();
        return model->indexOf(*element(elementPath)).data(TreeModel::kSummaryRole).toString();
    };
    EXPECT_EQ(summaryOf("/PLC/Line/SpeedSetpoint"), "Int  DB51.DB2");
    EXPECT_EQ(summaryOf("/PLC/Line"), "DB51");
    EXPECT_EQ(summaryOf("/PLC/Default Command"), "");
    select("/PLC/Line");
    auto* const number = field<QWidget>("DB number")->findChild<QLineEdit*>();
    ASSERT_NE(number, nullptr);
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("7"));
    QTest::keyClick(number, Qt::Key_Return);
    settle();
    EXPECT_EQ(summaryOf("/PLC/Line/SpeedSetpoint"), "Int  DB7.DB2");
    trigger(Command::undo);
    EXPECT_EQ(summaryOf("/PLC/Line/SpeedSetpoint"), "Int  DB51.DB2");

    select("/PLC/Line/SpeedSetpoint");
    const auto pictureOf = [&] { return tree().grab().toImage(); };
    const auto with = pictureOf();
    trigger(Command::showSummaries);
    EXPECT_EQ(summaryOf("/PLC/Line/SpeedSetpoint"), "");
    EXPECT_NE(pictureOf(), with);
    reopenWindow(); // it is kept
    EXPECT_FALSE(action(Command::showSummaries).isChecked());
    importExample();
    EXPECT_EQ(summaryOf("/PLC/Line/SpeedSetpoint"), "");
}

TEST_F(GuiTest, TheFilterFindsAddresses) {
    importExample();
    trigger(Command::filterTree);
    QTest::keyClicks(&child<QLineEdit>("treeFilter"), QStringLiteral("db51.db2"));
    settle();
    press(Qt::Key_Down);
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedSetpoint"));
    child<QLineEdit>("treeFilter").clear();
    settle();
    QTest::keyClicks(&child<QLineEdit>("treeFilter"), QStringLiteral("DB7.DB2"));
    settle();
    EXPECT_EQ(tree().model()->rowCount(), 0);
}

TEST_F(GuiTest, ANameIsChangedInPlaceAndReferencesFollow) {
    importExample();
    select("/PLC/Default Command");
    tree().setFocus();
    QTest::keyClick(&window(), Qt::Key_F2);
    auto* const editor = tree().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Fast"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_NE(element("/PLC/Fast"), nullptr);
    select("/PLC/Line/Enabled");
    EXPECT_EQ(field<QComboBox>("Command")->currentText(), "/PLC/Fast");
}

TEST_F(GuiTest, ANameThatIsTakenIsRefused) {
    importExample();
    const auto index = tree().model()->index(0, 0, tree().model()->index(0, 0));
    tree().model()->setData(index, QStringLiteral("Line"));
    settle();
    EXPECT_NE(element("/PLC/Default Command"), nullptr);
    EXPECT_FALSE(notice().isEmpty());
}

TEST_F(GuiTest, ARemovalTellsOfReferencesThatAreLost) {
    importExample();
    select("/PLC/Default Command");
    trigger(Command::remove);
    EXPECT_EQ(element("/PLC/Default Command"), nullptr);
    EXPECT_TRUE(notice().contains("refer to nothing")) << qPrintable(notice());
    trigger(Command::undo);
    ASSERT_NE(element("/PLC/Default Command"), nullptr);
    select("/PLC/Line/Enabled");
    EXPECT_EQ(errorAt("Command"), "");
}

TEST_F(GuiTest, ElementsAreDraggedToWhereTheyAreAccepted) {
    importExample();
    auto& model = *tree().model();
    const auto plc = model.index(0, 0);
    QModelIndex line, filler;
    for (int row = 0; row != model.rowCount(plc); ++row) {
        const auto index = model.index(row, 0, plc);
        if (index.data() == "Line")
            line = index;
        if (index.data() == "Filler")
            filler = index;
    }
    const std::unique_ptr<QMimeData> item(model.mimeData({model.index(0, 0, line)}));
    EXPECT_TRUE(model.canDropMimeData(item.get(), Qt::MoveAction, -1, 0, filler));
    EXPECT_FALSE(model.canDropMimeData(item.get(), Qt::MoveAction, -1, 0, {}));
    EXPECT_TRUE(model.dropMimeData(item.get(), Qt::MoveAction, 0, 0, filler));
    settle();
    EXPECT_EQ(element("/PLC/Line/Enabled"), nullptr);
    ASSERT_NE(element("/PLC/Filler/Enabled"), nullptr);
    EXPECT_EQ(element("/PLC/Filler")->childElements()[0].get(), element("/PLC/Filler/Enabled"));
    trigger(Command::undo);
    EXPECT_NE(element("/PLC/Line/Enabled"), nullptr);
}

TEST_F(GuiTest, ALongListOfChildrenIsFetchedAsItIsScrolled) {
    QByteArray items;
    for (int i = 0; i != 5000; ++i)
        items += QByteArray(i == 0 ? "" : ",") + R"({"@Skill.S7.Item":{"name":"i)" +
                 QByteArray::number(i) + R"(","address":"MW0"}})";
    window().openFiles({writeFile(
        "long.json", R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"P","children":[)" +
                         items + "]}}]}")});
    ASSERT_TRUE(settleUntil([&] { return element("/P/i4999") != nullptr; }));
    auto& model = *tree().model();
    const auto top = model.index(0, 0);
    const int first = model.rowCount(top);
    EXPECT_LE(first, 2000);
    ASSERT_TRUE(model.canFetchMore(top));
    model.fetchMore(top);
    EXPECT_EQ(model.rowCount(top), std::min(2 * first, 5000));
    select("/P/i4500");
    EXPECT_EQ(tree().currentIndex().data(), "i4500");
    EXPECT_EQ(model.rowCount(top), 5000);

    // What is added at the end of a list that is shown in part comes with the rest of it.
    trigger(Command::remove);
    EXPECT_EQ(model.rowCount(top), 4999);
    trigger(Command::undo);
    EXPECT_EQ(model.rowCount(top), 5000);
}

} // namespace corvane::workbench::gui
