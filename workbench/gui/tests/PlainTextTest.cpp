// Texts of users and plug-ins are shown as they are, wherever they are shown.
#include "GuiTesting.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/window/NativeDialogs.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTextDocument>
#include <QToolButton>
#include <QWindow>

namespace corvane::workbench::gui {

namespace {

constexpr const char* kHostile = "<b>R&D</b>";

/// What a reader sees of a tooltip.
QString seenTip(const QString& tip) {
    if (!Qt::mightBeRichText(tip))
        return tip;
    QTextDocument document;
    document.setHtml(tip);
    return document.toPlainText();
}

/// What a reader sees of a text in which "&" marks a key.
QString seenText(QString text) {
    return text.replace(QStringLiteral("&&"), QStringLiteral("\1"))
        .remove(QLatin1Char('&'))
        .replace(QLatin1Char('\1'), QLatin1Char('&'));
}

/// A window in which every text of the plug-in holds tags and marks of keys.
class PlainTextTest : public GuiTest {
public:
    PlainTextTest() {
        i18n::setTranslator([](std::string_view context, std::string_view text) {
            if (!context.starts_with("corvane::workbench::plugins"))
                return std::optional<std::u16string>();
            return std::optional(std::u16string(text.begin(), text.end()) + u" " + hostile());
        });
        reopenWindow();
        window().openFiles(
            {writeFile("R&D <b>x.json", R"({"corvane":1,"elements":[{"@Skill.S7.PLC":)"
                                        R"({"name":"<b>R&D</b>","address":""}}]})")});
        EXPECT_TRUE(settleUntil([&] { return !session().isEmpty(); }));
        child<TreePanel>().select(*session().root().childElements()[0]);
        settle();
    }
    ~PlainTextTest() override { i18n::setTranslator({}); }

    static std::u16string hostile() {
        const std::string_view text(kHostile);
        return {text.begin(), text.end()};
    }
};

} // namespace

TEST_F(PlainTextTest, NoLabelFormatsItsText) {
    trigger(Command::showTable);
    table().setCurrentIndex(table().model()->index(0, 0));
    settle();
    trigger(Command::changeSelected);
    const auto labels = window().findChildren<QLabel*>();
    int shown = 0;
    for (const auto* const label : labels) {
        if (label->text().isEmpty())
            continue;
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << qPrintable(label->text());
        const auto text = label->buddy() == nullptr ? label->text() : seenText(label->text());
        shown += text.endsWith(QLatin1String(kHostile)) ? 1 : 0;
    }
    // Title, the three labels of the form, the help and the error at the address.
    EXPECT_GE(shown, 6);
}

TEST_F(PlainTextTest, NoToolTipFormatsItsText) {
    int shown = 0;
    for (const auto* const widget : window().findChildren<QWidget*>())
        for (const auto& tip : {widget->toolTip(), widget->whatsThis()}) {
            if (!tip.contains("R&") && !tip.contains("<b>"))
                continue;
            const auto seen = seenTip(tip);
            EXPECT_TRUE(seen.contains(QLatin1String(kHostile)) || seen == path("R&D <b>x.json"))
                << qPrintable(tip);
            ++shown;
        }
    EXPECT_GE(shown, 7); // three fields with a tip and a help, and the button

    const auto problem = problems().model()->index(0, 0);
    EXPECT_TRUE(problem.data().toString().endsWith(QLatin1String(kHostile)));
    EXPECT_EQ(seenTip(problem.data(Qt::ToolTipRole).toString()), problem.data().toString());
    const auto place = problem.siblingAtColumn(1);
    EXPECT_EQ(seenTip(place.data(Qt::ToolTipRole).toString()), place.data().toString());

    tree().setCurrentIndex({}); // the table then shows what stands at the top
    trigger(Command::showTable);
    const auto address = table().model()->index(0, 2);
    EXPECT_TRUE(seenTip(address.data(Qt::ToolTipRole).toString()).endsWith(kHostile))
        << qPrintable(address.data(Qt::ToolTipRole).toString());
}

TEST_F(PlainTextTest, NoButtonOrMenuTakesALetterForItsKey) {
    const auto buttons = window().findChildren<QPushButton*>();
    EXPECT_TRUE(std::ranges::any_of(buttons, [](const QPushButton* button) {
        return seenText(button->text()) == "Import DB File <b>R&D</b>";
    }));

    type("Address <b>R&D</b>", "10.0.0.1");
    const auto& undo = action(Command::undo);
    EXPECT_TRUE(seenText(undo.text()).contains("Address <b>R&D</b>")) << qPrintable(undo.text());
    EXPECT_TRUE(seenTip(undo.toolTip()).contains("Address <b>R&D</b>"))
        << qPrintable(undo.toolTip());

    dialogs_.unsaved = Dialogs::Unsaved::discard;
    trigger(Command::newProject);
    QStringList recent;
    for (const auto* const button : child<StartPage>().findChildren<QPushButton*>()) {
        recent += seenText(button->text());
        if (recent.back().contains(".json")) {
            EXPECT_EQ(seenTip(button->toolTip()), path("R&D <b>x.json"));
        }
    }
    const auto shownName = QStringLiteral("R&D <b>x.json  –  ") + folder_.path();
    EXPECT_TRUE(recent.contains(shownName)) << qPrintable(recent.join(u'|'));
}

TEST_F(PlainTextTest, NoMessageFormatsItsText) {
    NativeDialogs dialogs;
    const auto seen = [this](const std::function<void()>& ask) {
        QString text;
        QTimer::singleShot(50, &window(), [&text] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            text = box->text();
            box->reject();
        });
        ask();
        return text;
    };
    EXPECT_TRUE(seen([&] {
                    static_cast<void>(dialogs.askUnsaved(&window(), QLatin1String(kHostile)));
                }).contains(QLatin1String(kHostile)));
    EXPECT_EQ(seen([&] {
                  static_cast<void>(dialogs.confirm(
                      &window(),
                      {.title = {}, .text = QLatin1String(kHostile), .accept = {}, .reject = {}}));
              }),
              QLatin1String(kHostile));
}

TEST_F(PlainTextTest, AFileNameIsNoMarkOfUnsavedChanges) {
    dialogs_.projectToSave = path("a[*]b.json");
    trigger(Command::saveProjectAs);
    EXPECT_EQ(window().windowHandle()->title(), "a[*]b.json – corvane workbench");
}

} // namespace corvane::workbench::gui
