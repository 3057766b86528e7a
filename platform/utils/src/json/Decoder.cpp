#include <corvane/utils/json/Decoder.hpp>

#include "Index.hpp"
#include "Scalar.hpp"
#include "Source.hpp"

#include <algorithm>
#include <array>
#include <memory_resource>
#include <utility>

namespace corvane::utils::json::decoder {

namespace detail {

/// All that a document's places share.
struct State {
    explicit State(std::string text) : source(std::move(text)), index(source) {}

    [[nodiscard]] std::string_view stringAt(std::uint32_t slot) {
        return readString(source, index.textAt(slot), arena);
    }

    Source source;
    Index index;
    std::pmr::monotonic_buffer_resource arena; // strings with escapes
};

} // namespace detail

namespace {

/// By Type.
constexpr std::array<std::string_view, 6> kTypeNames = {"an object", "an array",  "a string",
                                                        "a number",  "a boolean", "null"};

constexpr std::string_view nameOf(Type type) { return kTypeNames[static_cast<std::size_t>(type)]; }

/// The type of the value that begins with `c`, which the index has let pass.
constexpr Type typeOf(char c) {
    switch (c) {
    case '{':
        return Type::object;
    case '[':
        return Type::array;
    case '"':
        return Type::string;
    case 't':
    case 'f':
        return Type::boolean;
    case 'n':
        return Type::null;
    default:
        return Type::number;
    }
}

} // namespace

Type Value::type() const {
    const char* text = state_->index.textAt(slot_);
    const Type type = typeOf(*text);
    if (type == Type::boolean)
        static_cast<void>(asBool());
    if (type == Type::null)
        detail::expectWord(state_->source, text, "null");
    return type;
}

void Value::requireType(Type expected) const {
    const char* text = state_->index.textAt(slot_);
    const Type found = typeOf(*text);
    if (found == expected)
        return;
    std::string problem = "expected ";
    problem.append(nameOf(expected)).append(", found ").append(nameOf(found));
    state_->source.fail(problem, member_, text);
}

String Value::asString() const {
    requireType(Type::string);
    return String(state_->stringAt(slot_));
}

bool Value::asBool() const {
    requireType(Type::boolean);
    const char* text = state_->index.textAt(slot_);
    const bool value = *text == 't';
    detail::expectWord(state_->source, text, value ? "true" : "false");
    return value;
}

Object Value::asObject() const {
    requireType(Type::object);
    return Object(*state_, slot_);
}

Array Value::asArray() const {
    requireType(Type::array);
    return Array(*state_, slot_);
}

std::string_view Value::parseNumberString() const {
    const char* text = state_->index.textAt(slot_);
    if (typeOf(*text) != Type::number)
        return {};
    return detail::readNumber(state_->source, text);
}

void Value::throwRangeError(std::uint64_t minimum, std::uint64_t maximum) const {
    state_->source.fail("value out of range, expected " + std::to_string(minimum) + " to " +
                            std::to_string(maximum),
                        member_, state_->index.textAt(slot_));
}

Object::Object(detail::State& state, std::uint32_t slot)
    : state_(&state),
      slot_(slot),
      next_(detail::Index::insideOf(slot)),
      end_(state.index.endOf(slot)) {}

std::optional<Member> Object::next() {
    while (next_ != end_) {
        const String name(state_->stringAt(next_));
        const Member member{name, Value(*state_, next_ + 1, name)};
        if (!isPassedOver(member)) {
            next_ = state_->index.after(next_ + 1);
            return member;
        }
        next_ = state_->index.after(next_ + 1);
    }
    return std::nullopt;
}

bool Object::isPassedOver(const Member& member) {
    const auto found = std::ranges::find(passedOver_, member.name.view());
    if (found == passedOver_.end())
        return false;
    const auto bit = std::uint32_t{1} << (found - passedOver_.begin());
    if ((met_ & bit) != 0)
        state_->source.fail("duplicate member", member.name, state_->index.textAt(next_));
    met_ |= bit;
    return true;
}

void Object::passOver(std::span<const std::string_view> names) {
    if (names.size() > kMaxPassedOver)
        throw std::length_error("too many names to pass over");
    passedOver_ = names;
    met_ = 0;
}

std::optional<Value> Object::find(std::string_view name) const {
    for (std::uint32_t slot = detail::Index::insideOf(slot_); slot != end_;
         slot = state_->index.after(slot + 1))
        if (const auto found = state_->stringAt(slot); found == name)
            return Value(*state_, slot + 1, found);
    return std::nullopt;
}

void Object::rewind() {
    next_ = detail::Index::insideOf(slot_);
    met_ = 0;
}

void Object::fail(const std::string& problem, std::string_view member) const {
    state_->source.fail(problem, member, state_->index.textAt(slot_));
}

Array::Array(detail::State& state, std::uint32_t slot)
    : state_(&state), next_(detail::Index::insideOf(slot)), end_(state.index.endOf(slot)) {}

std::optional<Value> Array::next() {
    if (next_ == end_)
        return std::nullopt;
    const Value value(*state_, next_, {});
    next_ = state_->index.after(next_);
    return value;
}

Document::Document(std::string text) : state_(std::make_unique<detail::State>(std::move(text))) {}
Document::Document(Document&&) noexcept = default;
Document::~Document() = default;

Value Document::root() const { return Value(*state_, detail::Index::kRoot, {}); }

void Document::expectEnd() const {
    const char* trailing = state_->index.trailingText();
    if (trailing != state_->source.end())
        state_->source.failMalformed("unexpected text behind the outermost value", trailing);
}

} // namespace corvane::utils::json::decoder
