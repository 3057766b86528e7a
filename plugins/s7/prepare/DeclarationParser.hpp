#pragma once

#include "prepare/Constants.hpp"
#include "prepare/Declarations.hpp"
#include "prepare/Lexer.hpp"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// The values of constants, by their names in lower case.
using ConstantValues = std::map<std::string, std::int32_t, std::less<>>;

/// Reads the declarations of one source: types, data blocks and the interfaces of function blocks.
/// Code is passed over. A declaration with a fault says so, and the next one is read all the same.
class DeclarationParser {
public:
    /// Appends to `target`, whose texts hold the file already. All must outlive the object.
    DeclarationParser(Declarations& target, std::uint32_t file, const ConstantValues& constants);

    void read();

    /// What is wrong with the file itself; empty where nothing is.
    [[nodiscard]] const std::optional<Failure>& failure() const { return failure_; }

private:
    // The words of a source, for the grammar.
    [[nodiscard]] Place here() const { return placeOf(lexer_.token()); }
    [[nodiscard]] Place placeOf(const Token& token) const {
        return target_->placeOf(file_, token.text, token.line);
    }
    [[noreturn]] void fail(Reason reason, std::string_view subject = {}) const;
    void expect(char mark);
    bool take(char mark);
    bool take(std::string_view word);
    [[nodiscard]] bool atOpening() const;

    void readDeclaration();
    void readBlock(DeclarationKind kind, std::string_view endWord);
    void readParts(Declaration& declaration, std::string_view endWord);
    void skipCode(std::string_view endWord);
    bool skipToEnd(std::string_view endWord);
    void readName(Declaration& declaration);
    void readHeader(Declaration& declaration, std::string_view endWord);
    void readHeaderWord(Declaration& declaration);
    void skipHeaderValue(std::uint32_t line);
    void readBlockAttributes(Declaration& declaration);
    void readSections();
    void readSection();
    void forget(std::size_t members, std::size_t bounds);
    void readConstants();
    void readMembers(std::string_view endWord, Section section);
    void readMember(Section section);
    void readMemberName(Member& member);
    void readMemberAttributes(Member& member);
    void readType(Member& member);
    void readDimensions(Member& member);
    Text readBound();
    void readTypeName(Member& member);
    void readLength(Member& member);
    void readEndOfMember(std::size_t first, std::size_t last);
    void skipValue();
    void resolveBounds();
    [[nodiscard]] std::int32_t numberOf(Text expression, Place place) const;
    template <class Take>
    void readAttributes(const Take& take);

    Declarations* target_;
    std::uint32_t file_;
    const ConstantValues* constants_;
    ConstantValues ownConstants_; ///< of the declaration that is read
    Lexer lexer_;
    std::vector<std::uint32_t> open_;                      ///< the structures around what is read
    std::vector<std::pair<std::size_t, Place>> toResolve_; ///< bounds of the declaration
    std::optional<Failure> failure_;
};

/// The key of a type or function block: its name in lower case; UDT 010 and udt10 are the same.
[[nodiscard]] std::string keyOf(std::string_view name, std::string_view number = {});

/// Whether a word is one of a block that is followed by its number: UDT 10, FB 5.
[[nodiscard]] bool isNumberedWord(std::string_view word);

} // namespace corvane::workbench::plugins::s7Driver::prepare
