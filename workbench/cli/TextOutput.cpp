#include "workbench/cli/TextOutput.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace corvane::workbench::cli {

namespace {

/// The bytes of the control character in front of UTF-8 (C0, DEL, or C1, which takes two bytes);
/// 0 where there is none.
std::size_t controlCharacterAtFront(std::string_view utf8) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    if (byte(0) < 0x20 || byte(0) == 0x7f)
        return 1;
    return byte(0) == 0xc2 && utf8.size() > 1 && byte(1) >= 0x80 && byte(1) < 0xa0 ? 2 : 0;
}

} // namespace

std::string narrow(std::u16string_view text) { return utils::string::detail::utf16ToUtf8(text); }

std::string textOf(const ui::ControlValue& value) {
    if (const auto* const text = std::get_if<std::u16string>(&value))
        return narrow(*text);
    if (const auto* const flag = std::get_if<bool>(&value))
        return *flag ? "true" : "false";
    if (const auto* const number = std::get_if<std::uint64_t>(&value))
        return std::string(utils::numeric::detail::formatNumber(*number).view());
    return {};
}

std::size_t widthOf(std::string_view utf8) {
    return static_cast<std::size_t>(std::ranges::count_if(
        utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U; }));
}

std::string padded(std::string_view text, std::size_t width) {
    const std::size_t own = widthOf(text);
    return std::string(text) + std::string(own < width ? width - own : 0, ' ');
}

bool hasControlCharacter(std::string_view text) {
    while (!text.empty()) {
        if (controlCharacterAtFront(text) != 0)
            return true;
        text.remove_prefix(1);
    }
    return false;
}

std::string printable(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const auto masked = controlCharacterAtFront(text);
        shown += masked == 0 ? text.front() : '?';
        text.remove_prefix(std::max<std::size_t>(masked, 1));
    }
    return shown;
}

bool useColour() {
    static const bool colour = ::isatty(STDOUT_FILENO) == 1 && std::getenv("NO_COLOR") == nullptr;
    return colour;
}

std::string bold(std::string_view text) {
    if (!useColour())
        return std::string(text);
    return "\x1b[1m" + std::string(text) + "\x1b[0m";
}

void Table::write(utils::io::OutputStream& stream) const {
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i != row.size(); ++i)
            widths[i] = std::max(widths[i], widthOf(row[i]));
    for (const auto& row : rows_) {
        std::string line = "  " + padded(row.front(), widths.front());
        for (std::size_t i = 1; i != row.size(); ++i)
            line += std::string(2 + widths[i] - widthOf(row[i]), ' ') + row[i];
        stream.write(&row == &rows_.front() ? bold(line) : line);
        stream.put('\n');
    }
}

} // namespace corvane::workbench::cli
