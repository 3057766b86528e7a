#include "dbimport/DbFileReader.hpp"

#include "dbimport/Messages.hpp"

#include <corvane/utils/string/FindByte.hpp>
#include <corvane/utils/string/Word.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace corvane::workbench::plugins::s7Driver {

namespace {

namespace word = utils::string::word;
using utils::string::findByte;
using utils::string::findLineEnding;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool takeByteOrderMark(utils::io::InputStream& stream) {
    for (char expected : kByteOrderMark) {
        if (stream.tryPeek() != expected)
            return false;
        stream.skipElement();
    }
    return true;
}

/// Consumes the next byte if it is `expected`.
bool take(utils::io::InputStream& stream, char expected) {
    if (stream.tryPeek() != expected)
        return false;
    stream.skipElement();
    return true;
}

/// Behind the spaces at `at`, as far as they are seen at a glance.
const char* behindIndentation(const char* at, const char* end) {
    if (static_cast<std::size_t>(end - at) < word::kSize)
        return at;
    const std::uint64_t others = word::load(at) ^ word::repeat(' ');
    return at + (others == 0 ? word::kSize : word::firstOf(others));
}

/// Behind the blanks and line comments at `at`, as far as [at, end) tells what they are.
const char* behindBlanks(const char* at, const char* end) {
    for (;;) {
        at = behindIndentation(at, end);
        while (at != end && Delimiters::isBlank(*at))
            at = behindIndentation(at + 1, end);
        if (end - at < 2 || at[0] != '/' || at[1] != '/')
            return at;
        const char* const lineEnding = findLineEnding(at, end);
        if (lineEnding == end)
            return at;
        at = lineEnding;
    }
}

} // namespace

void DbFileReader::skipByteOrderMark() {
    if (!takeByteOrderMark(*stream_))
        stream_->rewind();
    skipBlanks();
}

bool DbFileReader::skipBlanksAndComments() {
    const char* const begin = stream_->cursor();
    const char* const end = stream_->bufferEnd();
    const char* const next = behindBlanks(begin, end);
    stream_->advanceTo(next);
    const bool skipped = next != begin;
    if (next != end && !Delimiters::mayBeginComment(*next))
        return skipped;
    return skipScatteredBlanks() || skipped;
}

bool DbFileReader::skipScatteredBlanks() {
    for (bool skipped = stream_->skipWhitespace();; skipped = true) {
        if (take(*stream_, '/')) {
            if (stream_->tryPeek() != '/') {
                accumulator_.put('/');
                return skipped;
            }
            skipLineAndBlanks();
        } else if (stream_->tryPeek() != '(' || !skipBlockComment()) {
            return skipped;
        }
    }
}

void DbFileReader::skipLineAndBlanks() {
    stream_->skipLine();
    stream_->skipLineEnding();
    stream_->skipWhitespace();
}

// Reads "(" and, where it begins a comment, all of the comment and the blanks behind it. Inside,
// "(*" opens another comment and a lone "(" or "*" is text; what is open is counted, since
// recursion would let a file choose how deep it goes.
bool DbFileReader::skipBlockComment() {
    stream_->skipElement();
    if (!take(*stream_, '*')) {
        accumulator_.put('(');
        return false;
    }
    for (std::size_t open = 1; open > 0;) {
        if (!stream_->ensureBuffer())
            fail(Message::commentOpenAtEnd);
        stream_->advanceTo(std::find_if(stream_->cursor(), stream_->bufferEnd(),
                                        [](char byte) { return byte == '*' || byte == '('; }));
        if (take(*stream_, '*'))
            open -= take(*stream_, ')') ? 1 : 0;
        else if (take(*stream_, '('))
            open += take(*stream_, '*') ? 1 : 0;
    }
    stream_->skipWhitespace();
    return true;
}

char DbFileReader::readScatteredChar() {
    if (accumulator_.present())
        return accumulator_.take();
    if (!stream_->ensureBuffer())
        fail(Message::endInsideDeclaration);
    return stream_->readElement();
}

// The word where it stands in the buffer, if that can be told without a look at what is not there
// yet: if blanks follow and behind them, still in the buffer, something that begins no comment.
// That is so for nearly every word.
std::optional<std::string_view> DbFileReader::readBufferedWord(const Delimiters& delimiters) {
    if (accumulator_.present())
        return std::nullopt;
    const char* const begin = stream_->cursor();
    const char* const end = stream_->bufferEnd();
    const char* stop = begin;
    while (stop != end && !delimiters.stop(*stop))
        ++stop;
    const char* next = stop;
    while (next != end && Delimiters::isBlank(*next))
        ++next;
    const bool ended = next != end && (next != stop || delimiters.contains(*next));
    if (!ended || Delimiters::mayBeginComment(*next))
        return std::nullopt;
    stream_->advanceTo(next);
    return std::string_view(begin, stop);
}

std::string_view DbFileReader::readScatteredWord(const Delimiters& delimiters) {
    text_.clear();
    for (;;) {
        if (accumulator_.present())
            text_.push_back(accumulator_.take());
        appendUntilStop(delimiters);
        if (stream_->eof() || skipBlanks())
            return text_;
        if (delimiters.contains(*peekChar()))
            return text_;
    }
}

void DbFileReader::appendUntilStop(const Delimiters& delimiters) {
    while (stream_->ensureBuffer()) {
        const char* const begin = stream_->cursor();
        const char* const end = stream_->bufferEnd();
        const char* stop = begin;
        while (stop != end && !delimiters.stop(*stop))
            ++stop;
        text_.append(begin, stop);
        stream_->advanceTo(stop);
        if (stop != end)
            return;
    }
}

std::string_view DbFileReader::readQuoted(char quote) {
    text_.clear();
    readChar();
    appendUntilQuote(quote);
    skipBlanks();
    return text_;
}

// The text where it stands in the buffer, if it and what follows it are there.
std::string_view DbFileReader::readQuotedKeepQuotes(char quote) {
    const char* const begin = stream_->cursor();
    const char* const end = stream_->bufferEnd();
    if (!accumulator_.present() && begin != end && *begin == quote) {
        const char* const found = findByte(begin + 1, end, quote);
        if (end - found > 1) {
            stream_->advanceTo(found + 1);
            return {begin, found + 1};
        }
    }
    readChar();
    text_.assign(1, quote);
    appendUntilQuote(quote);
    text_.push_back(quote);
    return text_;
}

// Reads up to the quote and consumes it.
void DbFileReader::appendUntilQuote(char quote) {
    while (stream_->ensureBuffer()) {
        const char* const begin = stream_->cursor();
        const char* const end = stream_->bufferEnd();
        const char* const found = findByte(begin, end, quote);
        text_.append(begin, found);
        if (found != end) {
            stream_->advanceTo(found + 1);
            return;
        }
        stream_->advanceTo(end);
    }
    fail(Message::endInsideDeclaration);
}

std::string_view DbFileReader::readNumberText() {
    text_.clear();
    if (atEnd())
        return text_;
    text_.push_back(readChar());
    for (auto next = stream_->tryPeek(); next && isDigit(*next); next = stream_->tryPeek())
        text_.push_back(stream_->readElement());
    skipBlanks();
    return text_;
}

void DbFileReader::skipRestOfLine() {
    accumulator_.clear();
    stream_->skipLine();
    stream_->skipLineEnding();
    skipBlanks();
}

} // namespace corvane::workbench::plugins::s7Driver
