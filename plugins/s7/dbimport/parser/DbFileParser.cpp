#include "dbimport/parser/DbFileParser.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/TypeTable.hpp"
#include "dbimport/parser/AttributeTable.hpp"
#include "dbimport/parser/Decimal.hpp"
#include "dbimport/parser/PlainDeclaration.hpp"
#include "dbimport/reader/DbFileReader.hpp"

#include "address/DataBlockPrefix.hpp"

#include <corvane/utils/string/Ascii.hpp>

#include <algorithm>
#include <stdexcept>

namespace corvane::workbench::plugins::s7Driver {

/// The bytes that end a value, and those that end a piece of it: a quoted piece may follow.
struct DbFileParser::ValueEnd {
    Delimiters value;
    Delimiters piece;
};

namespace {

constexpr char kNameQuote = '"';
constexpr char kValueQuote = '\'';

constexpr Delimiters kHeaderEnd{"\""};
constexpr Delimiters kHeaderWordEnd{":={"};
constexpr Delimiters kNameEnd{":;{"};
constexpr Delimiters kTypeEnd{";:["};
constexpr Delimiters kLengthEnd{"]"};
constexpr Delimiters kTargetEnd{":"};

/// "DB" and nothing but digits behind it, if there are any.
bool isNumberedName(std::string_view name) {
    return name.size() >= kDataBlockMarker.size() && foldCase(name[0]) == 'd' &&
           foldCase(name[1]) == 'b' &&
           std::ranges::all_of(name.substr(kDataBlockMarker.size()),
                               utils::string::ascii::isDigit<char>);
}

std::string numberedName(std::string_view number) {
    return std::string(kDataBlockMarker).append(number);
}

/// The number of a block whose name is "DB" and a number, as it is written.
std::string_view readBlockNumber(DbFileReader& reader) {
    const std::string_view number = reader.readNumberText();
    try {
        static_cast<void>(readDecimal(number));
    } catch (const std::logic_error&) {
        fail(Message::dbNumberExpected);
    }
    return number;
}

} // namespace

void consume(DbFileReader& reader, char expected, Message message) {
    if (reader.readCharSkipBlanks() != expected)
        fail(message);
}

void DbFileParser::beginDataBlock() {
    state_ = State::beforeHeader;
    standardAccess_ = false;
}

void DbFileParser::setPlace(std::uint64_t offset) { reader_->setPlace(offset); }

bool DbFileParser::enter(State state) {
    state_ = state;
    return true;
}

//    DATA_BLOCK "Motor_Data"
//    DATA_BLOCK DB 17
//    ^
std::string DbFileParser::parseDataBlockHeader() {
    if (keywordOf(reader_->readWordUntil(kHeaderEnd)) != Keyword::dataBlock)
        fail(Message::missingDataBlock);
    std::string name(reader_->nextIs(kNameQuote) ? reader_->readQuoted(kNameQuote)
                                                 : reader_->readWord());
    namePlace_ = reader_->place();
    if (isKeyword(name))
        fail(Message::keywordAsBlockName);
    if (name.empty())
        fail(Message::emptyBlockName);
    if (isNumberedName(name))
        name = numberedName(name.size() == kDataBlockMarker.size()
                                ? readBlockNumber(*reader_)
                                : std::string_view(name).substr(kDataBlockMarker.size()));
    state_ = State::headerRead;
    return name;
}

//    VERSION : 0.1
//    ^
bool DbFileParser::parseHeaderLine() {
    const std::string_view word = reader_->readWordUntil(kHeaderWordEnd);
    const Keyword keyword = keywordOf(word);
    const bool empty = word.empty();
    const auto next = reader_->peekChar();
    if (next == '{') {
        parseBlockAttributes();
        return false;
    }
    if ((next == '=' || next == ':') && empty)
        fail(Message::headerLineWithoutWord);
    if (next == '=') {
        reader_->skipRestOfLine();
        return false;
    }
    if (next == ':') {
        reader_->readCharSkipBlanks();
        if (reader_->nextIs(kValueQuote))
            reader_->readQuoted(kValueQuote);
        else
            reader_->readWord();
        return false;
    }
    if (empty)
        fail(Message::emptyHeaderWord);
    switch (keyword) {
    case Keyword::structure:
        // Without attributes a block has optimized access, which gives its variables no addresses.
        if (!standardAccess_)
            failAt(namePlace_, Message::optimizedAccess);
        return enter(State::structRead);
    case Keyword::begin:
        return enter(State::beginRead);
    case Keyword::endDataBlock:
        return enter(State::endRead);
    case Keyword::dataBlock:
        fail(Message::nestedDataBlock);
    default:
        return false; // such as NON_RETAIN: nothing that an import could use
    }
}

//    { S7_Optimized_Access := 'FALSE' }
//    ^
void DbFileParser::parseBlockAttributes() {
    AttributeTable table{kOptimizedAccessAttribute};
    const std::uint64_t place = parseAttributes(table);
    if (!table.isFalse(kOptimizedAccessAttribute))
        failAt(place, Message::optimizedAccess);
    standardAccess_ = true;
}

bool DbFileParser::peekPlainDeclaration(PlainDeclaration& declaration) const {
    return readPlainDeclaration(reader_->lookAhead(), declaration);
}

void DbFileParser::skipPlainDeclaration(const PlainDeclaration& declaration) {
    reader_->passOver(declaration.size);
    reader_->skipBlanks();
}

//    Speed { ExternalWritable := 'False' } : Int := 100;
//    ^
bool DbFileParser::parseDeclaration(VariableDeclaration& declaration, bool isTopLevel) {
    if (!parseName(declaration.name, isTopLevel))
        return false;
    declaration.place = reader_->place();
    declaration.access = ExternalAccess();
    if (reader_->nextIs('{'))
        parseVariableAttributes(declaration.access);
    if (!reader_->nextIs(':'))
        failAt(declaration.place, Message::missingSeparator);
    reader_->readCharSkipBlanks();
    parseType(declaration, true);
    return true;
}

// False at the end of the structure. A quoted name is not asked whether it is empty or a keyword,
// yet one that reads END_STRUCT ends the structure like the keyword itself.
bool DbFileParser::parseName(std::string& name, bool isTopLevel) {
    if (reader_->nextIs(kNameQuote)) {
        name = reader_->readQuoted(kNameQuote);
        return !endsStructure(name, isTopLevel);
    }
    name = reader_->readWordUntil(kNameEnd);
    if (name.empty())
        fail(Message::emptyVariableName);
    const Keyword keyword = keywordOf(name);
    if (keyword == Keyword::none)
        return true;
    if (keyword == Keyword::endStruct && reader_->nextIs(';'))
        name.push_back(reader_->readCharSkipBlanks());
    else if (isKeyword(name))
        fail(Message::keywordAsVariableName);
    return !endsStructure(name, isTopLevel);
}

// Only the body of the data block may leave the semicolon out. The difference is deliberate.
bool DbFileParser::endsStructure(const std::string& name, bool isTopLevel) {
    std::string_view word = name;
    const bool closed = word.ends_with(';');
    if (closed)
        word.remove_suffix(1);
    if (keywordOf(word) != Keyword::endStruct)
        return false;
    if (!closed && !isTopLevel)
        fail(Message::endStructWithoutSemicolon);
    return true;
}

void DbFileParser::parseVariableAttributes(ExternalAccess& access) {
    AttributeTable table = variableAttributes();
    parseAttributes(table);
    access = accessOf(table);
}

//    Array[0..3, -1..1] of Real := [12(0.0)];
//    ^
void DbFileParser::parseType(VariableDeclaration& declaration, bool arraysAllowed) {
    static constexpr ValueEnd kInitialValueEnd{Delimiters{";"}, Delimiters{";'"}};
    assignFolded(declaration.typeKeyword, reader_->readWordUntil(kTypeEnd));
    declaration.typePlace = reader_->place();
    declaration.type = findType(declaration.typeKeyword);
    const Keyword keyword =
        declaration.type != nullptr ? Keyword::none : keywordOf(declaration.typeKeyword);
    if (keyword == Keyword::array) {
        if (!arraysAllowed)
            fail(Message::badArrayDeclaration);
        parseDimensions(declaration.shape.emplace<ArrayShape>());
        return;
    }
    ScalarShape& scalar = declaration.shape.emplace<ScalarShape>();
    if (keyword == Keyword::structure)
        return;
    if (declaration.type != nullptr && declaration.type->isText() && reader_->nextIs('['))
        scalar.elementCount = parseTextLength();
    static_cast<void>(parseAssignment(kInitialValueEnd, true));
    if (!reader_->nextIs(';'))
        failAt(declaration.place, Message::semicolonExpected);
    reader_->readCharSkipBlanks();
}

//    [0..3, -1..1] of Real
//    ^
void DbFileParser::parseDimensions(ArrayShape& shape) {
    consume(*reader_, '[', Message::badArraySyntax);
    for (;;) {
        shape.dimensions.push_back(parseDimension());
        if (reader_->nextIs(']'))
            break;
        if (!reader_->nextIs(','))
            failAt(reader_->offset(), Message::badArrayIndex);
        reader_->readCharSkipBlanks();
    }
    consume(*reader_, ']', Message::arrayBracketExpected);
    if (keywordOf(reader_->readWord()) != Keyword::of)
        fail(Message::badArrayDeclaration);
}

//    -1..1
//    ^
Dimension DbFileParser::parseDimension() {
    const std::string low(reader_->readNumberText());
    const std::uint64_t lowPlace = reader_->place();
    if (reader_->readChar() != '.')
        fail(Message::badArraySyntax);
    consume(*reader_, '.', Message::badArraySyntax);
    const std::string_view high = reader_->readNumberText();
    const std::int32_t lowBound = readDecimal(low, lowPlace);
    return {lowBound, readDecimal(high, reader_->place())};
}

//    [20]
//    ^
std::optional<std::uint64_t> DbFileParser::parseTextLength() {
    reader_->readCharSkipBlanks();
    const std::string text(reader_->readWordUntil(kLengthEnd));
    const std::uint64_t place = reader_->place();
    if (!reader_->nextIs(']'))
        fail(Message::badStringDeclaration);
    reader_->readCharSkipBlanks();
    const std::int32_t length = readDecimal(text, place);
    if (length < 0)
        failAt(place, Message::negativeStringLength);
    return static_cast<std::uint64_t>(length);
}

//    { ExternalAccessible := 'False'; ExternalWritable := 'False' }
//    ^
// Returns where the last value begins that the table was looking for, or the block if there is
// none.
std::uint64_t DbFileParser::parseAttributes(AttributeTable& table) {
    static constexpr ValueEnd kAttributeEnd{Delimiters{";}"}, Delimiters{";}'"}};
    std::uint64_t place = reader_->offset();
    reader_->readCharSkipBlanks();
    do {
        const std::string_view name = reader_->readWordUntil(kTargetEnd);
        if (name.empty())
            fail(Message::emptyAttributeName);
        auto* const wanted = table.find(name);
        const auto value = parseAssignment(kAttributeEnd, false);
        if (wanted != nullptr && value) {
            wanted->setValue(*value);
            place = valuePlace_;
        }
    } while (!endsAttributeBlock(reader_->readCharSkipBlanks()));
    return place;
}

//    := 'a text'
//    ^
// The value is valid until something more is consumed; there is none where none was assigned.
std::optional<std::string_view> DbFileParser::parseAssignment(const ValueEnd& end, bool optional) {
    if (!reader_->nextIs(':')) {
        if (!optional)
            fail(Message::assignmentExpected);
        reader_->skipBlanks();
        return std::nullopt;
    }
    reader_->readCharSkipBlanks();
    if (!reader_->nextIs('='))
        fail(Message::assignmentExpected);
    reader_->readCharSkipBlanks();
    return parseValue(end);
}

std::string_view DbFileParser::parseValue(const ValueEnd& end) {
    value_.clear();
    valuePlace_ = reader_->offset();
    for (;;) {
        const auto next = reader_->peekChar();
        if (!next)
            failAt(valuePlace_, Message::endInsideValue);
        if (end.value.contains(*next))
            return value_;
        const bool quoted = *next == kValueQuote;
        const std::string_view piece =
            quoted ? reader_->readQuotedKeepQuotes(kValueQuote) : reader_->readWordUntil(end.piece);
        if (!quoted && isKeyword(piece))
            fail(Message::keywordInValue);
        // Most values are one piece, which need not be put together: it would be the same text
        // (ImportBuffers.TheGrammarsMessagesStay).
        if (const auto behind = reader_->peekChar();
            value_.empty() && behind && end.value.contains(*behind))
            return piece;
        value_.append(piece);
    }
}

//    Axis.Pos := 100;
//    ^
bool DbFileParser::parseAssignmentStep() {
    static constexpr ValueEnd kAssignedValueEnd{Delimiters{";"}, Delimiters{";'"}};
    const std::uint64_t place = reader_->offset();
    parseTarget();
    const Keyword keyword = keywordOf(target_);
    if (keyword == Keyword::begin && state_ == State::structRead) {
        state_ = State::beginRead;
        return false;
    }
    if (keyword == Keyword::endDataBlock)
        return enter(State::endRead);
    if (isKeyword(target_))
        failAt(place, Message::keywordAsTarget);
    if (target_.empty())
        failAt(place, Message::emptyTarget);
    if (!reader_->nextIs(':'))
        failAt(place, Message::targetWithoutAssignment, target_);
    static_cast<void>(parseAssignment(kAssignedValueEnd, false));
    reader_->readCharSkipBlanks();
    return false;
}

// A quoted name may be followed by the path of a member.
void DbFileParser::parseTarget() {
    target_.clear();
    if (reader_->nextIs(kNameQuote))
        target_ = reader_->readQuoted(kNameQuote);
    target_.append(reader_->readWordUntil(kTargetEnd));
}

} // namespace corvane::workbench::plugins::s7Driver
