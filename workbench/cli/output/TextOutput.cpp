#include "workbench/cli/output/TextOutput.hpp"

#include "workbench/core/edit/workspace/FieldText.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/utils/string/ControlCharacters.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/utils/string/Word.hpp>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace corvane::workbench::cli {

namespace {

using utils::string::maskControlCharacters;

constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kPlain = "\x1b[0m";

bool isTerminal(int descriptor) { return ::isatty(descriptor) == 1; }

/// Writes a line to standard error, whose control characters but those in `kept` a terminal gets
/// masked.
void printLine(std::string_view line, std::string_view kept) {
    if (isTerminal(STDERR_FILENO))
        std::cerr << maskControlCharacters(line, kept) << '\n';
    else
        std::cerr << line << '\n';
}

} // namespace

std::string narrow(std::u16string_view text) { return utils::string::detail::utf16ToUtf8(text); }

std::string textOf(const ui::ControlValue& value) { return narrow(core::textOf(value)); }

std::size_t widthOf(std::string_view utf8) {
    namespace word = utils::string::word;
    std::size_t columns = utf8.size();
    for (; utf8.size() >= word::kSize; utf8.remove_prefix(word::kSize))
        columns -= word::countOf(word::continuations(word::load(utf8.data())));
    const auto rest = word::loadShort(utf8.data(), utf8.size());
    return columns - word::countOf(word::continuations(rest));
}

std::string padded(std::string_view text, std::size_t width) {
    const std::size_t own = widthOf(text);
    return std::string(text) + std::string(own < width ? width - own : 0, ' ');
}

TextOutput::TextOutput()
    : isTerminal_(isTerminal(STDOUT_FILENO)),
      isColoured_(isTerminal_ && std::getenv("NO_COLOR") == nullptr),
      stream_(STDOUT_FILENO) {}

void TextOutput::writeInBold(std::string_view text) {
    stream_.write(kBold);
    write(text);
    stream_.write(kPlain);
}

void TextOutput::writeDocument(function_ref<void(utils::io::OutputStream&)> write) {
    if (!isTerminal_) {
        write(stream_);
        return;
    }
    utils::io::StringOutputStream document;
    write(document);
    stream_.write(maskControlCharacters(document.take(), "\n"));
}

void TextOutput::writeMasked(std::string_view text) {
    if (utils::string::hasControlCharacter(text))
        stream_.write(maskControlCharacters(text));
    else
        stream_.write(text);
}

void printMessage(std::string_view line) { printLine(line, {}); }

void printTabbed(std::string_view line) { printLine(line, "\t"); }

std::string programMessage(std::string_view text) { return std::string("corvane: ").append(text); }

void Table::write(TextOutput& output) const {
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i != row.size(); ++i)
            widths[i] = std::max(widths[i], widthOf(row[i]));
    for (const auto& row : rows_) {
        std::string line = "  " + padded(row.front(), widths.front());
        for (std::size_t i = 1; i != row.size(); ++i)
            line.append(2 + widths[i] - widthOf(row[i]), ' ').append(row[i]);
        if (&row == &rows_.front())
            output.writeBold(line);
        else
            output.write(line);
        output.endLine();
    }
}

} // namespace corvane::workbench::cli
