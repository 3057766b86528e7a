#include "GuiTesting.hpp"

#include "workbench/gui/look/Theme.hpp"

#include <QImage>
#include <QLabel>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane::workbench::gui {

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// The ratio of the accessibility guidelines, from 1 to 21.
double contrast(const QColor& a, const QColor& b) {
    const auto [darker, brighter] = std::minmax({luminance(a), luminance(b)});
    return (brighter + 0.05) / (darker + 0.05);
}

struct Pair {
    QPalette::ColorRole text;
    QPalette::ColorRole background;
};

constexpr std::array kPairs{
    Pair{QPalette::WindowText, QPalette::Window},
    Pair{QPalette::Text, QPalette::Base},
    Pair{QPalette::Text, QPalette::AlternateBase},
    Pair{QPalette::ButtonText, QPalette::Button},
    Pair{QPalette::ToolTipText, QPalette::ToolTipBase},
    Pair{QPalette::PlaceholderText, QPalette::Base},
    Pair{QPalette::PlaceholderText, QPalette::Window},
    Pair{QPalette::HighlightedText, QPalette::Highlight},
    Pair{QPalette::Link, QPalette::Window},
    Pair{kErrorRole, QPalette::Base},
    Pair{kErrorRole, QPalette::Window},
};

class LooksTest : public GuiTest {
protected:
    QColor noticeBackground() {
        auto& bar = child<NoticeBar>();
        return bar.grab().toImage().pixelColor(bar.width() / 2, 3);
    }
};

} // namespace

TEST_F(LooksTest, TextsCanBeReadInBothThemes) {
    for (const auto theme : {Command::themeLight, Command::themeDark}) {
        trigger(theme);
        const auto palette = window().palette();
        for (const auto& pair : kPairs)
            EXPECT_GE(contrast(palette.color(pair.text), palette.color(pair.background)), 4.5)
                << isDark(palette) << " " << pair.text << " on " << pair.background;
    }
}

TEST_F(LooksTest, AnErrorTakesTheColourOfANewTheme) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    const auto* const error = errorLabel("Address");
    for (const auto theme : {Command::themeDark, Command::themeLight}) {
        trigger(theme);
        EXPECT_EQ(error->palette().color(error->foregroundRole()),
                  window().palette().color(kErrorRole));
    }
}

TEST_F(LooksTest, ANoticeShowsItsKindByItsColour) {
    window().openFiles({writeFile("good.db", "DATA_BLOCK DB1\n{ S7_Optimized_Access := 'FALSE' }\n"
                                             "STRUCT\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n")});
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/DB1") != nullptr; }));
    const auto information = noticeBackground();
    EXPECT_GT(information.blue(), information.red());
    select("/PLC");
    dialogs_.fileToImport = writeFile("broken.db", "DATA_BLOCK");
    window().openFiles({dialogs_.fileToImport});
    settle();
    const auto error = noticeBackground();
    EXPECT_GT(error.red(), error.blue());
}

TEST_F(LooksTest, TheIconOfASelectedLineDoesNotDrownInIt) {
    importExample();
    const auto icon = tree().model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>();
    const auto bodyIn = [&](QIcon::Mode mode) {
        return icon.pixmap(24, mode).toImage().pixelColor(5, 12);
    };
    EXPECT_EQ(bodyIn(QIcon::Selected), QColor(Qt::white));
    EXPECT_GE(contrast(bodyIn(QIcon::Normal), window().palette().color(QPalette::Base)), 3);
}

} // namespace corvane::workbench::gui
