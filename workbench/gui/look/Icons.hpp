#pragma once

#include "workbench/core/plugins/PluginHost.hpp"

#include <QHash>
#include <QIcon>
#include <QString>

#include <string_view>

namespace corvane::workbench::gui {

/// The program's own picture of that name, from the icons folder.
[[nodiscard]] QIcon icon(std::string_view name);

/// Pictures of element classes. Plug-ins bring none, so each is drawn from what the class tells of
/// itself: its shape says what stands at the top, what holds others and what does not; its colour
/// follows the class code, and the letters on it the short name. Where its line is selected, colour
/// and letters change places.
class ClassIcons {
public:
    explicit ClassIcons(const core::PluginHost& plugins) : plugins_(&plugins) {}

    [[nodiscard]] QIcon of(const skill::Element::Class& elementClass);

private:
    [[nodiscard]] QByteArray draw(const skill::Element::Class& elementClass, const char* colour,
                                  const char* letterColour) const;
    [[nodiscard]] std::string_view shapeOf(const skill::Element::Class& elementClass) const;

    const core::PluginHost* plugins_;
    QHash<const skill::Element::Class*, QIcon> icons_;
};

} // namespace corvane::workbench::gui
