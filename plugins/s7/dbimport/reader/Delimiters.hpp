#pragma once

#include <array>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// A set of bytes that end a word, made at compile time, with one look-up per byte.
class Delimiters {
public:
    /// The bytes that end every word: blanks, and the two that may begin a comment.
    static constexpr std::string_view kBlanks = "\t\n\r ";
    static constexpr std::string_view kCommentBegins = "/(";

    consteval explicit Delimiters(std::string_view delimiters) {
        for (std::string_view stops : {kBlanks, kCommentBegins})
            for (char stop : stops)
                kinds_[static_cast<unsigned char>(stop)] |= kStop;
        for (char delimiter : delimiters)
            kinds_[static_cast<unsigned char>(delimiter)] |= kStop | kDelimiter;
    }

    [[nodiscard]] static constexpr bool isBlank(char byte) { return isOneOf(byte, kBlanks); }
    [[nodiscard]] static constexpr bool mayBeginComment(char byte) {
        return isOneOf(byte, kCommentBegins);
    }

    /// Whether `byte` is one of the set.
    [[nodiscard]] constexpr bool contains(char byte) const {
        return (kind(byte) & kDelimiter) != 0;
    }

    /// Whether a word ends before `byte`: it is one of the set or a word stop.
    [[nodiscard]] constexpr bool stop(char byte) const { return kind(byte) != 0; }

private:
    static constexpr unsigned char kStop = 1;
    static constexpr unsigned char kDelimiter = 2;

    // Of so few bytes, known to the compiler, nothing is left but comparisons.
    [[nodiscard]] static constexpr bool isOneOf(char byte, std::string_view bytes) {
        bool found = false;
        for (const char one : bytes)
            found |= byte == one;
        return found;
    }

    [[nodiscard]] constexpr unsigned char kind(char byte) const {
        return kinds_[static_cast<unsigned char>(byte)];
    }

    std::array<unsigned char, 256> kinds_{};
};

} // namespace corvane::workbench::plugins::s7Driver
