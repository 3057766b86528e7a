#pragma once

#include <corvane/utils/io/FileOutputStream.hpp>
#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/ui/Control.hpp>

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

/// Text for people. All that the program prints goes through what stands here.
namespace corvane::workbench::cli {

/// UTF-8 for what the system shows in UTF-16.
[[nodiscard]] std::string narrow(std::u16string_view text);

/// A control's value as text; "" where there is none.
[[nodiscard]] std::string textOf(const ui::ControlValue& value);

/// The columns that a text takes on a terminal: one for each code point.
[[nodiscard]] std::size_t widthOf(std::string_view utf8);

/// `text`, filled with blanks up to `width` columns.
[[nodiscard]] std::string padded(std::string_view text, std::size_t width);

/// Standard output, for people and programs.
///
/// Names, values and the texts of plug-ins may contain control characters. A terminal would obey
/// them, so there each is shown as "?"; a pipe or a file gets every text to the byte.
///
/// What is written arrives when it is flushed. Failures are thrown as std::system_error.
class TextOutput {
public:
    TextOutput();

    /// Writes a part of a line. What ends the line is `endLine`.
    void write(std::string_view text) {
        if (isTerminal_)
            writeMasked(text);
        else
            stream_.write(text);
    }
    /// As `write`, in bold where the output is coloured: on a terminal without NO_COLOR.
    void writeBold(std::string_view text) {
        if (isColoured_)
            writeInBold(text);
        else
            write(text);
    }
    /// Writes `count` blanks.
    void fill(std::size_t count) {
        constexpr std::string_view kBlanks = "                                ";
        for (; count > kBlanks.size(); count -= kBlanks.size())
            stream_.write(kBlanks);
        // Copying the whole block takes a few instructions, however many of it are wanted.
        char* const begin = stream_.reserve(kBlanks.size());
        std::memcpy(begin, kBlanks.data(), kBlanks.size());
        stream_.commit(begin + count);
    }
    void endLine() { stream_.put('\n'); }

    void writeLine(std::string_view text) {
        write(text);
        endLine();
    }

    /// Writes text of many lines, such as JSON, by a function that ends each line itself.
    void writeDocument(function_ref<void(utils::io::OutputStream&)> write);

    void flush() { stream_.flush(); }

    /// Whether a person looks at it.
    [[nodiscard]] bool goesToTerminal() const { return isTerminal_; }

private:
    void writeMasked(std::string_view text);
    void writeInBold(std::string_view text);

    bool isTerminal_;
    bool isColoured_;
    utils::io::FileOutputStream stream_;
};

/// Writes a line to standard error, masked as TextOutput does. Failures are ignored, as nobody
/// could be told.
void printMessage(std::string_view line);

/// The same for a line of a file or one below it, which keep their tabs on a terminal, too.
void printTabbed(std::string_view line);

/// A message of the program's own, as it is printed: behind the program's name.
[[nodiscard]] std::string programMessage(std::string_view text);

/// Lines of cells under a line of headings; the first column is flushed left, numbers right.
class Table {
public:
    explicit Table(std::vector<std::string> headings) : rows_{std::move(headings)} {}
    void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
    void write(TextOutput& output) const;

private:
    std::vector<std::vector<std::string>> rows_;
};

} // namespace corvane::workbench::cli
