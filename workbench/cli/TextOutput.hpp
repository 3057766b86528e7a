#pragma once

#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/workbench/ui/Control.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text for people, on standard output.
namespace corvane::workbench::cli {

/// UTF-8 for what the system shows in UTF-16.
[[nodiscard]] std::string narrow(std::u16string_view text);

/// A control's value as text; "" where there is none.
[[nodiscard]] std::string textOf(const ui::ControlValue& value);

/// The columns that a text takes on a terminal: one for each code point.
[[nodiscard]] std::size_t widthOf(std::string_view utf8);

/// `text`, filled with blanks up to `width` columns.
[[nodiscard]] std::string padded(std::string_view text, std::size_t width);

/// Whether UTF-8 has a control character in it: U+0000 to U+001F or U+007F to U+009F.
[[nodiscard]] bool hasControlCharacter(std::string_view text);

/// UTF-8 as it can stand on a line of its own: control characters, which names and values may
/// contain, are shown as "?".
[[nodiscard]] std::string printable(std::string_view text);

/// Whether standard output shall be coloured: it is a terminal, and NO_COLOR is not set.
[[nodiscard]] bool useColour();

/// `text` in bold where standard output is coloured.
[[nodiscard]] std::string bold(std::string_view text);

/// Lines of cells under a line of headings; the first column is flushed left, numbers right.
class Table {
public:
    explicit Table(std::vector<std::string> headings) : rows_{std::move(headings)} {}
    void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
    void write(utils::io::OutputStream& stream) const;

private:
    std::vector<std::vector<std::string>> rows_;
};

} // namespace corvane::workbench::cli
