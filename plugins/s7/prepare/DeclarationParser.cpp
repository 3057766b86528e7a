#include "prepare/DeclarationParser.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/ImportLimits.hpp"
#include "dbimport/facts/Keywords.hpp"

#include <algorithm>
#include <array>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

struct Opening {
    std::string_view word;
    std::string_view end;
    std::optional<DeclarationKind> kind; // empty: code
};

constexpr auto kOpenings = std::to_array<Opening>({
    {"data_block", "end_data_block", DeclarationKind::dataBlock},
    {"type", "end_type", DeclarationKind::type},
    {"function_block", "end_function_block", DeclarationKind::functionBlock},
    {"function", "end_function", std::nullopt},
    {"organization_block", "end_organization_block", std::nullopt},
});

/// Words of a header that say something of the block and name no type.
constexpr auto kHeaderWords = std::to_array<std::string_view>({
    "know_how_protect",
    "write_protect",
    "standard",
    "read_only",
    "unlinked",
    "retain",
    "non_retain",
    "system",
});

struct SectionWord {
    std::string_view word;
    std::optional<Section> section; // empty: it has no place in memory
};

constexpr auto kSectionWords = std::to_array<SectionWord>({
    {"var_input", Section::input},
    {"var_output", Section::output},
    {"var_in_out", Section::inOut},
    {"var", Section::statics},
    {"var_temp", std::nullopt},
    {"var_external", std::nullopt},
});

const Opening* openingAt(const Lexer& lexer) {
    const auto found = std::ranges::find_if(
        kOpenings, [&](const Opening& opening) { return lexer.isWord(opening.word); });
    return found == kOpenings.end() ? nullptr : &*found;
}

const SectionWord* sectionAt(const Lexer& lexer) {
    const auto found = std::ranges::find_if(
        kSectionWords, [&](const SectionWord& row) { return lexer.isWord(row.word); });
    return found == kSectionWords.end() ? nullptr : &*found;
}

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string upperCase(std::string_view word) {
    std::string upper(word);
    for (char& letter : upper)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    return upper;
}

} // namespace

bool isNumberedWord(std::string_view word) {
    return equalsFolded(word, "udt") || equalsFolded(word, "fb") || equalsFolded(word, "sfb") ||
           equalsFolded(word, "db");
}

std::string keyOf(std::string_view name, std::string_view number) {
    std::string key;
    assignFolded(key, name);
    const std::size_t digits = key.find_first_of("0123456789");
    if (number.empty() && digits != std::string::npos && isNumberedWord(name.substr(0, digits)) &&
        isNumber(name.substr(digits))) {
        number = name.substr(digits);
        key.resize(digits);
    }
    if (number.empty())
        return key;
    const std::size_t first = std::min(number.find_first_not_of('0'), number.size() - 1);
    return key.append(number.substr(first));
}

DeclarationParser::DeclarationParser(Declarations& target, std::uint32_t file,
                                     const ConstantValues& constants)
    : target_(&target), file_(file), constants_(&constants), lexer_(target.texts[file]) {}

void DeclarationParser::fail(Reason reason, std::string_view subject) const {
    throw DeclarationFault({.reason = reason, .place = here(), .subject = std::string(subject)});
}

bool DeclarationParser::take(char mark) {
    const bool found = lexer_.isMark(mark);
    if (found)
        lexer_.advance();
    return found;
}

bool DeclarationParser::take(std::string_view word) {
    const bool found = lexer_.isWord(word);
    if (found)
        lexer_.advance();
    return found;
}

void DeclarationParser::expect(char mark) {
    if (!take(mark))
        fail(Reason::expected, std::string_view(&mark, 1));
}

// DATA_BLOCK ... TYPE ... FUNCTION_BLOCK ... FUNCTION ... ORGANIZATION_BLOCK ...
void DeclarationParser::read() {
    while (lexer_.token().kind != TokenKind::end)
        readDeclaration();
    if (lexer_.openComment())
        failure_ = {
            .reason = Reason::commentOpen, .place = placeOf(*lexer_.openComment()), .subject = {}};
}

