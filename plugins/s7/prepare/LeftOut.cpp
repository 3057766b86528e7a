#include "prepare/LeftOut.hpp"

#include "elements/Plc.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <array>
#include <cstddef>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

struct Texts {
    std::string_view reason;
    std::string_view help;
};

constexpr auto kTexts = std::to_array<Texts>({
#define S7_LEFT_OUT(name, reason, help) {reason, help},
#include "prepare/Reasons.def"
#undef S7_LEFT_OUT
});

} // namespace

std::optional<std::uint64_t> columnOf(std::string_view text, std::uint32_t at) {
    constexpr std::size_t kLongestLine = 65536;
    std::uint64_t column = 1;
    for (std::size_t back = 0; back != at; ++back) {
        const char byte = text[at - 1 - back];
        if (byte == '\n' || byte == '\r')
            return column;
        if (back == kLongestLine)
            return std::nullopt;
        column += (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U ? 1 : 0;
    }
    return column;
}

ui::LeftOutSource leftOut(const Failure& failure, std::string_view text, std::string name,
                          std::string_view otherPlace) {
    using utils::string::detail::utf8ToUtf16;
    const Texts& texts = kTexts[static_cast<std::size_t>(failure.reason)];
    return {.file = failure.place.file,
            .line = failure.place.line,
            .column = columnOf(text, failure.place.at),
            .name = std::move(name),
            .reason = i18n::fill(i18n::translate(Plc::kTextContext, texts.reason),
                                 {utf8ToUtf16(failure.subject), utf8ToUtf16(otherPlace)}),
            .help = i18n::translate(Plc::kTextContext, texts.help)};
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
