#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

/// Reads JSON in document order: members and entries come as they stand in the text, a number as
/// its own characters, and nothing is built in memory but what the caller builds.
///
/// `Value`, `Object`, `Array` and `String` are places in the document's text: small, copied freely,
/// and alive no longer than the `Document`. Each object and array keeps a place of its own, so that
/// members may be read in any order, more than once, or not at all. What is never read is never
/// looked into: a misspelt `true` or a bad escape behind a member that nobody asks for goes
/// unnoticed, while the structure around it (brackets, commas, colons) is always checked.
///
///     const Document document(std::move(text));
///     auto object = document.root().asObject();
///     while (const auto member = object.next()) {
///         if (member->name.view() != "rack")
///             continue;
///         const auto digits = member->value.parseNumberString();
///         if (const auto number = numeric::parseLeadingDigits<std::uint8_t>(digits))
///             rack = *number;
///         else
///             member->value.throwRangeError(0, 255);
///     }
namespace corvane::utils::json::decoder {

/// How many arrays and objects may stand inside one another. Far above what any project needs, and
/// low enough that a reader which calls itself once per level stays within an ordinary stack.
inline constexpr unsigned kMaxDepth = 3072;

/// Where in a text something stands: both count from 1, the column in bytes.
struct Position {
    std::size_t line = 1;
    std::size_t column = 1;
};

/// The text is not what the reader asked for: malformed JSON, a value of another type, a number out
/// of range. `what` says all of it in one line, with the member and the place:
///     member "rack": value out of range, expected 0 to 255 (line 4, column 17)
///     malformed JSON: expected ',' or '}' (line 4, column 22)
/// A type or range fault is placed where the value begins, malformed text where it was noticed.
class CORVANE_EXPORT DecodeError : public std::runtime_error {
public:
    DecodeError(const std::string& problem, std::string_view member, Position position);
    /// Empty when the problem belongs to no member.
    [[nodiscard]] const std::string& member() const { return member_; }
    [[nodiscard]] Position position() const { return position_; }

private:
    std::string member_;
    Position position_;
};

class Document;
class Object;
class Array;
namespace detail {
struct State;
}

/// A decoded string: UTF-8, escapes resolved, valid as long as the document.
class String {
public:
    String() = default;
    explicit String(std::string_view text) : text_(text) {}
    [[nodiscard]] std::string_view view() const { return text_; }
    operator std::string_view() const { return text_; }

private:
    std::string_view text_;
};

enum class Type : std::uint8_t { object, array, string, number, boolean, null };

/// One value. Reading it does not use it up.
class CORVANE_EXPORT Value {
public:
    /// Throws DecodeError for a misspelt `true`, `false` or `null`.
    [[nodiscard]] Type type() const;

    // Each throws DecodeError, naming the member and the place, when the value is of another type.
    /// Half of a surrogate pair in an escape is malformed: it stands for no character, and what
    /// would take its place would be saved in its stead.
    [[nodiscard]] String asString() const;
    [[nodiscard]] bool asBool() const;
    [[nodiscard]] Object asObject() const;
    [[nodiscard]] Array asArray() const;

    /// The characters of the number as they stand in the text ("3.90" stays "3.90"); an empty text
    /// when the value is no number, so that callers that read digits find none and report the
    /// range. Throws DecodeError for what begins like a number and is none ("1.", "01", "1x").
    [[nodiscard]] std::string_view parseNumberString() const;

    /// Throws DecodeError for a number that the caller cannot take, naming the member, the place
    /// and the range from `minimum` to `maximum`.
    [[noreturn]] void throwRangeError(std::uint64_t minimum, std::uint64_t maximum) const;

    /// The name of the member whose value this is; empty for an array's entry.
    [[nodiscard]] std::string_view member() const { return member_; }

private:
    friend class Object;
    friend class Array;
    friend class Document;
    Value(detail::State& state, std::uint32_t slot, std::string_view member)
        : state_(&state), member_(member), slot_(slot) {}
    void requireType(Type expected) const;

    detail::State* state_;
    std::string_view member_;
    std::uint32_t slot_; // in the document's index
};

/// A member of an object.
struct Member {
    String name;
    Value value;
};

/// An object whose members are read one after the other.
class CORVANE_EXPORT Object {
public:
    /// The next member in document order; empty after the last one. Whatever its value holds, the
    /// step costs the same. Throws DecodeError for a malformed name.
    [[nodiscard]] std::optional<Member> next();

    /// Names that `next` passes over from now on: the host's own members, which an element never
    /// sees. Only the first of two members of such a name would be found, and the other be lost in
    /// the next save: `next` throws DecodeError "duplicate member" where it meets the second.
    /// At most `kMaxPassedOver` names, which must outlive the object.
    void passOver(std::span<const std::string_view> names);
    static constexpr std::size_t kMaxPassedOver = 32;

    /// The value of the first member of that name, wherever it stands; empty if there is none. The
    /// search begins at the first member and does not change what `next` gives.
    [[nodiscard]] std::optional<Value> find(std::string_view name) const;

    /// Starts over: `next` gives the first member again.
    void rewind();

    /// Throws DecodeError with `problem`, placed where the object begins.
    [[noreturn]] void fail(const std::string& problem, std::string_view member = {}) const;

private:
    friend class Value;
    Object(detail::State& state, std::uint32_t slot);
    [[nodiscard]] bool isPassedOver(const Member& member);

    detail::State* state_;
    std::span<const std::string_view> passedOver_;
    std::uint32_t slot_; // in the document's index, as the next two
    std::uint32_t next_;
    std::uint32_t end_;
    std::uint32_t met_ = 0; // one bit for each name in passedOver_
};

/// An array whose entries are read one after the other.
class CORVANE_EXPORT Array {
public:
    /// The next entry; empty after the last one.
    [[nodiscard]] std::optional<Value> next();

private:
    friend class Value;
    Array(detail::State& state, std::uint32_t slot);

    detail::State* state_;
    std::uint32_t next_; // in the document's index, as the other
    std::uint32_t end_;
};

/// A JSON text, at most 4 GiB of it, and the reader over it. A byte order mark in front is skipped
/// and counts in no position.
class CORVANE_EXPORT Document {
public:
    /// Takes the text, and finds the place of every value in it. Throws DecodeError when the text
    /// is not UTF-8, holds no value, nests deeper than `kMaxDepth`, or when the outermost value is
    /// not built of properly closed strings and brackets, commas and colons. Faults inside a
    /// string, a number or a word are met, and thrown, where they are read.
    explicit Document(std::string text);
    Document(Document&&) noexcept;
    ~Document();

    /// The outermost value.
    [[nodiscard]] Value root() const;

    /// Throws DecodeError when something other than blanks follows the outermost value.
    void expectEnd() const;

private:
    std::unique_ptr<detail::State> state_;
};

} // namespace corvane::utils::json::decoder