void DeclarationParser::readDeclaration() {
    const Opening* const opening = openingAt(lexer_);
    if (opening != nullptr) {
        const Place place = here();
        lexer_.advance();
        if (opening->kind)
            readBlock(*opening->kind, opening->end);
        else if (!skipToEnd(opening->end) && !failure_)
            failure_ = {
                .reason = Reason::endMissing, .place = place, .subject = upperCase(opening->end)};
        return;
    }
    if (!lexer_.isMark(';') && !failure_)
        failure_ = {.reason = Reason::notDeclared,
                    .place = here(),
                    .subject = std::string(lexer_.text().substr(0, 40))};
    lexer_.advance();
}

/// What begins a line so begins a declaration, even where the one before has no end.
bool DeclarationParser::atOpening() const {
    return lexer_.token().firstOfLine && openingAt(lexer_) != nullptr;
}

// ... END_TYPE
bool DeclarationParser::skipToEnd(std::string_view endWord) {
    while (lexer_.token().kind != TokenKind::end && !atOpening()) {
        if (take(endWord))
            return true;
        if (!lexer_.isWord("title"))
            lexer_.advance();
        else if (lexer_.advance(); lexer_.isMark('='))
            lexer_.skipLine();
    }
    return false;
}

// "NAME" HEADER STRUCT ... END_STRUCT; BEGIN ... END_DATA_BLOCK
void DeclarationParser::readBlock(DeclarationKind kind, std::string_view endWord) {
    Declaration& declaration = target_->all.emplace_back();
    declaration.kind = kind;
    declaration.place = here();
    declaration.first = static_cast<std::uint32_t>(target_->members.size());
    open_.clear();
    toResolve_.clear();
    ownConstants_.clear();
    try {
        readName(declaration);
        readParts(declaration, endWord);
        resolveBounds();
    } catch (DeclarationFault& fault) {
        declaration.failure = std::move(fault.failure);
        target_->members.resize(declaration.first);
    }
    declaration.last = static_cast<std::uint32_t>(target_->members.size());
    if (!skipToEnd(endWord) && !declaration.failure)
        declaration.failure = {.reason = Reason::endMissing,
                               .place = declaration.place,
                               .subject = upperCase(endWord)};
}

void DeclarationParser::readParts(Declaration& declaration, std::string_view endWord) {
    readHeader(declaration, endWord);
    if (take("struct")) {
        declaration.hasStructure = true;
        readMembers("end_struct", Section::statics);
    } else if (sectionAt(lexer_) != nullptr || lexer_.isWord("const")) {
        declaration.hasStructure = true;
        readSections();
    } else if (declaration.kind == DeclarationKind::functionBlock) {
        declaration.hasStructure = true;
    }
}

// "NAME", NAME, DB 17 or UDT 10
void DeclarationParser::readName(Declaration& declaration) {
    declaration.place = here();
    if (lexer_.token().kind == TokenKind::name) {
        declaration.name = lexer_.text();
        declaration.key = keyOf(declaration.name);
        lexer_.advance();
    } else {
        if (lexer_.token().kind == TokenKind::end)
            fail(Reason::expected, "NAME");
        lexer_.widen("{\";:");
        const std::string word(lexer_.text());
        lexer_.advance();
        const bool numbered = isNumberedWord(word) && isNumber(lexer_.text());
        declaration.key = keyOf(word, numbered ? lexer_.text() : std::string_view());
        declaration.name = word;
        if (numbered) {
            declaration.name = upperCase(word).append(lexer_.text());
            lexer_.advance();
        }
    }
    // As the import has it: db12 is DB12.
    if (declaration.kind == DeclarationKind::dataBlock && declaration.name.size() > 2 &&
        equalsFolded(declaration.name.substr(0, 2), "db") && isNumber(declaration.name.substr(2)))
        declaration.name.replace(0, 2, "DB");
    declaration.comment = lexer_.sameLine();
}

// { ATTRIBUTES } TITLE = ... VERSION : 0.1 NON_RETAIN "TYPE"
void DeclarationParser::readHeader(Declaration& declaration, std::string_view endWord) {
    while (!lexer_.isWord("struct") && !lexer_.isWord("begin") && !lexer_.isWord("const") &&
           !lexer_.isWord(endWord) && sectionAt(lexer_) == nullptr && !atOpening()) {
        switch (lexer_.token().kind) {
        case TokenKind::end:
            return;
        case TokenKind::word:
        case TokenKind::name:
            readHeaderWord(declaration);
            break;
        default:
            if (lexer_.isMark('{'))
                readBlockAttributes(declaration);
            else
                lexer_.advance();
        }
    }
}

