#pragma once

#include <corvane/utils/Export.hpp>

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::utils::core {

/// A universally unique identifier (RFC 4122), its 16 bytes in the order in which the canonical
/// text reads them. A default-constructed one is the nil UUID.
class CORVANE_EXPORT Uuid {
public:
    using RawData = std::array<std::uint8_t, 16>;

    /// The nil UUID, of 16 zero bytes, which names nothing.
    constexpr Uuid() = default;
    /// The UUID of these bytes, of whatever version and variant they tell.
    [[nodiscard]] static constexpr Uuid fromRawData(const RawData& data) { return Uuid(data); }

    /// The name-based UUID (SHA-1) of the bytes of `name` in the namespace `space`: the same for
    /// the same two, everywhere and always. So an identity that is made of what does not change
    /// (a class and a number, say) needs not be kept anywhere: it is made again when it is needed.
    [[nodiscard]] static Uuid createVersion5(const Uuid& space, std::string_view name);

    /// A random UUID, from the system's source of random bytes.
    [[nodiscard]] static Uuid createVersion4();

    /// Reads the canonical form, 8-4-4-4-12 hexadecimal digits of either case; empty for any other
    /// text, one in braces included.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    /// The canonical form in lower case, 36 characters.
    [[nodiscard]] std::string toString() const;

    /// The 16 bytes, most significant first.
    [[nodiscard]] constexpr const RawData& rawData() const { return data_; }

    /// In the order of the bytes, which means nothing and serves sorted containers.
    friend constexpr auto operator<=>(const Uuid&, const Uuid&) = default;

private:
    constexpr explicit Uuid(const RawData& data) : data_(data) {}
    RawData data_{};
};

} // namespace corvane::utils::core

/// The bytes of a name-based or random UUID are spread evenly already: eight of them are the hash.
template <>
struct std::hash<corvane::utils::core::Uuid> {
    std::size_t operator()(const corvane::utils::core::Uuid& uuid) const noexcept {
        std::uint64_t low = 0;
        std::memcpy(&low, uuid.rawData().data() + 8, sizeof low);
        return static_cast<std::size_t>(low);
    }
};
