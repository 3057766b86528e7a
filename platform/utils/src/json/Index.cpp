#include "Index.hpp"

#include "Tokens.hpp"

#include <corvane/utils/memory/LargePages.hpp>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace corvane::utils::json::decoder::detail {

namespace {

constexpr auto kBeginsValue = [] {
    std::array<bool, 256> begins{};
    for (const char c : std::string_view("{[\"-0123456789tfn"))
        begins[static_cast<unsigned char>(c)] = true;
    return begins;
}();

/// Walks over the tokens once, checks that they make up one value, and writes the slots.
class Builder {
public:
    Builder(const Source& source, std::span<const std::uint32_t> tokens, std::uint32_t* slots)
        : source_(source),
          token_(tokens.data()),
          tokensEnd_(token_ + tokens.size()),
          slots_(slots),
          slot_(slots) {}

    /// Returns the first token behind the value, or the end of the text.
    const char* run() {
        beginValue();
        while (depth_ > 0) {
            if (current() == '{')
                continueObject();
            else
                continueArray();
        }
        return next();
    }

private:
    /// The next token; the NUL at the end of the text when there are no more.
    [[nodiscard]] const char* next() const {
        return token_ == tokensEnd_ ? source_.end() : source_.begin() + *token_;
    }

    /// Takes the next token if it is `c`.
    bool take(char c) {
        if (*next() != c)
            return false;
        ++token_;
        return true;
    }

    void expect(bool found, std::string_view what) const {
        if (found)
            return;
        const bool ended = token_ == tokensEnd_;
        source_.failMalformed(ended ? "unexpected end of the text" : what, next());
    }

    /// The innermost open bracket.
    [[nodiscard]] char current() const { return source_.begin()[slots_[open_[depth_ - 1]]]; }

    /// value
    /// ^
    void beginValue() {
        const char c = *next();
        expect(kBeginsValue[static_cast<unsigned char>(c)], "expected a value");
        *slot_++ = *token_;
        if (c == '{' || c == '[') {
            if (depth_ == kMaxDepth)
                source_.failMalformed("more than " + std::to_string(kMaxDepth) +
                                          " arrays and objects inside one another",
                                      next());
            open_[depth_++] = static_cast<std::uint32_t>(slot_ - slots_) - 1;
            ++slot_;
            fresh_ = true;
        }
        ++token_;
    }

    /// "name": value
    /// ^
    void beginMember() {
        expect(*next() == '"', "expected a member's name in double quotes");
        *slot_++ = *token_++;
        expect(take(':'), "expected ':' after the member's name");
        beginValue();
    }

    /// { "name": value, "name": value }
    ///  ^             ^              ^
    void continueObject() {
        if (take('}'))
            close();
        else {
            if (!takeFresh())
                expect(take(','), "expected ',' or '}'");
            beginMember();
        }
    }

    /// [ value, value ]
    ///  ^     ^      ^
    void continueArray() {
        if (take(']'))
            close();
        else {
            if (!takeFresh())
                expect(take(','), "expected ',' or ']'");
            beginValue();
        }
    }

    void close() {
        slots_[open_[--depth_] + 1] = static_cast<std::uint32_t>(slot_ - slots_);
        fresh_ = false;
    }

    /// True directly behind an opening bracket, where no comma stands.
    bool takeFresh() { return std::exchange(fresh_, false); }

    const Source& source_;
    const std::uint32_t* token_;
    const std::uint32_t* tokensEnd_;
    std::uint32_t* slots_;
    std::uint32_t* slot_; // the next to be written
    unsigned depth_ = 0;
    bool fresh_ = false;
    std::array<std::uint32_t, kMaxDepth> open_{}; // the slots of the open brackets
};

} // namespace

Index::Index(const Source& source) : source_(&source) {
    const Tokens tokens(source);
    // A closed bracket needs no slot of its own and leaves it to its opening one, so that only the
    // brackets still open can make the slots more than the tokens.
    const std::size_t slots = tokens.offsets().size() + kMaxDepth;
    slots_ = std::make_unique_for_overwrite<std::uint32_t[]>(slots);
    memory::preferLargePages(slots_.get(), slots * sizeof(std::uint32_t));
    trailing_ = Builder(source, tokens.offsets(), slots_.get()).run();
}

} // namespace corvane::utils::json::decoder::detail
