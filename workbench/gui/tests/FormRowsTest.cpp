#include "GuiTesting.hpp"

#include "workbench/gui/fields/UnsignedSpinBox.hpp"

#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QWheelEvent>

namespace corvane::workbench::gui {

namespace {

struct Row {
    const char* key;
    const char* label;
    const char* widget; // its class
    const char* description;
    const char* help;
};

constexpr std::array kPlcRows{
    Row{"address", "Address", "QLineEdit", "The network address used by the S7 plc",
        "This field shows the network address of the S7 plc."},
    Row{"rack", "Rack number", "corvane::workbench::gui::UnsignedSpinBox",
        "The rack number of the S7 plc", "This field shows the rack number of the S7 plc."},
    Row{"slot", "Slot number", "corvane::workbench::gui::UnsignedSpinBox",
        "The slot number of the S7 plc", "This field shows the slot number of the S7 plc."},
    Row{"import", "Import DB File", "QPushButton",
        "This button allows you to import the data blocks defined in a .db file in structured "
        "text format. Such files can be exported from within the TIA Portal PLC programming "
        "environment, for example.",
        ""},
};

constexpr std::array kDataBlockRows{
    Row{"dbNumber", "DB number", "corvane::workbench::gui::UnsignedSpinBox",
        "The DB number of the data block", "This field shows the DB number of the data block."},
};

constexpr std::array kItemRows{
    Row{"dataType", "Data type", "QComboBox", "The data type for the data item",
        "This field shows the data type used by the data item."},
    Row{"stringSize", "String size", "corvane::workbench::gui::UnsignedSpinBox",
        "The number of characters in case the item is a String or WString",
        "This field shows the number of characters in case the data item is a String or WString."},
    Row{"address", "Address", "QLineEdit", "The data item address",
        "This field shows the address of the data item."},
    Row{"effectiveAddress", "Effective address", "QLineEdit",
        "The effective address of the data item",
        "This field shows the effective address of the data item."},
    Row{"writable", "Writable", "QComboBox", "The writable flag",
        "This field shows if the data item is writable."},
    Row{"command", "Command", "corvane::workbench::gui::LateComboBox", "The data item command",
        "This field shows the command attached to this data item."},
};

class FormRowsTest : public GuiTest {
protected:
    FormRowsTest() { importExample(); }

    void expectRows(std::span<const Row> rows) {
        auto& form = child<FormPanel>();
        const auto shownRows = form.findChildren<FormRow*>();
        ASSERT_EQ(static_cast<std::size_t>(shownRows.size()), rows.size());
        for (std::size_t i = 0; i != rows.size(); ++i) {
            const auto& row = rows[i];
            const auto& widget = shownRows[static_cast<qsizetype>(i)]->field().widget();
            EXPECT_EQ(widget.objectName(), row.key);
            EXPECT_STREQ(widget.metaObject()->className(), row.widget) << row.label;
            EXPECT_EQ(widget.toolTip(), row.description);
            EXPECT_EQ(widget.whatsThis(), row.help);
            EXPECT_EQ(widget.accessibleName(), row.label);
            if (qobject_cast<const QPushButton*>(&widget) != nullptr)
                continue;
            const auto* const layout = qobject_cast<QFormLayout*>(
                shownRows[static_cast<qsizetype>(i)]->parentWidget()->layout());
            const auto* const label =
                qobject_cast<QLabel*>(layout->labelForField(shownRows[static_cast<qsizetype>(i)]));
            ASSERT_NE(label, nullptr);
            EXPECT_EQ(label->text(), row.label);
        }
    }

    bool isShown(const char* label) {
        const auto* const row = rowOf(label);
        return row != nullptr && row->isVisible();
    }

    /// The end of a line's selection at which the cursor is not; the cursor where none is selected.
    static int anchorOf(const QLineEdit& line) {
        if (!line.hasSelectedText())
            return line.cursorPosition();
        return line.selectionStart() == line.cursorPosition() ? line.selectionEnd()
                                                              : line.selectionStart();
    }

