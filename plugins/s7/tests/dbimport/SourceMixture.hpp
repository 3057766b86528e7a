#pragma once

#include "DeclarationTable.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver::testing {

/// Members of data blocks that nobody would think of, the same for the same seed.
class SourceMixture {
public:
    explicit SourceMixture(std::uint32_t seed) : random_(seed) {}

    /// Declarations, most of them plain, of which a place or two are changed.
    [[nodiscard]] std::string changedDeclarations() {
        std::string text;
        for (std::size_t left = 1 + below(4); left > 0; --left)
            text.append(declaration()).append(pick(kBetween));
        for (std::size_t left = below(3); left > 0; --left)
            change(text);
        return text;
    }

    /// Words one behind the other. What a declaration is made of comes in its order for a while, so
    /// that some of them are one.
    [[nodiscard]] std::string words() {
        std::string text;
        for (std::size_t left = 1 + below(4); left > 0; --left) {
            if (oneIn(2)) {
                ordered(text);
                continue;
            }
            for (std::size_t word = below(6); word > 0; --word)
                add(text, pick(kWords));
        }
        return text;
    }

private:
    static constexpr std::array<std::string_view, 8> kBetween = {
        "\n", "\n    ", " ", "", " // x\n", "(* x *)", "\r\n\t\t", "\n                    ",
    };
    static constexpr std::array<std::string_view, 62> kWords = {
        "a",
        "Speed",
        "x_1",
        "A_name_that_is_long",
        "\"a\"",
        "\"a b\"",
        "\"",
        "ExternalWritable",
        "STRUCT",
        "Struct",
        "eNd_StRuCt",
        "END_STRUCT;",
        "Begin",
        "OF",
        "of",
        "ARRAY",
        "Array",
        "data_block",
        "End_Data_Block",
        "DATA_BLOCK\"x\"",
        "Int",
        "bool",
        "STRING",
        "WString",
        "Date_And_Time",
        "Real",
        "Integer",
        "[0..1]",
        "{",
        "}",
        ":",
        "=",
        ":=",
        ";",
        "[",
        "]",
        "..",
        ",",
        "0",
        "5",
        "-1",
        "20x",
        "1.5",
        "9999999999",
        " ",
        "    ",
        "\n",
        "\r\n",
        "\t",
        "// x\n",
        "(* x *)",
        "(* (* *) x *)",
        "/",
        "(",
        "*)",
        "'",
        "'False'",
        "'a b'",
        "\xC3\xA4",
        "\xFF",
        "False",
        "                     ",
    };
    static constexpr std::array<std::string_view, 6> kNames = {
        "a", "Speed", "\"a b\"", "x_1", "K\xC3\xBChlung", "END_STRUCTURE",
    };
    static constexpr std::array<std::string_view, 5> kAttributes = {
        "",
        "",
        "{ ExternalWritable := 'False' }",
        "{A := 'x'; ExternalAccessible:='false'}",
        "{ExternalWritable := False}",
    };
    static constexpr std::array<std::string_view, 6> kTypeTexts = {
        "Int", "bool", "String[5]", "WSTRING", "Array [0..1] of Int", "String [ 12 ]",
    };
    static constexpr std::array<std::string_view, 6> kValues = {
        "", "", ":= 5", ":= 'a b'", ":=1.5", ": = 4(0)",
    };

    [[nodiscard]] std::size_t below(std::size_t limit) { return random_() % limit; }
    [[nodiscard]] bool oneIn(std::size_t count) { return below(count) == 0; }

    template <class Table>
    [[nodiscard]] const Table::value_type& pick(const Table& table) {
        return table[below(table.size())];
    }

    [[nodiscard]] std::string_view declaration() {
        return oneIn(4) ? pick(kOtherCases).text : pick(kPlainCases).text;
    }

    void add(std::string& text, std::string_view word) {
        text.append(word);
        if (oneIn(2))
            text.append(oneIn(4) ? pick(kBetween) : " ");
    }

    void ordered(std::string& text) {
        add(text, pick(kNames));
        add(text, pick(kAttributes));
        add(text, ":");
        add(text, pick(kTypeTexts));
        add(text, pick(kValues));
        add(text, ";");
    }

    /// Drops, inserts or replaces a byte or a word.
    void change(std::string& text) {
        const std::size_t place = below(text.size() + 1);
        const std::size_t dropped = oneIn(4) ? below(8) : below(2);
        std::string inserted;
        if (oneIn(3))
            inserted = pick(kWords);
        else if (oneIn(2))
            inserted.assign(1, static_cast<char>(below(256)));
        text.replace(place, dropped, inserted);
    }

    std::mt19937 random_;
};

} // namespace corvane::workbench::plugins::s7Driver::testing
