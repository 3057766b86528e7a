#pragma once

#include <array>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// A set of bytes that end a word, made at compile time, with one look-up per byte.
class Delimiters {
public:
    /// The bytes that end every word: blanks, and the two that may begin a comment.
    static constexpr std::string_view kWordStops = "\t\n\r /(";

    consteval explicit Delimiters(std::string_view delimiters) {
        for (char stop : kWordStops)
            kinds_[static_cast<unsigned char>(stop)] |= kStop;
        for (char delimiter : delimiters)
            kinds_[static_cast<unsigned char>(delimiter)] |= kStop | kDelimiter;
    }

    [[nodiscard]] static constexpr bool isBlank(char byte) {
        return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
    }
    [[nodiscard]] static constexpr bool mayBeginComment(char byte) {
        return byte == '/' || byte == '(';
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

    [[nodiscard]] constexpr unsigned char kind(char byte) const {
        return kinds_[static_cast<unsigned char>(byte)];
    }

    std::array<unsigned char, 256> kinds_{};
};

} // namespace corvane::workbench::plugins::s7Driver
