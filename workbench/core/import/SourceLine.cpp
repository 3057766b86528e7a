#include "workbench/core/import/SourceLine.hpp"

#include <corvane/utils/io/FileInputStream.hpp>
#include <corvane/utils/string/FindByte.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <string_view>
#include <system_error>
#include <vector>

namespace corvane::workbench::core {

namespace {

constexpr std::string_view kEllipsis = "\u2026";

/// A file that is one line of a gigabyte is not worth its memory.
constexpr std::size_t kLongestLine = std::size_t{1} << 20U;

/// The bytes of the next line, as far as they are at most `kLongestLine`.
std::string readLine(utils::io::InputStream& stream) {
    std::string line;
    while (line.size() < kLongestLine && stream.ensureBuffer()) {
        const char* const begin = stream.cursor();
        const char* const end =
            begin +
            std::min<std::ptrdiff_t>(stream.bufferEnd() - begin,
                                     static_cast<std::ptrdiff_t>(kLongestLine - line.size()));
        const char* const ending = utils::string::findLineEnding(begin, end);
        line.append(begin, ending);
        stream.advanceTo(ending);
        if (ending != end)
            break;
    }
    return line;
}

std::optional<std::string> readLine(const std::filesystem::path& file, std::uint64_t line) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    utils::io::FileInputStream stream(file);
    for (std::uint64_t skipped = 1; skipped < line; ++skipped) {
        if (stream.eof())
            return std::nullopt;
        stream.skipLine();
        stream.skipLineEnding();
    }
    std::string text = readLine(stream);
    if (line == 1 && text.starts_with(kByteOrderMark))
        text.erase(0, kByteOrderMark.size());
    return text;
}

/// Where the characters of a UTF-8 text begin, and its end.
std::vector<std::size_t> charactersOf(std::string_view text) {
    std::vector<std::size_t> begins;
    for (std::size_t at = 0; at != text.size(); ++at)
        if ((static_cast<unsigned char>(text[at]) & 0xc0U) != 0x80U)
            begins.push_back(at);
    begins.push_back(text.size());
    return begins;
}

SourceLine cut(std::string_view text, const std::vector<std::size_t>& begins, std::size_t column,
               std::size_t width) {
    const std::size_t count = begins.size() - 1;
    const std::size_t latest = count > width ? count - width : 0;
    const std::size_t first = std::min(column > width / 2 ? column - width / 2 : 0, latest);
    const std::size_t last = std::min(first + width, count);
    SourceLine line;
    if (first != 0) {
        line.text = kEllipsis;
        line.caret = ' ';
    }
    line.text += text.substr(begins[first], begins[last] - begins[first]);
    if (last != count)
        line.text += kEllipsis;
    for (std::size_t at = first; at != column; ++at)
        line.caret += text[begins[at]] == '\t' ? '\t' : ' ';
    line.caret += '^';
    return line;
}

} // namespace

std::optional<SourceLine> sourceLine(const std::filesystem::path& file, std::uint64_t line,
                                     std::uint64_t column, std::size_t width) try {
    std::error_code error;
    if (line == 0 || column == 0 || !is_regular_file(file, error))
        return std::nullopt;
    const auto bytes = readLine(file, line);
    if (!bytes)
        return std::nullopt;
    const auto text = utils::string::detail::replaceMalformedUtf8(*bytes);
    const auto begins = charactersOf(text);
    if (column > begins.size())
        return std::nullopt;
    return cut(text, begins, column - 1, width);
} catch (const std::system_error&) { // it could be read before
    return std::nullopt;
}

} // namespace corvane::workbench::core
