#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace corvane::workbench::core {

/// A line of a file that was to be imported, for a user to see what is wrong with it.
struct SourceLine {
    std::string text;  ///< UTF-8, with an ellipsis at each end where something was cut off
    std::string caret; ///< blanks and a "^" under the column; tabs stand where the text has them
};

/// The line with the number `line`, from 1, of which no more than `width` characters are shown,
/// those around `column`, from 1 in code points. Lines end as editors have it: with "\n", "\r\n" or
/// "\r"; what is not UTF-8 counts and shows as U+FFFD, and a byte order mark is no part of a line.
///
/// Empty where the file has no such place, and for what is no plain file (a pipe could not be read
/// twice) or cannot be read.
[[nodiscard]] std::optional<SourceLine> sourceLine(const std::filesystem::path& file,
                                                   std::uint64_t line, std::uint64_t column,
                                                   std::size_t width);

} // namespace corvane::workbench::core
