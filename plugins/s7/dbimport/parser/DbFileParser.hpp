#pragma once

#include "dbimport/facts/Messages.hpp"
#include "dbimport/facts/VariableDeclaration.hpp"
#include "dbimport/reader/Delimiters.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

class AttributeTable;
class DbFileReader;
struct PlainDeclaration;

/// Consumes one character and the blanks behind it; fails with `message` when it is not `expected`.
void consume(DbFileReader& reader, char expected, Message message);

/// The grammar of .db files, one operation per construct. Who calls it puts the constructs together
/// (`readDataBlocks`, `NodeFactory`).
///
/// Initial values and the assignment section are read for their syntax and dropped. Every operation
/// throws std::runtime_error with a message of the importer at the first fault, or the standard
/// conversion errors for a malformed number.
class DbFileParser {
public:
    /// Where in a data block the parser is.
    enum class State : std::uint8_t {
        beforeHeader = 0,
        headerRead = 1,
        structRead = 2,
        beginRead = 3,
        endRead = 4,
    };

    /// The reader must outlive the parser.
    explicit DbFileParser(DbFileReader& reader) : reader_(&reader) {}

    [[nodiscard]] State state() const { return state_; }

    /// To be called in front of every data block.
    void beginDataBlock();

    /// Reads DATA_BLOCK and the block's name, which is returned with "DB" in upper case where it is
    /// made of that and a number.
    [[nodiscard]] std::string parseDataBlockHeader();

    /// Where in the file the name of the present data block begins, in bytes from 0.
    [[nodiscard]] std::uint64_t namePlace() const { return namePlace_; }

    /// Reads one line between the header and the body. True when it was STRUCT, BEGIN or
    /// END_DATA_BLOCK, which `state` then tells apart.
    [[nodiscard]] bool parseHeaderLine();

    /// Whether a plain declaration is next, which is then looked at and not consumed. If none is,
    /// `parseDeclaration` says what stands there.
    [[nodiscard]] bool peekPlainDeclaration(PlainDeclaration& declaration) const;

    /// Consumes the declaration that was peeked at; its views are valid until then.
    void skipPlainDeclaration(const PlainDeclaration& declaration);

    /// Reads one declaration up to its type, or the end of the structure: then the result is false.
    /// What of the type is read is said at `parseType`.
    [[nodiscard]] bool parseDeclaration(VariableDeclaration& declaration, bool isTopLevel);

    /// Reads a type into `declaration`: all of a scalar up to its semicolon, a struct's keyword, an
    /// array up to its OF. An array is not allowed as the element type of another.
    void parseType(VariableDeclaration& declaration, bool arraysAllowed);

    /// Says where in the file a fault would lie, in bytes from 0.
    void setPlace(std::uint64_t offset);

    /// Reads one assignment, or BEGIN, or END_DATA_BLOCK: then the result is true.
    [[nodiscard]] bool parseAssignmentStep();

private:
    struct ValueEnd;

    [[nodiscard]] bool enter(State state);
    void parseBlockAttributes();
    std::uint64_t parseAttributes(AttributeTable& table);
    void parseVariableAttributes(ExternalAccess& access);
    [[nodiscard]] bool parseName(std::string& name, bool isTopLevel);
    [[nodiscard]] bool endsStructure(const std::string& name, bool isTopLevel);
    void parseDimensions(ArrayShape& shape);
    [[nodiscard]] Dimension parseDimension();
    [[nodiscard]] std::optional<std::uint64_t> parseTextLength();
    [[nodiscard]] std::optional<std::string_view> parseAssignment(const ValueEnd& end,
                                                                  bool optional);
    [[nodiscard]] std::string_view parseValue(const ValueEnd& end);
    void parseTarget();

    DbFileReader* reader_;
    State state_ = State::beforeHeader;
    bool standardAccess_ = false; // an attribute block has said so
    std::uint64_t namePlace_ = 0; // of the data block
    std::string target_;
    std::uint64_t valuePlace_ = 0;
    std::string value_; // views of it are valid until the next value
};

} // namespace corvane::workbench::plugins::s7Driver
