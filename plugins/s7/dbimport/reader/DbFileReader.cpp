#include "dbimport/reader/DbFileReader.hpp"

#include "dbimport/reader/WordScan.hpp"

#include <corvane/utils/string/Ascii.hpp>
#include <corvane/utils/string/FindByte.hpp>

#include <algorithm>
#include <cstddef>

namespace corvane::workbench::plugins::s7Driver {

namespace {

using utils::string::findByte;
using utils::string::findLineEnding;
using utils::string::ascii::isDigit;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

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

/// Behind the blanks at `at`.
const char* behindBlanks(const char* at, const char* end) {
    return scan::behind(at, end, scan::isBlank, [](const char* rest, const char* restEnd) {
        return std::find_if_not(rest, restEnd, Delimiters::isBlank);
    });
}

/// The end of the line at `at`.
const char* lineEnding(const char* at, const char* end) {
    const auto isInside = [](scan::Block block) { return ~scan::isLineEnding(block); };
    return scan::behind(at, end, isInside, findLineEnding);
}

/// Behind the rest of a line, which is empty or a comment, and the indentation of the next one: the
/// usual way from one declaration to the next, of which `behindBlanksAndComments` needs nothing to
/// come to the same place (ImportBuffers.WhatFollowsAPlainDeclaration). `at` itself where there is
/// something else, and near the end. Comments stand where they like: so one way for lines with and
/// without them.
const char* behindLine(const char* at, const char* end) {
    constexpr auto kLooks = static_cast<std::ptrdiff_t>(scan::kLineSize + scan::kBlockSize);
    if (end - at < kLooks)
        return at;
    const std::size_t size = scan::lineSize(at);
    const std::size_t blanks = scan::leading(scan::isBlank(scan::load(at)));
    const bool isComment = at[blanks] == '/' && at[blanks + 1] == '/';
    if (size == scan::kLineSize || (!isComment && blanks < size))
        return at;
    const std::size_t indentation = scan::leading(scan::isBlank(scan::load(at + size)));
    return indentation == scan::kBlockSize ? at : at + size + indentation;
}

/// Behind the blanks and line comments at `at`, as far as [at, end) tells what they are.
const char* behindBlanksAndComments(const char* at, const char* end) {
    at = behindLine(at, end);
    if (at != end && !Delimiters::isBlank(*at) && *at != '/')
        return at;
    for (;;) {
        at = behindBlanks(at, end);
        if (end - at < 2 || at[0] != '/' || at[1] != '/')
            return at;
        const char* const ending = lineEnding(at, end);
        if (ending == end)
            return at;
        at = ending;
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
    const char* const next = behindBlanksAndComments(begin, end);
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
    const std::uint64_t begin = offset();
    stream_->skipElement();
    if (!take(*stream_, '*')) {
        accumulator_.put('(');
        return false;
    }
    for (std::size_t open = 1; open > 0;) {
        if (!stream_->ensureBuffer())
            failAt(begin, Message::commentOpenAtEnd);
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
    place_ = offset();
    if (accumulator_.present())
        return accumulator_.take();
    if (!stream_->ensureBuffer())
        fail(Message::endInsideDeclaration);
    return stream_->readElement();
}

// The word where it stands in the buffer, if that can be told without a look at what is not there
// yet: if blanks follow and behind them, still in the buffer, something that begins no comment.
// That is so for nearly every word; the others, and without this way all of them, are put together
// from what comes (ImportBuffers reads sources in chunks of any size, to the same end).
std::optional<std::string_view> DbFileReader::readBufferedWord(const Delimiters& delimiters) {
    if (accumulator_.present())
        return std::nullopt;
    place_ = stream_->position();
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
    place_ = offset();
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

// The text where it stands in the buffer, if it and what follows it are there. Put together like
// any other it would be the same text (ImportBuffers).
std::string_view DbFileReader::readQuotedKeepQuotes(char quote) {
    place_ = offset();
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
    if (atEnd()) {
        place_ = offset();
        return text_;
    }
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