void DeclarationParser::readHeaderWord(Declaration& declaration) {
    const Token token = lexer_.token();
    const std::string_view word = lexer_.text();
    const Place place = here();
    lexer_.advance();
    if (lexer_.isMark('=')) {
        lexer_.skipLine();
        return;
    }
    if (lexer_.isMark(':')) {
        skipHeaderValue(lexer_.token().line);
        return;
    }
    const bool quoted = token.kind == TokenKind::name;
    if (!quoted && std::ranges::any_of(kHeaderWords, [&](std::string_view known) {
            return equalsFolded(word, known);
        }))
        return;
    if (!quoted && isNumberedWord(word))
        take('-'); // which some write in front of the number
    const bool numbered = !quoted && isNumberedWord(word) && isNumber(lexer_.text());
    const std::string_view number = numbered ? lexer_.text() : std::string_view();
    declaration.typeKey = keyOf(word, number);
    declaration.typeName = std::string(word).append(number);
    declaration.typePlace = place;
    declaration.quotedType = quoted;
    if (numbered)
        lexer_.advance();
}

// : Some words of the same line
void DeclarationParser::skipHeaderValue(std::uint32_t line) {
    do
        lexer_.advance();
    while (lexer_.token().kind != TokenKind::end && lexer_.token().line == line &&
           lexer_.token().kind != TokenKind::name && !lexer_.isMark('{') &&
           !lexer_.isWord("struct") && !lexer_.isWord("begin") && sectionAt(lexer_) == nullptr &&
           !lexer_.text().starts_with("END_"));
}

// { NAME := VALUE; NAME := VALUE }
template <class Take>
void DeclarationParser::readAttributes(const Take& take) {
    expect('{');
    while (!this->take('}')) {
        if (this->take(';'))
            continue;
        const std::string_view name = lexer_.text();
        lexer_.advance();
        expect(':');
        expect('=');
        const std::string_view value = lexer_.text();
        take(name, value);
        while (!lexer_.isMark(';') && !lexer_.isMark('}')) {
            if (lexer_.token().kind == TokenKind::end)
                fail(Reason::expected, "}");
            lexer_.advance();
        }
    }
}

void DeclarationParser::readBlockAttributes(Declaration& declaration) {
    readAttributes([&](std::string_view name, std::string_view value) {
        if (equalsFolded(name, kOptimizedAccessAttribute))
            declaration.access =
                equalsFolded(value, "false") ? Access::standard : Access::optimized;
    });
}

void DeclarationParser::readSections() {
    while (sectionAt(lexer_) != nullptr || lexer_.isWord("const"))
        readSection();
}

// VAR_INPUT RETAIN ... END_VAR
void DeclarationParser::readSection() {
    if (take("const")) {
        while (!take("end_const"))
            readConstants();
        return;
    }
    const std::optional<Section> section = sectionAt(lexer_)->section;
    lexer_.advance();
    bool constant = false;
    while (lexer_.isWord("retain") || lexer_.isWord("non_retain") || lexer_.isWord("constant") ||
           lexer_.isWord("db_specific")) {
        constant |= lexer_.isWord("constant");
        lexer_.advance();
    }
    if (constant) {
        while (!take("end_var"))
            readConstants();
    } else {
        const std::size_t members = target_->members.size();
        const std::size_t bounds = toResolve_.size();
        readMembers("end_var", section.value_or(Section::statics));
        if (!section)
            forget(members, bounds);
    }
    take(';');
}

/// Takes back what has no place in memory.
void DeclarationParser::forget(std::size_t members, std::size_t bounds) {
    target_->members.resize(members);
    toResolve_.resize(bounds);
}

// NAME : Int := 5;
void DeclarationParser::readConstants() {
    if (lexer_.token().kind == TokenKind::end || atOpening())
        fail(Reason::endMissing, "END_VAR");
    std::string name;
    assignFolded(name, lexer_.text());
    while (!lexer_.isMark('=') && !lexer_.isMark(';') && lexer_.token().kind != TokenKind::end)
        lexer_.advance();
    if (take('=')) {
        const Text begin = lexer_.token().text;
        Text value{.at = begin.at, .size = 0};
        while (!lexer_.isMark(';') && lexer_.token().kind != TokenKind::end) {
            value.size = lexer_.token().text.end() - value.at;
            lexer_.advance();
        }
        const Value number = valueOf(value.in(lexer_.source()), [&](std::string_view constant) {
            const auto found = ownConstants_.find(constant);
            return found == ownConstants_.end() ? std::nullopt : std::optional(found->second);
        });
        if (number.number)
            ownConstants_.insert_or_assign(name, *number.number);
    }
    take(';');
}

