#include "workbench/core/memory/MemoryRange.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <initializer_list>
#include <string_view>

namespace corvane::workbench::core {

namespace {

constexpr std::uint64_t kByte = 8; // bits

std::string text(std::string_view english, std::initializer_list<std::string_view> arguments) {
    return i18n::translateToUtf8("corvane::workbench::core::MemoryRange", english, arguments);
}

} // namespace

std::string bitText(std::uint64_t bit) {
    return std::to_string(bit / kByte).append(".").append(std::to_string(bit % kByte));
}

std::string memoryRangeText(std::uint64_t begin, std::uint64_t end) {
    if (end - begin == 1)
        return text("bit {}", {bitText(begin)});
    if (begin % kByte != 0 || end % kByte != 0)
        return text("bits {} to {}", {bitText(begin), bitText(end - 1)});
    if (end - begin == kByte)
        return text("byte {}", {std::to_string(begin / kByte)});
    return text("bytes {} to {}", {std::to_string(begin / kByte), std::to_string(end / kByte - 1)});
}

} // namespace corvane::workbench::core
