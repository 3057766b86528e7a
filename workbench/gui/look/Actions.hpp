#pragma once

#include "workbench/gui/look/Commands.hpp"

#include <QAction>
#include <QObject>

#include <array>

namespace corvane::workbench::gui {

/// The actions of the table of commands, made once and shown in menus and tool bars.
class Actions {
public:
    /// The actions belong to `owner`.
    explicit Actions(QObject* owner);

    [[nodiscard]] QAction& operator[](Command command) const {
        return *actions_[static_cast<std::size_t>(command)];
    }

    /// What the command would act on now, shown behind its text; empty for nothing to be shown.
    void setObject(Command command, const QString& object) const;

private:
    std::array<QAction*, kCommandCount> actions_{};
};

} // namespace corvane::workbench::gui
