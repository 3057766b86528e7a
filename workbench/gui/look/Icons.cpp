#include "workbench/gui/look/Icons.hpp"

#include "workbench/gui/look/SvgIconEngine.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QFile>

#include <algorithm>
#include <array>

namespace corvane::workbench::gui {

namespace {

// Each is drawn in "@" on a field of 24 by 24.
constexpr std::string_view kTopShape =
    R"(<rect x="2" y="2" width="20" height="20" rx="3" fill="@"/>)"
    R"(<path d="M6 0v3M12 0v3M18 0v3M6 21v3M12 21v3M18 21v3" stroke="@" stroke-width="2"/>)";
constexpr std::string_view kHolderShape =
    R"(<path d="M1 5a2 2 0 0 1 2-2h6l2 3h10a2 2 0 0 1 2 2v11a2 2 0 0 1-2 2H3a2 2 0 0 1-2-2z" )"
    R"(fill="@"/>)";
constexpr std::string_view kLeafShape = R"(<circle cx="12" cy="12" r="11" fill="@"/>)";

constexpr std::array<const char*, 12> kColours{"#546e7a", "#8e4ec6", "#2e7d32", "#ad5c00",
                                               "#00838f", "#c2255c", "#3457b0", "#b26a00",
                                               "#5d4037", "#1f8a70", "#6d4bb8", "#a33b3b"};

const char* colourOf(int classCode) {
    const auto count = static_cast<int>(kColours.size());
    return kColours[static_cast<std::size_t>(((classCode % count) + count) % count)];
}

} // namespace

QIcon icon(std::string_view name) {
    const auto key = toQt(name);
    QFile file(QStringLiteral(":/icons/%1.svg").arg(key));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new SvgIconEngine(key, file.readAll()));
}

QIcon ClassIcons::of(const skill::Element::Class& elementClass) {
    auto& known = icons_[&elementClass];
    if (known.isNull()) {
        const auto* const colour = colourOf(elementClass.classCode());
        known = QIcon(new SvgIconEngine(toQt(elementClass.uuid().toString()),
                                        draw(elementClass, colour, "white"),
                                        draw(elementClass, "white", colour)));
    }
    return known;
}

std::string_view ClassIcons::shapeOf(const skill::Element::Class& elementClass) const {
    for (const auto& skill : plugins_->skills())
        for (const auto& entry : skill.classes)
            if (entry.elementClass == &elementClass && entry.topLevel)
                return kTopShape;
    for (const auto& skill : plugins_->skills())
        if (std::ranges::any_of(skill.classes, [&](const core::LoadedClass& entry) {
                return elementClass.acceptsChild(*entry.elementClass);
            }))
            return kHolderShape;
    return kLeafShape;
}

QByteArray ClassIcons::draw(const skill::Element::Class& elementClass, const char* colour,
                            const char* letterColour) const {
    const auto shortName = toQt(elementClass.shortName());
    // More than two letters cannot be read at the size of a line.
    const auto letters = shortName.size() <= 2 ? shortName : shortName.left(1);
    const auto shape = shapeOf(elementClass);
    auto drawn = QByteArray(shape.data(), static_cast<qsizetype>(shape.size()));
    drawn.replace("@", colour);
    return QByteArrayLiteral(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">)") +
           drawn +
           QStringLiteral(R"(<text x="12" y="%1" text-anchor="middle" font-family="sans-serif" )"
                          R"(font-weight="bold" font-size="%2" fill="%4">%3</text></svg>)")
               .arg(shape == kHolderShape ? 18 : 17)
               .arg(letters.size() == 1 ? 14 : 12)
               .arg(letters.toUpper().toHtmlEscaped(), QLatin1String(letterColour))
               .toUtf8();
}

} // namespace corvane::workbench::gui
