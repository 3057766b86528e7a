#include "dbimport/diagnosis/Hints.hpp"

#include "dbimport/diagnosis/BlockHeader.hpp"
#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/reader/DbFileReader.hpp"
#include "elements/Plc.hpp"

#include <corvane/utils/io/MemoryInputStream.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

namespace {

enum class Hint : std::uint8_t {
#define S7_IMPORT_HINT(name, text) name,
#include "dbimport/diagnosis/Hints.def"
#undef S7_IMPORT_HINT
};

constexpr auto kTexts = std::to_array<std::string_view>({
#define S7_IMPORT_HINT(name, text) text,
#include "dbimport/diagnosis/Hints.def"
#undef S7_IMPORT_HINT
});

/// A hint with the word that it speaks of.
struct Advice {
    Hint hint;
    std::string word;
};

using Found = std::optional<Advice>;

std::u16string textOf(const Advice& advice) {
    return i18n::fill(
        i18n::translate(Plc::kTextContext, kTexts[static_cast<std::size_t>(advice.hint)]),
        {utils::string::detail::utf8ToUtf16(advice.word)});
}

// Exports of other kinds, by the bytes that they begin with.
Found adviceForKind(std::string_view head) {
    using namespace std::string_view_literals;
    constexpr std::array kArchives = {"PK\x03\x04"sv, "\x1F\x8B"sv, "7z\xBC\xAF"sv, "Rar!"sv};
    if (head.starts_with("\xFF\xFE"sv) || head.starts_with("\xFE\xFF"sv))
        return Advice{Hint::utf16File, {}};
    for (const std::string_view archive : kArchives)
        if (head.starts_with(archive))
            return Advice{Hint::archiveFile, {}};
    if (head.contains('\0'))
        return Advice{Hint::binaryFile, {}};
    const auto text = std::min(head.find_first_not_of("\xEF\xBB\xBF \t\r\n"), head.size());
    return head.substr(text).starts_with('<') ? Found({Hint::xmlFile, {}}) : std::nullopt;
}

std::string_view wordAt(std::string_view text) {
    return text.substr(0, text.find_first_of(" \t\r\n:;[(\"/"));
}

/// The header of the block in which the place stands.
BlockHeader headerAround(const SourceView& view) {
    constexpr std::string_view kHeader = kKeywords.front().text;
    std::string folded;
    assignFolded(folded, view.before);
    const std::size_t end = folded.rfind("end_data_block");
    std::size_t begin = folded.rfind(kHeader);
    if (begin == std::string::npos || (end != std::string::npos && end + 4 == begin))
        return {};
    begin += kHeader.size();
    begin = std::min(folded.find_first_not_of(" \t\r\n", begin), folded.size());
    return headerOf(view.before.substr(begin) + view.after);
}

Found adviceForHeader(const SourceView& view) {
    const BlockHeader header = headerAround(view);
    if (!header.lineWithoutValue.empty())
        return Advice{Hint::emptyHeaderLine, header.lineWithoutValue};
    if (header.variableSection)
        return Advice{Hint::variableSection, {}};
    return header.ofType ? Found({Hint::blockOfType, {}}) : std::nullopt;
}

// The place is that of the attribute's value, if the file has one.
Found adviceForAccess(const SourceView& view) {
    const std::size_t text = view.before.find_last_not_of(" \t\r\n");
    const bool stated = text != std::string::npos && view.before[text] == '=';
    if (const Found found = adviceForHeader(view); found && found->hint != Hint::variableSection)
        return found;
    return Advice{stated ? Hint::optimizedAccess : Hint::accessNotStated, {}};
}

Found adviceForType(std::string_view type) {
    const bool quoted = type.starts_with('"');
    return Advice{quoted || equalsFolded(wordAt(type), "udt") ? Hint::userType : Hint::otherType,
                  {}};
}

/// The type of the declaration at the front of `text`.
std::string_view typeIn(std::string_view text) try {
    static constexpr Delimiters kNameEnd{":{"};
    utils::io::MemoryInputStream stream(text);
    DbFileReader reader(stream);
    if (reader.nextIs('"'))
        reader.readQuoted('"');
    else
        reader.readWordUntil(kNameEnd);
    if (reader.nextIs('{'))
        while (reader.readCharSkipBlanks() != '}')
            ;
    reader.readCharSkipBlanks();
    return text.substr(static_cast<std::size_t>(reader.offset()));
} catch (const std::exception&) {
    return {};
}

// A type of two words, or of a quoted name with blanks, is one word and something else.
Found adviceForSemicolon(std::string_view declaration) {
    const std::string_view type = typeIn(declaration);
    const std::string_view word = wordAt(type);
    const bool numbered =
        equalsFolded(word, "udt") || equalsFolded(word, "fb") || equalsFolded(word, "sfb");
    return numbered || type.starts_with('"') ? Found({Hint::userType, {}}) : std::nullopt;
}

Found adviceForFirstWord(std::string_view word) {
    constexpr std::array<std::string_view, 3> kCode = {"function", "function_block",
                                                       "organization_block"};
    if (equalsFolded(word, "type"))
        return Advice{Hint::typeSection, {}};
    const auto is = [&](std::string_view code) { return equalsFolded(word, code); };
    return std::ranges::any_of(kCode, is) ? Found({Hint::codeSection, {}}) : std::nullopt;
}

Found adviceForNumber(std::string_view number) {
    const bool named =
        number.starts_with('"') || number.starts_with('#') ||
        (!number.empty() && foldCase(number.front()) >= 'a' && foldCase(number.front()) <= 'z');
    return named ? Found({Hint::constantBound, {}}) : std::nullopt;
}

Found adviceFor(Message message, const SourceView& view) {
    switch (message) {
    case Message::missingDataBlock:
        return adviceForFirstWord(wordAt(view.after));
    case Message::optimizedAccess:
        return adviceForAccess(view);
    case Message::headerLineWithoutWord:
    case Message::nestedDataBlock:
    case Message::endOfFile:
        return adviceForHeader(view);
    case Message::unknownType:
        return adviceForType(view.after);
    case Message::semicolonExpected:
        return adviceForSemicolon(view.after);
    case Message::invalidNumber:
        return adviceForNumber(view.after);
    case Message::badArrayDeclaration:
        return keywordOf(wordAt(view.after)) == Keyword::array ? Found({Hint::arrayOfArray, {}})
                                                               : std::nullopt;
    case Message::commentOpenAtEnd:
        return Advice{Hint::openComment, {}};
    case Message::keywordAsVariableName:
        return Advice{Hint::missingEndStruct, {}};
    default:
        return std::nullopt;
    }
}

std::optional<std::u16string> textOf(const Found& found) {
    return found ? std::optional(textOf(*found)) : std::nullopt;
}

} // namespace

std::optional<std::u16string> hintFor(Message message, const SourceView& view) {
    const Found kind = adviceForKind(view.head);
    return textOf(kind ? kind : adviceFor(message, view));
}

std::optional<std::u16string> hintFor(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory)
        return textOf(Advice{Hint::missingFile, {}});
    if (error == std::errc::is_a_directory)
        return textOf(Advice{Hint::folder, {}});
    return std::nullopt;
}

} // namespace corvane::workbench::plugins::s7Driver
