#include <corvane/utils/core/Uuid.hpp>

#include <uuid/uuid.h>

#include <type_traits>

namespace corvane::utils::core {

static_assert(sizeof(uuid_t) == sizeof(Uuid::RawData));
static_assert(std::is_same_v<std::remove_extent_t<uuid_t>, Uuid::RawData::value_type>);

Uuid Uuid::createVersion5(const Uuid& space, std::string_view name) {
    RawData data;
    uuid_generate_sha1(data.data(), space.data_.data(), name.data(), name.size());
    return Uuid(data);
}

Uuid Uuid::createVersion4() {
    RawData data;
    uuid_generate_random(data.data());
    return Uuid(data);
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    RawData data;
    if (uuid_parse_range(text.data(), text.data() + text.size(), data.data()) != 0)
        return std::nullopt;
    return Uuid(data);
}

std::string Uuid::toString() const {
    char text[UUID_STR_LEN];
    uuid_unparse_lower(data_.data(), text);
    return text;
}

} // namespace corvane::utils::core
