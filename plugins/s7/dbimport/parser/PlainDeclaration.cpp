#include "dbimport/parser/PlainDeclaration.hpp"

#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/TypeTable.hpp"
#include "dbimport/parser/AttributeTable.hpp"
#include "dbimport/reader/WordScan.hpp"

#include <corvane/utils/string/FindByte.hpp>

#include <charconv>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// Walks over the bytes of one declaration. A step that does not find what it looks for says so,
/// and then the declaration is not plain.
///
/// Near the end of the text a word may seem to end too early: what must stand behind it is then not
/// what does.
class Walk {
public:
    explicit Walk(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    [[nodiscard]] const char* at() const { return at_; }

    /// Whether the next byte is `expected`.
    [[nodiscard]] bool nextIs(char expected) const { return at_ != end_ && *at_ == expected; }

    [[nodiscard]] bool take(char expected) {
        if (!nextIs(expected))
            return false;
        ++at_;
        return true;
    }

    void skipSpaces() {
        while (nextIs(' '))
            ++at_;
    }

    /// Passes over a byte and the spaces behind it.
    [[nodiscard]] bool takeAndSpaces(char expected) {
        if (!take(expected))
            return false;
        skipSpaces();
        return true;
    }

    /// The next word with the spaces behind it, which are not part of it. Empty where none is next.
    [[nodiscard]] std::string_view word() {
        const char* const begin = at_;
        at_ = scan::behind(at_, end_, scan::isPlain);
        const std::string_view word(begin, at_);
        skipSpaces();
        return word;
    }

    /// A text in quotes with the spaces behind it; the result has no quotes.
    [[nodiscard]] std::optional<std::string_view> quoted(char quote) {
        if (!take(quote))
            return std::nullopt;
        const char* const begin = at_;
        at_ = scan::behind(at_, end_, scan::isPlain);
        if (!nextIs(quote))
            at_ = utils::string::findByte(at_, end_, quote);
        const std::string_view text(begin, at_);
        if (!takeAndSpaces(quote))
            return std::nullopt;
        return text;
    }

    /// Passes over `:= VALUE`, a word with the spaces around it, if that is next. False where
    /// neither that nor a semicolon is next. Half the lines have a value: so one way for both, with
    /// nothing that a processor would have to guess.
    [[nodiscard]] bool takeWordValue() {
        if (!scan::hasBlock(at_, end_))
            return false;
        const bool present = at_[0] == ':' && at_[1] == '=';
        if (!present && at_[0] != ';')
            return false;
        at_ += present ? 2 + static_cast<int>(at_[2] == ' ') : 0;
        const char* const begin = at_;
        at_ = scan::behind(at_, end_, scan::isValue);
        const std::string_view value(begin, at_);
        skipSpaces();
        return !mayBeKeyword(*begin, value.size()) || keywordOf(value) == Keyword::none;
    }

private:
    const char* at_;
    const char* end_;
};

const TypeFacts* typeOf(std::string_view word, const char* end) {
    KeywordBlock keyword;
    static_assert(sizeof(keyword) == scan::kBlockSize);
    if (word.empty() || word.size() > keyword.size() || !scan::hasBlock(word.data(), end))
        return nullptr;
    scan::copyFolded(word.data(), word.size(), keyword.data());
    return findType(keyword, word.size());
}

bool takeAttribute(Walk& walk, AttributeTable& table) {
    const std::string_view name = walk.word();
    if (name.empty() || !walk.take(':') || !walk.takeAndSpaces('='))
        return false;
    const auto value = walk.quoted('\'');
    if (!value)
        return false;
    if (auto* const wanted = table.find(name))
        wanted->setValue(*value);
    return true;
}

bool takeAttributes(Walk& walk, ExternalAccess& access) {
    AttributeTable table = variableAttributes();
    do {
        walk.skipSpaces();
        if (!takeAttribute(walk, table))
            return false;
    } while (walk.take(';'));
    access = accessOf(table);
    return walk.takeAndSpaces('}');
}

bool takeTextLength(Walk& walk, std::optional<std::uint64_t>& length) {
    const std::string_view digits = walk.word();
    constexpr std::size_t kCertainlyFit = 9; // 32 bits
    if (digits.empty() || digits.size() > kCertainlyFit)
        return false;
    const char* const end = digits.data() + digits.size();
    return std::from_chars(digits.data(), end, length.emplace()).ptr == end &&
           walk.takeAndSpaces(']');
}

/// An initial value, if there is one: a word and a quoted text, or one of them.
bool takeValue(Walk& walk) {
    return walk.takeWordValue() && (!walk.nextIs('\'') || walk.quoted('\''));
}

} // namespace

bool readPlainDeclaration(std::string_view text, PlainDeclaration& declaration) {
    Walk walk(text);
    declaration.name = walk.word();
    if (declaration.name.empty() || keywordOf(declaration.name) != Keyword::none)
        return false;
    declaration.access = ExternalAccess();
    if (walk.take('{') && !takeAttributes(walk, declaration.access))
        return false;
    if (!walk.takeAndSpaces(':'))
        return false;
    declaration.type = typeOf(walk.word(), text.data() + text.size());
    if (declaration.type == nullptr)
        return false;
    declaration.elementCount.reset();
    if (declaration.type->isText() && walk.takeAndSpaces('[') &&
        !takeTextLength(walk, declaration.elementCount))
        return false;
    if (!takeValue(walk))
        return false;
    const bool ended = walk.take(';');
    declaration.size = static_cast<std::size_t>(walk.at() - text.data());
    return ended;
}

} // namespace corvane::workbench::plugins::s7Driver