    /// What the box takes when it is stepped far up, then far down.
    std::pair<qulonglong, qulonglong> stepsTo(const char* label) {
        auto* const box = field<UnsignedSpinBox>(label);
        box->stepBy(1'000'000);
        const auto top = box->value();
        box->stepBy(-1'000'000);
        return {box->value(), top};
    }
};

} // namespace

TEST_F(FormRowsTest, ThePlcForm) {
    select("/PLC");
    expectRows(kPlcRows);
    EXPECT_EQ(field<QLineEdit>("Address")->placeholderText(), "enter the address");
    EXPECT_EQ(field<QWidget>("Address")->width(), 300);
    EXPECT_EQ(field<QWidget>("Rack number")->width(), 200);
    EXPECT_EQ(field<QWidget>("Slot number")->width(), 200);
    EXPECT_EQ(field<QPushButton>("Import DB File")->text(), "Import DB File");
    EXPECT_EQ(stepsTo("Rack number"), std::pair(0ull, 7ull));
    EXPECT_EQ(stepsTo("Slot number"), std::pair(0ull, 31ull));
}

TEST_F(FormRowsTest, TheDataBlockForm) {
    select("/PLC/Line");
    expectRows(kDataBlockRows);
    EXPECT_EQ(stepsTo("DB number"), std::pair(1ull, 65535ull));
    auto* const number = field<UnsignedSpinBox>("DB number");
    EXPECT_EQ(number->width(), 200);
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("0"));
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(number->value(), 1u);
}

TEST_F(FormRowsTest, TheItemForm) {
    select("/PLC/Line/Enabled");
    expectRows(kItemRows);
    const QStringList types{"Boolean",
                            "Byte",
                            "Word",
                            "DWord",
                            "LWord",
                            "signed 8-bit integer",
                            "unsigned 8-bit integer",
                            "signed 16-bit integer",
                            "unsigned 16-bit integer",
                            "signed 32-bit integer",
                            "unsigned 32-bit integer",
                            "signed 64-bit integer",
                            "unsigned 64-bit integer",
                            "32-bit floating point",
                            "64-bit floating point",
                            "String",
                            "WString"};
    const auto* const box = field<QComboBox>("Data type");
    ASSERT_EQ(box->count(), types.size());
    for (int i = 0; i != box->count(); ++i)
        EXPECT_EQ(box->itemText(i), types[i]);
    const auto* const writable = field<QComboBox>("Writable");
    ASSERT_EQ(writable->count(), 2);
    EXPECT_EQ(writable->itemText(0), "Read only");
    EXPECT_EQ(writable->itemText(1), "Writable");
    EXPECT_TRUE(field<QLineEdit>("Effective address")->isReadOnly());
}

TEST_F(FormRowsTest, TheCommandChooserOffersTheCommandsOfThePlc) {
    addFromMenu("addButton", QStringLiteral("S7 Compatible PLC"));
    addFromMenu("addButton", QStringLiteral("Command"));
    ASSERT_NE(element("/PLC 2/Command"), nullptr);
    select("/PLC/Line/Enabled");
    auto* const box = field<QComboBox>("Command");
    EXPECT_EQ(box->currentText(), "/PLC/Default Command");
    box->showPopup();
    settle();
    ASSERT_EQ(box->count(), 2);
    EXPECT_EQ(box->itemText(1), "/PLC/Default Command");
    box->hidePopup();
}

TEST_F(FormRowsTest, APastedAddressLosesItsPrefixAndTheCursorFollows) {
    select("/PLC/Line/Enabled");
    auto* const line = field<QLineEdit>("Address");
    line->setFocus();
    line->selectAll();
    QGuiApplication::clipboard()->setText(QStringLiteral("DB7.DB20"));
    QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
    settle();
    EXPECT_EQ(line->text(), "DB20");
    EXPECT_EQ(line->cursorPosition(), 4);
    EXPECT_EQ(anchorOf(*line), 4);
    EXPECT_EQ(shown("Effective address"), "DB51.DB20");

    // The cursor stands within what goes.
    line->setText(QStringLiteral(".DB20"));
    line->setCursorPosition(0);
    QGuiApplication::clipboard()->setText(QStringLiteral("DB123"));
    QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
    settle();
    EXPECT_EQ(line->text(), "DB20");
    EXPECT_EQ(line->cursorPosition(), 0);
    EXPECT_EQ(anchorOf(*line), 0);
}

TEST_F(FormRowsTest, ALineWithControlCharactersIsRefused) {
    select("/PLC");
    type("Address", "10.0.0.1");
    auto* const line = field<QLineEdit>("Address");
    for (const auto* const pasted : {"a\nb", "\t", "\x1b[1m"}) {
        QGuiApplication::clipboard()->setText(QString::fromLatin1(pasted));
        QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
        settle();
        EXPECT_EQ(line->text(), "10.0.0.1");
        EXPECT_EQ(notice(), "/PLC: Address: the value must be one line without control characters");
        child<NoticeBar>().clear();
    }
    trigger(Command::undo);
    EXPECT_EQ(shown("Address"), "") << "nothing else was a step";
}