// ... END_STRUCT;
void DeclarationParser::readMembers(std::string_view endWord, Section section) {
    const std::size_t around = open_.size();
    while (true) {
        if (lexer_.token().kind == TokenKind::end || atOpening())
            fail(Reason::endMissing, upperCase(open_.size() > around ? "end_struct" : endWord));
        if (take(';'))
            continue;
        if (open_.size() > around && take("end_struct")) {
            target_->members[open_.back()].end =
                static_cast<std::uint32_t>(target_->members.size());
            open_.pop_back();
            skipValue();
            take(';');
        } else if (open_.size() == around && take(endWord)) {
            take(';');
            return;
        } else {
            readMember(section);
        }
    }
}

// NAME, NAME { ATTRIBUTES } : TYPE := VALUE;   // COMMENT
void DeclarationParser::readMember(Section section) {
    auto& members = target_->members;
    const std::size_t first = members.size();
    const std::size_t bounds = toResolve_.size();
    Member member{.leading = lexer_.ownLines(), .line = lexer_.token().line, .section = section};
    const std::uint32_t line = member.line;
    readMemberName(member);
    members.push_back(member);
    while (take(',')) {
        member.leading = {};
        readMemberName(member);
        members.push_back(member);
    }
    member.line = line;
    readMemberAttributes(member);
    const bool isView = lexer_.isWord("at");
    if (isView) {
        lexer_.advance();
        lexer_.advance();
    }
    expect(':');
    readType(member);
    if (member.kind == MemberKind::structure && members.size() - first != 1)
        fail(Reason::expected, "TYPE");
    for (std::size_t index = first; index != members.size(); ++index) {
        const Text name = members[index].name;
        const Text leading = members[index].leading;
        members[index] = member;
        members[index].name = name;
        members[index].leading = leading;
        members[index].end = static_cast<std::uint32_t>(index + 1);
    }
    if (member.kind == MemberKind::structure) {
        if (!lexer_.sameLine().empty())
            members.back().trailing = lexer_.sameLine();
        if (open_.size() == ImportLimits{}.structLevels)
            fail(Reason::tooDeep);
        open_.push_back(static_cast<std::uint32_t>(first));
        return;
    }
    readEndOfMember(first, members.size());
    if (isView)
        forget(first, bounds);
}

void DeclarationParser::readMemberName(Member& member) {
    if (lexer_.token().kind == TokenKind::literal || lexer_.isMark(':'))
        fail(Reason::expected, "NAME");
    if (lexer_.token().kind != TokenKind::name) {
        if (isKeyword(lexer_.text()) || lexer_.text().empty())
            fail(Reason::expected, "END_STRUCT");
        lexer_.widen(":;{,\"");
    }
    member.name = lexer_.token().text;
    lexer_.advance();
}

void DeclarationParser::readMemberAttributes(Member& member) {
    if (!lexer_.isMark('{'))
        return;
    readAttributes([&](std::string_view name, std::string_view value) {
        const bool no = equalsFolded(value, "false");
        if (equalsFolded(name, kAccessibleAttribute))
            member.hidden = no;
        else if (equalsFolded(name, kWritableAttribute))
            member.readOnly = no;
    });
}

// Array[0..3, 1..2] of TYPE
void DeclarationParser::readType(Member& member) {
    if (take("array")) {
        readDimensions(member);
        if (!take("of"))
            fail(Reason::expected, "OF");
        if (lexer_.isWord("array"))
            fail(Reason::arrayOfArray);
    }
    member.trailing = lexer_.sameLine();
    if (lexer_.isWord("struct")) {
        member.kind = MemberKind::structure;
        member.type = lexer_.token().text;
        lexer_.advance();
    } else {
        readTypeName(member);
    }
}

