#include "dbimport/diagnosis/BlockHeader.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/reader/DbFileReader.hpp"

#include <corvane/utils/io/MemoryInputStream.hpp>
#include <corvane/utils/string/Ascii.hpp>

#include <algorithm>
#include <array>
#include <exception>

namespace corvane::workbench::plugins::s7Driver {

namespace {

constexpr Delimiters kWordEnd{":={\""};

/// Whether a word is that of a block or type with a number, such as FB5 or UDT.
bool namesType(std::string_view word) {
    constexpr std::array<std::string_view, 3> kKinds = {"fb", "sfb", "udt"};
    return std::ranges::any_of(kKinds, [&](std::string_view kind) {
        return word.size() >= kind.size() && equalsFolded(word.substr(0, kind.size()), kind) &&
               std::ranges::all_of(word.substr(kind.size()), utils::string::ascii::isDigit<char>);
    });
}

class HeaderWalk {
public:
    explicit HeaderWalk(std::string_view text) : stream_(text), reader_(stream_) {}

    // A header that ends in a fault says what it says up to there.
    BlockHeader walk() {
        try {
            passName();
            while (!reader_.atEnd() && passLine())
                ;
        } catch (const std::exception&) {
            return header_;
        }
        return header_;
    }

private:
    void passName() {
        if (reader_.nextIs('"'))
            reader_.readQuoted('"');
        else if (equalsFolded(reader_.readWord(), "db"))
            reader_.readNumberText();
    }

    // False where the header ends.
    bool passLine() {
        const std::string word(reader_.readWordUntil(kWordEnd));
        switch (reader_.peekChar().value_or(' ')) {
        case '{':
            while (reader_.readCharSkipBlanks() != '}')
                ;
            return true;
        case '=':
            reader_.skipRestOfLine();
            return true;
        case ':':
            passValue(word);
            return true;
        case '"':
            header_.ofType = true;
            return false;
        default:
            return passWord(word);
        }
    }

    bool passWord(std::string_view word) {
        header_.variableSection = equalsFolded(word, "var");
        header_.ofType = namesType(word);
        return !header_.variableSection && !header_.ofType && !isKeyword(word);
    }

    void passValue(const std::string& word) {
        reader_.readChar();
        const std::string_view rest = reader_.lookAhead();
        const std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
        if (header_.lineWithoutValue.empty() && std::ranges::all_of(line, Delimiters::isBlank))
            header_.lineWithoutValue = word;
        reader_.skipBlanks();
        if (reader_.nextIs('\''))
            reader_.readQuoted('\'');
        else
            reader_.readWord();
    }

    utils::io::MemoryInputStream stream_;
    DbFileReader reader_;
    BlockHeader header_;
};

} // namespace

BlockHeader headerOf(std::string_view text) { return HeaderWalk(text).walk(); }

} // namespace corvane::workbench::plugins::s7Driver