TEST_F(FormRowsTest, TheCursorStaysWhereTextIsTyped) {
    select("/PLC");
    type("Address", "ad");
    auto* const line = field<QLineEdit>("Address");
    line->setCursorPosition(1);
    QTest::keyClicks(line, QStringLiteral("bc"));
    settle();
    EXPECT_EQ(line->text(), "abcd");
    EXPECT_EQ(line->cursorPosition(), 3);
    QTest::keyClick(line, Qt::Key_Backspace);
    settle();
    EXPECT_EQ(line->text(), "abd");
    EXPECT_EQ(line->cursorPosition(), 2);
    EXPECT_TRUE(action(Command::undo).isEnabled());
    trigger(Command::undo);
    EXPECT_EQ(shown("Address"), "");
}

TEST_F(FormRowsTest, WhatIsTypedBackToWhatItWasIsNoStep) {
    select("/PLC");
    const auto before = action(Command::undo).text();
    type("Address", "a");
    EXPECT_NE(action(Command::undo).text(), before);
    EXPECT_EQ(errorAt("Address"), "");
    QTest::keyClick(field<QLineEdit>("Address"), Qt::Key_Backspace);
    settle();
    EXPECT_EQ(action(Command::undo).text(), before);
    EXPECT_EQ(errorAt("Address"), "Please enter the network address of the target PLC");
}

TEST_F(FormRowsTest, TheStringSizeIsShownForTextsOnly) {
    select("/PLC/Line/Enabled");
    EXPECT_FALSE(isShown("String size"));
    EXPECT_TRUE(isShown("Effective address"));
    auto* const box = field<QComboBox>("Data type");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_End);
    settle();
    EXPECT_EQ(box->currentText(), "WString");
    EXPECT_TRUE(isShown("String size"));
    EXPECT_EQ(field<QWidget>("String size")->width(), 200);
    EXPECT_EQ(stepsTo("String size"), std::pair(0ull, 254ull));
    trigger(Command::undo);
    trigger(Command::undo);
    EXPECT_FALSE(isShown("String size"));
}

TEST_F(FormRowsTest, ScrollingAFormDoesNotChangeTheValuesUnderThePointer) {
    select("/PLC/Line/Enabled");
    auto* const box = field<QComboBox>("Data type");
    EXPECT_EQ(box->focusPolicy(), Qt::StrongFocus); // not the wheel's
    const auto turnWheel = [&] {
        const QPointF middle = box->rect().center();
        QWheelEvent turn(middle, box->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &turn);
        settle();
    };
    field<QLineEdit>("Address")->setFocus();
    turnWheel();
    EXPECT_EQ(box->currentText(), "Boolean");
    box->setFocus();
    turnWheel();
    EXPECT_EQ(box->currentText(), "Byte");
}

TEST_F(FormRowsTest, ANumberIsShownWithTheDigitsThatItsFieldAsksFor) {
    UnsignedSpinBox box(nullptr);
    box.setRange(0, 1000, 1);
    box.setMinimumDigits(3);
    EXPECT_EQ(box.text(), "000");
    box.setValue(7);
    EXPECT_EQ(box.text(), "007");
    box.setValue(1000);
    EXPECT_EQ(box.text(), "1000");
    QString typed;
    box.fixup(typed);
    EXPECT_EQ(typed, "1000");
}

TEST_F(FormRowsTest, AStandaloneItemHasNoEffectiveAddress) {
    select("/PLC");
    addFromMenu("addButton", QStringLiteral("Data Item"));
    EXPECT_FALSE(isShown("Effective address"));
    EXPECT_EQ(errorAt("Address"), "please enter the s7 memory address of the data item");
    EXPECT_EQ(errorAt("Command"), ""); // there is only one
    type("Address", "MW2");
    EXPECT_EQ(errorAt("Address"), "");
}

TEST_F(FormRowsTest, AStoredValueOutsideTheLimitsIsShownAsItIs) {
    window().openFiles({writeFile("wide.json", R"({"corvane":1,"elements":[{"@Skill.S7.PLC":
        {"name":"Wide","address":"a","rack":200,"slot":1,"children":[
        {"@Skill.S7.Item":{"name":"Note","dataType":"String","stringSize":18446744073709551615}}
        ]}}]})")});
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    window().openFiles({path("wide.json")});
    ASSERT_TRUE(settleUntil([&] { return element("/Wide") != nullptr; }));
    select("/Wide");
    auto* const rack = field<UnsignedSpinBox>("Rack number");
    EXPECT_EQ(rack->value(), 200u);
    EXPECT_EQ(rack->findChild<QLineEdit*>()->text(), "200");
    EXPECT_EQ(errorAt("Rack number"), "");
    rack->stepBy(-1);
    EXPECT_EQ(rack->value(), 7u);
    EXPECT_EQ(rack->findChild<QLineEdit*>()->text(), "7");

    select("/Wide/Note");
    EXPECT_EQ(field<UnsignedSpinBox>("String size")->findChild<QLineEdit*>()->text(),
              "18446744073709551615");
}

} // namespace corvane::workbench::gui
