#pragma once

#include "dbimport/facts/Messages.hpp"
#include "dbimport/reader/Delimiters.hpp"

#include <corvane/utils/io/InputStream.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// A pushback slot for one character: a "/" or "(" that was read while looking for a comment and
/// began none.
class Accumulator {
public:
    [[nodiscard]] bool present() const { return present_; }

    /// Only meaningful while `present`.
    [[nodiscard]] char character() const { return character_; }

    /// Throws std::runtime_error when there is a character already.
    void put(char character) {
        if (present_)
            fail(Message::accumulatorFull);
        character_ = character;
        present_ = true;
    }

    /// Gives the character and clears the slot; only to be called while `present`.
    char take() {
        present_ = false;
        return character_;
    }

    void clear() { present_ = false; }

private:
    char character_ = '\0';
    bool present_ = false;
};

/// The lexer of .db files: characters and words, with the blanks and comments between them skipped.
///
/// Comments are "// ..." to the end of the line and "(* ... *)", which nest. Characters are bytes;
/// names beyond ASCII pass through as they are. The reader knows no keywords and folds no case.
///
/// A text that an operation returns is valid until the next operation that consumes something; a
/// peek leaves it alone. What goes wrong is thrown: std::runtime_error with a message of the
/// importer, or whatever the stream throws.
class DbFileReader {
public:
    /// The stream must outlive the reader.
    explicit DbFileReader(utils::io::InputStream& stream) : stream_(&stream) {}

    /// To be called first, once: passes over a UTF-8 byte order mark if there is one, and over the
    /// blanks behind it.
    void skipByteOrderMark();

    /// Skips blanks and comments; true if there were any. Fails while a pushed-back character is
    /// waiting, which only a reader of words or characters may take.
    bool skipBlanks() {
        if (accumulator_.present())
            failAt(offset(), Message::blankExpected);
        const char* const next = stream_->cursor();
        if (next != stream_->bufferEnd() && !kWordEnd.stop(*next))
            return false;
        return skipBlanksAndComments();
    }

    /// The next character without consuming it; empty at the end of the input.
    [[nodiscard]] std::optional<char> peekChar() {
        return accumulator_.present() ? accumulator_.character() : stream_->tryPeek();
    }

    /// Whether the next character is `expected`.
    [[nodiscard]] bool nextIs(char expected) { return peekChar() == expected; }

    /// What of the input is at hand, to be looked at ahead of its reading; empty where nothing is,
    /// and while a pushed-back character waits.
    [[nodiscard]] std::string_view lookAhead() const {
        return accumulator_.present() ? std::string_view()
                                      : std::string_view(stream_->cursor(), stream_->bufferEnd());
    }

    /// Consumes the first `size` bytes of `lookAhead` and nothing behind them.
    void passOver(std::size_t size) { stream_->advanceTo(stream_->cursor() + size); }

    /// Consumes one character and nothing behind it. Fails at the end of the input.
    char readChar() {
        const char* const next = stream_->cursor();
        if (accumulator_.present() || next == stream_->bufferEnd())
            return readScatteredChar();
        place_ = stream_->position();
        stream_->advanceTo(next + 1);
        return *next;
    }

    /// Consumes one character and the blanks behind it.
    char readCharSkipBlanks() {
        const char character = readChar();
        skipBlanks();
        return character;
    }

    /// Reads up to the next blank or comment, which is skipped. A "/" or "(" that begins no comment
    /// is part of the word, as in a/b and Int(5). Empty where no word is next.
    std::string_view readWord() { return readWordUntil(kWordEnd); }

    /// As `readWord`, but the word also ends before any byte of the set; that byte is not consumed.
    std::string_view readWordUntil(const Delimiters& delimiters) {
        const auto word = readBufferedWord(delimiters);
        return word ? *word : readScatteredWord(delimiters);
    }

    /// Reads a quoted text: discards the opening quote (whatever character is next), takes
    /// everything up to `quote`, discards that and skips blanks. Fails when there is no such quote.
    std::string_view readQuoted(char quote);

    /// As `readQuoted`, but the result keeps both quotes and the blanks behind stay unread.
    std::string_view readQuotedKeepQuotes(char quote);

    /// Reads one character, whatever it is, and every digit behind it, then skips blanks. Empty at
    /// the end of the input.
    std::string_view readNumberText();

    /// Skips the rest of the line and the blanks behind it.
    void skipRestOfLine();

    /// Where the next character stands in the file, in bytes from 0.
    [[nodiscard]] std::uint64_t offset() const {
        return stream_->position() - static_cast<std::uint64_t>(accumulator_.present());
    }

    /// Where a fault would lie now: where the last word, number, text or character that was read
    /// begins, unless it was set since.
    [[nodiscard]] std::uint64_t place() const { return place_; }
    void setPlace(std::uint64_t offset) { place_ = offset; }

    /// Whether nothing is left to read.
    [[nodiscard]] bool atEnd() { return !accumulator_.present() && stream_->eof(); }

private:
    static constexpr Delimiters kWordEnd{""};

    std::optional<std::string_view> readBufferedWord(const Delimiters& delimiters);
    std::string_view readScatteredWord(const Delimiters& delimiters);
    char readScatteredChar();
    bool skipBlanksAndComments();
    bool skipScatteredBlanks();
    void skipLineAndBlanks();
    bool skipBlockComment();
    void appendUntilStop(const Delimiters& delimiters);
    void appendUntilQuote(char quote);

    utils::io::InputStream* stream_;
    std::uint64_t place_ = 0;
    Accumulator accumulator_;
    std::string text_;
};

} // namespace corvane::workbench::plugins::s7Driver
