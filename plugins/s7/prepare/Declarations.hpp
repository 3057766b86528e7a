#pragma once

#include "prepare/LeftOut.hpp"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the sources declare, as it was read: the words stay where they are in the texts.
namespace corvane::workbench::plugins::s7Driver::prepare {

/// A piece of a file's text.
struct Text {
    std::uint32_t at = 0;
    std::uint32_t size = 0;

    [[nodiscard]] bool empty() const { return size == 0; }
    [[nodiscard]] std::uint32_t end() const { return at + size; }
    [[nodiscard]] std::string_view in(std::string_view text) const { return text.substr(at, size); }
};

/// The bounds of a dimension, as they are written and, once the constants are known, in numbers. A
/// text's length is a bound, too: the high one.
struct Bounds {
    Text low = {};
    Text high = {};
    std::int32_t lowest = 0;
    std::int32_t highest = 0;

    /// How many elements; negative where the bounds are out of order.
    [[nodiscard]] std::int64_t count() const { return std::int64_t{highest} - lowest + 1; }
};

/// What a member's type turned out to be.
enum class MemberKind : std::uint8_t {
    unresolved, ///< a word that was not looked up yet
    structure,  ///< its members follow, up to `Member::end`
    elementary, ///< a type that the import knows
    declared,   ///< of the declaration `Member::target`
    system,     ///< of the row `Member::target` of the system types
    pointer,    ///< a parameter that is passed by its address
};

/// The parts of an interface, in the order in which they lie in memory. What stands in others has
/// no place there.
enum class Section : std::uint8_t { input, output, inOut, statics };
inline constexpr std::uint8_t kSections = 4;

struct Member {
    Text name = {};
    Text type = {};     ///< a word, or a name without its quotes
    Text leading = {};  ///< the comments in front of it
    Text trailing = {}; ///< the comments behind it
    std::uint32_t line = 0;
    std::uint32_t end = 0;    ///< behind the last member that stands inside it
    std::uint32_t bounds = 0; ///< where its bounds begin
    std::uint32_t target = 0;
    std::uint8_t dimensions = 0;
    bool hasLength = false; ///< its length stands behind its bounds
    MemberKind kind = MemberKind::unresolved;
    Section section = Section::statics; ///< of a member at the top
    bool quotedType = false;
    bool numberedType = false; ///< UDT 10: the type's text is the number
    bool hidden = false;
    bool readOnly = false;
};

enum class Access : std::uint8_t { notStated, standard, optimized };

/// How large what a declaration asks for would be. All saturate.
struct Measure {
    std::uint64_t elements = 0; ///< that the import would visit
    std::uint64_t lines = 0;    ///< of text
    std::uint64_t bytes = 0;    ///< of text, at most, where it is not indented
    std::uint32_t levels = 0;   ///< of structures in structures
};

enum class DeclarationKind : std::uint8_t { type, functionBlock, dataBlock };

struct Declaration {
    DeclarationKind kind = DeclarationKind::type;
    std::string name; ///< as the project knows it: DB17, or what stands in quotes
    std::string key;  ///< under which it is looked up
    Place place = {};
    // The members, those inside others included, stand next to each other.
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    Text comment = {}; ///< behind the name
    Access access = Access::notStated;
    bool hasStructure = false;
    // The type or function block in the place of a structure.
    std::string typeKey;
    std::string typeName;
    Place typePlace = {};
    bool quotedType = false;
    std::optional<Failure> failure;
    std::optional<Measure> measure; ///< empty until it is measured
};

/// Everything that was read.
struct Declarations {
    std::vector<std::string_view> texts; ///< of the files
    std::vector<Declaration> all;        ///< in the order of the files
    std::vector<Member> members;
    std::vector<Bounds> bounds;

    [[nodiscard]] std::string_view textOf(const Declaration& declaration) const {
        return texts[declaration.place.file];
    }

    /// Where a piece of a file begins: at its quote, if it stands in quotes.
    [[nodiscard]] Place placeOf(std::uint32_t file, Text piece, std::uint32_t line) const {
        const bool quoted = piece.at != 0 &&
                            (texts[file][piece.at - 1] == '"' || texts[file][piece.at - 1] == '\'');
        return {.file = file, .at = piece.at - (quoted ? 1 : 0), .line = line};
    }
};

/// Everything counts from 0 in 32 bits, so that a member is small.
inline constexpr std::size_t kLargestText = std::numeric_limits<std::uint32_t>::max() - 1;

} // namespace corvane::workbench::plugins::s7Driver::prepare
