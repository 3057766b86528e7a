#include "prepare/Lexer.hpp"

#include "dbimport/facts/FoldCase.hpp"

#include <corvane/utils/string/FindByte.hpp>

#include <algorithm>
#include <array>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

enum Kind : unsigned char { kWord, kBlank, kMark };

constexpr auto kKinds = [] {
    std::array<Kind, 256> kinds{};
    for (const char blank : std::string_view("\t\n\r "))
        kinds[static_cast<unsigned char>(blank)] = kBlank;
    for (const char mark : std::string_view(":;,={}[]().+-*/<>&|\"'"))
        kinds[static_cast<unsigned char>(mark)] = kMark;
    return kinds;
}();

Kind kindOf(char byte) { return kKinds[static_cast<unsigned char>(byte)]; }

std::uint32_t lineEnd(std::string_view text, std::uint32_t at) {
    const char* const begin = text.data() + at;
    return at + static_cast<std::uint32_t>(
                    utils::string::findLineEnding(begin, text.data() + text.size()) - begin);
}

bool startsAt(std::string_view text, std::size_t at, std::string_view mark) {
    return text.substr(at, mark.size()) == mark;
}

// (* ... *), which nest: behind the comment at `at`, or npos where it has no end.
std::size_t nestedEnd(std::string_view text, std::size_t at) {
    std::size_t levels = 0;
    while ((at = text.find_first_of("(*", at)) != std::string_view::npos) {
        if (startsAt(text, at, "(*")) {
            ++levels;
            at += 2;
        } else if (startsAt(text, at, "*)")) {
            at += 2;
            if (--levels == 0)
                return at;
        } else {
            ++at;
        }
    }
    return at;
}

std::size_t behind(std::string_view text, std::string_view mark, std::size_t from) {
    const std::size_t found = text.find(mark, from);
    return found == std::string_view::npos ? found : found + mark.size();
}

// Behind the (* ... *) at the front, whether or not those of its file nest.
std::size_t blockEnd(std::string_view text) {
    const std::size_t end = nestedEnd(text, 0);
    return end == std::string_view::npos ? behind(text, "*)", 2) : end;
}

std::string_view trimmed(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t");
    return begin == std::string_view::npos
               ? std::string_view()
               : line.substr(begin, line.find_last_not_of(" \t") + 1 - begin);
}

/// How many bytes the marks take at the two ends of a comment.
struct CommentMarks {
    std::size_t begin;
    std::size_t end;
};

CommentMarks marksOf(std::string_view comment) {
    if (comment.starts_with("(/*"))
        return {3, 3};
    return comment.starts_with("//") ? CommentMarks{2, 0} : CommentMarks{2, 2};
}

} // namespace

Lexer::Lexer(std::string_view text) : text_(text) {
    token_.line = 0;
    advance();
}

bool Lexer::isWord(std::string_view folded) const {
    return token_.kind == TokenKind::word && equalsFolded(text(), folded);
}

void Lexer::advance() {
    const std::uint32_t previousLine = line_;
    const bool first = token_.line == 0;
    skipBlanks();
    token_.line = line_;
    token_.firstOfLine = first || line_ != previousLine;
    token_.text = {.at = next_, .size = 0};
    if (next_ == text_.size()) {
        token_.kind = TokenKind::end;
        return;
    }
    const char byte = text_[next_];
    if (kindOf(byte) == kWord) {
        token_.kind = TokenKind::word;
        do
            ++next_;
        while (next_ != text_.size() && kindOf(text_[next_]) == kWord);
    } else if ((byte != '"' || !readQuoted(byte, TokenKind::name)) &&
               (byte != '\'' || !readQuoted(byte, TokenKind::literal))) {
        token_.kind = TokenKind::mark;
        ++next_;
    } else {
        return;
    }
    token_.text.size = next_ - token_.text.at;
}

