// In some language two fields of a form may have the same label.
#include "GuiTesting.hpp"

#include "workbench/gui/fields/ReferenceField.hpp"
#include "workbench/gui/fields/UnsignedSpinBox.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <QPushButton>

namespace corvane::workbench::gui {

namespace {

class SameLabelTest : public GuiTest {
public:
    SameLabelTest() {
        i18n::setTranslator([](std::string_view, std::string_view text) {
            std::optional<std::u16string> label;
            if (text == "Rack number" || text == "Slot number")
                label = u"Number";
            else if (text == "Command")
                label = u"Address";
            return label;
        });
        reopenWindow();
        window().openFiles(
            {writeFile("two.json", R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"P",)"
                                   R"("address":"a","rack":1,"slot":2,"children":[)"
                                   R"({"@Skill.S7.Item":{"name":"i","address":"MW0"}}]}},)"
                                   R"({"@Skill.S7.PLC":{"name":"Q","address":"a","rack":1,)"
                                   R"("slot":2}}]})")});
        EXPECT_TRUE(settleUntil([&] { return element("/Q") != nullptr; }));
        settle();
    }
    ~SameLabelTest() override { i18n::setTranslator({}); }

    std::pair<std::uint64_t, std::uint64_t> rackAndSlot(const char* elementPath) {
        const core::OpenForm form(*element(elementPath));
        const auto number = [&](const char* key) {
            return std::get<std::uint64_t>(form.find(key)->value());
        };
        return {number("rack"), number("slot")};
    }
    using Numbers = std::pair<std::uint64_t, std::uint64_t>;

    /// Shows both PLCs in the table.
    void showPlcs() {
        tree().setCurrentIndex({});
        trigger(Command::showTable);
        ASSERT_EQ(column(table(), 0), QStringList({"P", "Q"}));
    }
};

} // namespace

TEST_F(SameLabelTest, EachFieldOfAFormHasItsValue) {
    select("/P");
    auto& slot = *child<FormPanel>().findChild<UnsignedSpinBox*>(QStringLiteral("slot"));
    QTest::mouseClick(&slot, Qt::LeftButton);
    slot.selectAll();
    QTest::keyClicks(&slot, QStringLiteral("17"));
    QTest::keyClick(&slot, Qt::Key_Return);
    settle();
    EXPECT_EQ(rackAndSlot("/P"), Numbers(1, 17));
    EXPECT_EQ(action(Command::undo).text(), "&Undo: Change “Number”");
    trigger(Command::undo);
    EXPECT_EQ(rackAndSlot("/P"), Numbers(1, 2));
}

TEST_F(SameLabelTest, EachColumnOfTheTableHasItsField) {
    showPlcs();
    const auto slot = table().model()->index(0, 4);
    EXPECT_EQ(slot.data(), "2");
    table().setFocus();
    table().setCurrentIndex(slot);
    table().edit(slot);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("9"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    settle();
    const auto numbers = rackAndSlot("/P");
    EXPECT_EQ(numbers.first, 1u);
    EXPECT_NE(numbers.second, 2u);
}

TEST_F(SameLabelTest, TheFieldThatWasChosenIsChangedInAllRows) {
    showPlcs();
    table().selectAll();
    settle();
    trigger(Command::changeSelected);
    auto& which = child<QComboBox>("bulkField");
    ASSERT_EQ(which.count(), 3);
    which.setCurrentIndex(2);
    settle();
    auto* const slot = child<BulkEditBar>().findChild<UnsignedSpinBox*>(QStringLiteral("slot"));
    ASSERT_NE(slot, nullptr);
    slot->setFocus();
    slot->selectAll();
    QTest::keyClicks(slot, QStringLiteral("30"));
    child<QPushButton>("bulkApply").click(); // as its key does: the keyboard stays
    settle();
    EXPECT_EQ(rackAndSlot("/P"), Numbers(1, 30));
    EXPECT_EQ(rackAndSlot("/Q"), Numbers(1, 30));
    EXPECT_EQ(which.currentIndex(), 2);
}

TEST_F(SameLabelTest, AProblemLeadsToItsOwnField) {
    const auto fields = column(problems(), 2);
    ASSERT_EQ(fields, QStringList({"Address"})); // of the command, which is missing
    click(problems(), problems().model()->index(0, 0));
    settle();
    EXPECT_TRUE(child<FormPanel>().findChild<LateComboBox*>(QStringLiteral("command"))->hasFocus());
}

} // namespace corvane::workbench::gui
