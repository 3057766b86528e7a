#include "workbench/gui/look/Theme.hpp"

#include <QApplication>
#include <QPixmapCache>
#include <QStyleFactory>

namespace corvane::workbench::gui {

namespace {

struct Colours {
    QRgb window, base, alternate, text, faint, button, accent, accentText, link, error;
};

constexpr Colours kLight{.window = 0xfff3f4f6,
                         .base = 0xffffffff,
                         .alternate = 0xfff8f9fb,
                         .text = 0xff1d222b,
                         .faint = 0xff5d6470,
                         .button = 0xffe9ebef,
                         .accent = 0xff2563c9,
                         .accentText = 0xffffffff,
                         .link = 0xff1d4fa8,
                         .error = 0xffb3261e};
constexpr Colours kDark{.window = 0xff22262d,
                        .base = 0xff1a1d23,
                        .alternate = 0xff1f232a,
                        .text = 0xffe3e6eb,
                        .faint = 0xff99a1ad,
                        .button = 0xff2d323b,
                        .accent = 0xff3b6fc4,
                        .accentText = 0xffffffff,
                        .link = 0xff8ab4f8,
                        .error = 0xffff8a80};

QPalette paletteOf(const Colours& colours) {
    QPalette palette(QColor(colours.button), QColor(colours.window));
    const QColor text(colours.text);
    const QColor faint(colours.faint);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.alternate);
    palette.setColor(QPalette::ToolTipBase, colours.button);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, colours.accent);
    palette.setColor(QPalette::HighlightedText, colours.accentText);
    palette.setColor(QPalette::Link, colours.link);
    palette.setColor(kErrorRole, colours.error);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

// What the style cannot be told through the palette.
constexpr const char* kStyleSheet = R"(
    QLineEdit, QComboBox, QAbstractSpinBox { padding: 3px; min-height: 20px; }
    QAbstractItemView QLineEdit, QAbstractItemView QComboBox, QAbstractItemView QAbstractSpinBox {
        padding: 0px 2px; min-height: 0px; }
    QLineEdit[readOnly="true"] { background: transparent; border: none; }
    QToolButton#addButton { padding-right: 16px; }
    QToolButton#addButton::menu-indicator { subcontrol-position: right center; right: 4px; }
    QToolBar { border: none; padding: 3px; spacing: 3px; }
    QTreeView, QTableView { border: 1px solid palette(mid); }
    #frozenNames { border: none; border-right: 1px solid palette(mid); }
    QTreeView::item { padding: 2px 0px; }
    #formTitle { font-size: 15pt; font-weight: 600; }
    #startTitle { font-size: 20pt; font-weight: 600; }
    #startPage QPushButton { padding: 8px 16px; text-align: left; }
    #helpArea { border-top: 1px solid palette(mid); }
)";

} // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::Text).lightness();
}

void applyTheme(Theme theme) {
    static const bool desktopIsDark = isDark(QApplication::palette());
    static const bool styled = [] {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        return true;
    }();
    static_cast<void>(styled);
    const bool dark = theme == Theme::dark || (theme == Theme::system && desktopIsDark);
    QPixmapCache::clear();
    QApplication::setPalette(paletteOf(dark ? kDark : kLight));
    // Set anew each time: the sheet takes its colours from the palette when it is set.
    qApp->setStyleSheet(QString::fromLatin1(kStyleSheet));
}

} // namespace corvane::workbench::gui
