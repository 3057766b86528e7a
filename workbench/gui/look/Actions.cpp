#include "workbench/gui/look/Actions.hpp"

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::Actions";

QString withObject(const QString& text, const QString& object) {
    return object.isEmpty() ? text : translated(kContext, "{}: {}", {text, object});
}

void setTexts(QAction& action, const QString& text, const QString& object) {
    action.setText(withObject(text, withoutMnemonic(object)));
    auto plain = text;
    plain.remove(QLatin1Char('&')).remove(QStringLiteral("…"));
    plain = withObject(plain, object);
    if (!action.shortcut().isEmpty())
        plain = translated(kContext, "{} ({})",
                           {plain, action.shortcut().toString(QKeySequence::NativeText)});
    action.setToolTip(withoutFormat(plain));
}

} // namespace

Actions::Actions(QObject* owner) {
    for (const auto& info : kCommands) {
        auto* const action = new QAction(owner);
        action->setObjectName(QString::fromLatin1(info.name));
        const QKeySequence shortcut(QString::fromLatin1(info.shortcut));
        action->setShortcuts(info.id == Command::redo
                                 ? QList{shortcut, QKeySequence(Qt::CTRL | Qt::Key_Y)}
                                 : QList{shortcut});
        if (*info.icon != '\0')
            action->setIcon(icon(info.icon));
        setTexts(*action, translated(kContext, info.text), {});
        actions_[static_cast<std::size_t>(info.id)] = action;
    }
}

void Actions::setObject(Command command, const QString& object) const {
    const auto* const text = kCommands[static_cast<std::size_t>(command)].text;
    setTexts((*this)[command], translated(kContext, text), object);
}

} // namespace corvane::workbench::gui