void DeclarationParser::readDimensions(Member& member) {
    expect('[');
    member.bounds = static_cast<std::uint32_t>(target_->bounds.size());
    do {
        if (member.dimensions == kMaxDimensions)
            fail(Reason::tooManyDimensions);
        const Place place = here();
        if (lexer_.isMark('*'))
            throw DeclarationFault(
                {.reason = Reason::sizeUnknown, .place = place, .subject = "Array[*]"});
        Bounds bounds{.low = readBound(), .high = {}};
        expect('.');
        expect('.');
        bounds.high = readBound();
        toResolve_.emplace_back(target_->bounds.size(), place);
        target_->bounds.push_back(bounds);
        ++member.dimensions;
    } while (take(','));
    expect(']');
}

// All up to the next "..", comma or bracket.
Text DeclarationParser::readBound() {
    Text text = lexer_.token().text;
    if (lexer_.token().kind == TokenKind::name)
        --text.at; // its quote
    const std::uint32_t begin = text.at;
    text.size = 0;
    while (!lexer_.isMark('.') && !lexer_.isMark(',') && !lexer_.isMark(']') &&
           !lexer_.isMark(';') && lexer_.token().kind != TokenKind::end) {
        const std::uint32_t quote = lexer_.token().kind == TokenKind::name ? 1 : 0;
        text.size = lexer_.token().text.end() + quote - begin;
        lexer_.advance();
    }
    return text;
}

// Int, "NAME", UDT 10 or String[20]
void DeclarationParser::readTypeName(Member& member) {
    const TokenKind kind = lexer_.token().kind;
    if (kind != TokenKind::word && kind != TokenKind::name)
        fail(Reason::expected, "TYPE");
    member.type = lexer_.token().text;
    member.quotedType = kind == TokenKind::name;
    const std::string_view word = lexer_.text();
    lexer_.advance();
    if (!member.quotedType && isNumberedWord(word) && lexer_.token().kind == TokenKind::word &&
        isNumber(lexer_.text())) {
        member.numberedType = true;
        member.type.size = lexer_.token().text.end() - member.type.at;
        lexer_.advance();
    } else if (!member.quotedType && lexer_.isMark('[')) {
        readLength(member);
    }
}

// [20]
void DeclarationParser::readLength(Member& member) {
    lexer_.advance();
    const Place place = here();
    const Bounds length{.high = readBound()};
    expect(']');
    if (member.dimensions == 0)
        member.bounds = static_cast<std::uint32_t>(target_->bounds.size());
    toResolve_.emplace_back(target_->bounds.size(), place);
    target_->bounds.push_back(length);
    member.hasLength = true;
}

void DeclarationParser::readEndOfMember(std::size_t first, std::size_t last) {
    Member ignored;
    readMemberAttributes(ignored);
    skipValue();
    const Text before = lexer_.sameLine();
    expect(';');
    const Text behind = lexer_.sameLine().empty() ? before : lexer_.sameLine();
    if (!behind.empty())
        for (std::size_t index = first; index != last; ++index)
            target_->members[index].trailing = behind;
}

// := ...
void DeclarationParser::skipValue() {
    if (!lexer_.isMark(':') && !lexer_.isMark('='))
        return;
    while (!lexer_.isMark(';') && lexer_.token().kind != TokenKind::end && !atOpening() &&
           !lexer_.isWord("end_struct") && !lexer_.isWord("end_var"))
        lexer_.advance();
}

void DeclarationParser::resolveBounds() {
    for (const auto& [index, place] : toResolve_) {
        Bounds& bounds = target_->bounds[index];
        const bool isLength = bounds.low.empty();
        bounds.highest = numberOf(bounds.high, place);
        bounds.lowest = isLength ? 1 : numberOf(bounds.low, place);
        if (bounds.count() < 0)
            throw DeclarationFault(
                {.reason = Reason::boundsOutOfOrder,
                 .place = place,
                 .subject = std::to_string(bounds.lowest) + ".." + std::to_string(bounds.highest)});
    }
}

std::int32_t DeclarationParser::numberOf(Text expression, Place place) const {
    const std::string_view text = expression.in(lexer_.source());
    Value value = valueOf(text, [&](std::string_view name) {
        auto found = ownConstants_.find(name);
        if (found != ownConstants_.end())
            return std::optional(found->second);
        found = constants_->find(name);
        return found == constants_->end() ? std::nullopt : std::optional(found->second);
    });
    if (value.number)
        return *value.number;
    const bool missing = !value.missing.empty();
    throw DeclarationFault({.reason = missing ? Reason::constantMissing : Reason::notANumber,
                            .place = place,
                            .subject = missing ? std::move(value.missing) : std::string(text)});
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
