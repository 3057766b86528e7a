#include "workbench/gui/Actions.hpp"

#include "workbench/gui/Icons.hpp"
#include "workbench/gui/Text.hpp"

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::Actions";

QString toolTipOf(const QAction& action) {
    auto text = action.text();
    text.remove(QLatin1Char('&')).remove(QStringLiteral("…"));
    if (action.shortcut().isEmpty())
        return text;
    return translated(kContext, "{} ({})",
                      {text, action.shortcut().toString(QKeySequence::NativeText)});
}

} // namespace

Actions::Actions(QObject* owner) {
    for (const auto& info : kCommands) {
        auto* const action = new QAction(translated(kContext, info.text), owner);
        action->setObjectName(QString::fromLatin1(info.name));
        action->setShortcut(QKeySequence(QString::fromLatin1(info.shortcut)));
        if (*info.icon != '\0')
            action->setIcon(icon(info.icon));
        action->setToolTip(toolTipOf(*action));
        actions_[static_cast<std::size_t>(info.id)] = action;
    }
}

void Actions::setObject(Command command, const QString& object) const {
    auto& action = (*this)[command];
    const auto text = translated(kContext, kCommands[static_cast<std::size_t>(command)].text);
    action.setText(object.isEmpty() ? text : translated(kContext, "{}: {}", {text, object}));
    action.setToolTip(toolTipOf(action));
}

} // namespace corvane::workbench::gui