// In a literal, a dollar sign takes the meaning from the character behind it.
bool Lexer::readQuoted(char quote, TokenKind kind) {
    const std::uint32_t begin = next_ + 1;
    for (std::uint32_t at = begin; at < text_.size(); ++at) {
        const char byte = text_[at];
        if (byte == '\n' || byte == '\r')
            break;
        if (byte == '$' && quote == '\'')
            ++at;
        else if (byte == quote) {
            token_.kind = kind;
            token_.text = {.at = begin, .size = at - begin};
            next_ = at + 1;
            return true;
        }
    }
    return false;
}

void Lexer::skipBlanks() {
    const std::uint32_t previousLine = line_;
    sameLine_ = {};
    ownLines_ = {};
    while (next_ != text_.size()) {
        const char byte = text_[next_];
        if (byte == '\n' || byte == '\r') {
            const bool pair = byte == '\r' && startsAt(text_, next_ + 1, "\n");
            next_ += pair ? 2 : 1;
            ++line_;
        } else if (kindOf(byte) == kBlank) {
            ++next_;
        } else if (byte == '/' || byte == '(') {
            const std::uint32_t end = commentEnd(next_);
            if (end == next_)
                return;
            passOverComment(end, token_.line == 0 ? 0 : previousLine);
        } else {
            return;
        }
    }
}

void Lexer::passOverComment(std::uint32_t end, std::uint32_t previousLine) {
    Text& comments = line_ == previousLine && ownLines_.empty() ? sameLine_ : ownLines_;
    if (comments.empty())
        comments.at = next_;
    comments.size = end - comments.at;
    countLines(next_, end);
    next_ = end;
}

// Behind the comment that begins at `at`; `at` itself where none does.
std::uint32_t Lexer::commentEnd(std::uint32_t at) {
    if (startsAt(text_, at, "//"))
        return lineEnd(text_, at);
    std::size_t end = 0;
    if (startsAt(text_, at, "(/*")) {
        end = behind(text_, "*/)", at + 3);
    } else if (startsAt(text_, at, "(*")) {
        end = nesting_ ? nestedEnd(text_, at) : std::string_view::npos;
        if (end == std::string_view::npos) { // once, so that no text is searched again and again
            nesting_ = false;
            end = behind(text_, "*)", at + 2);
        }
    } else {
        return at;
    }
    if (end != std::string_view::npos)
        return static_cast<std::uint32_t>(end);
    if (!openComment_)
        openComment_ = Token{.kind = TokenKind::end, .text = {.at = at, .size = 2}, .line = line_};
    return static_cast<std::uint32_t>(text_.size());
}

void Lexer::countLines(std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t at = lineEnd(text_, from); at < to; at = lineEnd(text_, at)) {
        at += startsAt(text_, at, "\r\n") ? 2 : 1;
        ++line_;
    }
}

void Lexer::skipLine() {
    next_ = lineEnd(text_, token_.text.end());
    advance();
}

void Lexer::widen(std::string_view ends) {
    while (next_ != text_.size()) {
        const char byte = text_[next_];
        if (kindOf(byte) == kBlank || ends.contains(byte) || startsAt(text_, next_, "//") ||
            startsAt(text_, next_, "(*"))
            break;
        ++next_;
    }
    token_.kind = TokenKind::word;
    token_.text.size = next_ - token_.text.at;
}

void forEachCommentLine(std::string_view text, function_ref<void(std::string_view)> take) {
    const auto skipBlanks = [&] {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
        return !text.empty();
    };
    while (skipBlanks()) {
        std::size_t end = 0;
        if (text.starts_with("//"))
            end = lineEnd(text, 0);
        else if (text.starts_with("(/*"))
            end = behind(text, "*/)", 3);
        else
            end = blockEnd(text);
        if (end == std::string_view::npos)
            return;
        const CommentMarks marks = marksOf(text);
        std::string_view content = text.substr(marks.begin, end - marks.begin - marks.end);
        text.remove_prefix(end);
        while (true) {
            const std::size_t line = lineEnd(content, 0);
            take(trimmed(content.substr(0, line)));
            if (line == content.size())
                break;
            content.remove_prefix(line + (startsAt(content, line, "\r\n") ? 2 : 1));
        }
    }
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
