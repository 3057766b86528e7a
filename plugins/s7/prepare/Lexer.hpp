#pragma once

#include "prepare/Declarations.hpp"

#include <corvane/workbench/function_ref.hpp>

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver::prepare {

enum class TokenKind : std::uint8_t { end, word, name, literal, mark };

/// A word of a source; its text is without quotes.
struct Token {
    TokenKind kind = TokenKind::end;
    bool firstOfLine = true;
    Text text;
    std::uint32_t line = 1;
};

/// The words of a source, one after the other, with the comments between them.
///
/// A word ends at a blank, a comment or a mark, which is a token of one character. "..." is a name,
/// '...' a literal, if they end in the same line. Comments are // ... , (* ... *), which nest as
/// they do for the import, and (/* ... */). Lines end with "\n", "\r\n" or "\r".
class Lexer {
public:
    /// The text must outlive the object. It stands at the first token.
    explicit Lexer(std::string_view text);

    [[nodiscard]] const Token& token() const { return token_; }
    [[nodiscard]] std::string_view text() const { return token_.text.in(text_); }
    [[nodiscard]] std::string_view source() const { return text_; }

    // The comments in front of the token: those that begin in the line of the token before, and
    // the others. Blanks stand among them and nothing else.
    [[nodiscard]] Text sameLine() const { return sameLine_; }
    [[nodiscard]] Text ownLines() const { return ownLines_; }

    [[nodiscard]] bool isMark(char mark) const {
        return token_.kind == TokenKind::mark && text_[token_.text.at] == mark;
    }
    /// Whether it is this word, in whatever case; `folded` is in lower case.
    [[nodiscard]] bool isWord(std::string_view folded) const;

    void advance();

    /// Goes on to the next line, whatever stands in this one behind the token.
    void skipLine();

    /// Makes the token all that stands before the next blank, comment or one of `ends`.
    void widen(std::string_view ends);

    /// Where a comment begins that has no end; empty where there is none.
    [[nodiscard]] const std::optional<Token>& openComment() const { return openComment_; }

private:
    void skipBlanks();
    [[nodiscard]] std::uint32_t commentEnd(std::uint32_t at);
    void passOverComment(std::uint32_t end, std::uint32_t previousLine);
    void countLines(std::uint32_t from, std::uint32_t to);
    bool readQuoted(char quote, TokenKind kind);

    std::string_view text_;
    std::uint32_t next_ = 0;
    std::uint32_t line_ = 1;
    bool nesting_ = true; ///< until a file shows that its comments do not nest
    Token token_;
    Text sameLine_;
    Text ownLines_;
    std::optional<Token> openComment_;
};

/// Gives `take` the lines of the comments in `text`, without their marks and the blanks around
/// them.
void forEachCommentLine(std::string_view text, function_ref<void(std::string_view)> take);

} // namespace corvane::workbench::plugins::s7Driver::prepare
