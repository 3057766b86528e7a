#pragma once

#include <initializer_list>
#include <type_traits>

namespace corvane::workbench {

/// A set of the enumerators of `Enum`, whose values are single bits. As large as the enumeration's
/// underlying type, and a constant wherever its flags are.
///
///     constexpr Flags<io::Direction> kBoth{io::Direction::input, io::Direction::output};
template <class Enum>
class Flags {
public:
    using Bits = std::underlying_type_t<Enum>;

    /// The empty set.
    constexpr Flags() = default;
    constexpr Flags(std::initializer_list<Enum> flags) {
        for (Enum flag : flags)
            bits_ = static_cast<Bits>(bits_ | static_cast<Bits>(flag));
    }

    /// Whether the set holds the flag; for a value of several bits, whether it holds any of them.
    [[nodiscard]] constexpr bool has(Enum flag) const {
        return (bits_ & static_cast<Bits>(flag)) != 0;
    }
    /// The bits of all flags together, as the runtime reads them.
    [[nodiscard]] constexpr Bits bits() const { return bits_; }

    friend constexpr bool operator==(Flags, Flags) = default;

private:
    Bits bits_ = 0;
};

} // namespace corvane::workbench
