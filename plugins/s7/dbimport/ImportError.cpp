#include "dbimport/ImportError.hpp"

#include "elements/Plc.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

namespace corvane::workbench::plugins::s7Driver {

std::u16string importErrorText(const std::filesystem::path& filePath, std::string_view message) {
    constexpr std::string_view kFormat = "Error importing S7 data blocks from {}: {} ";
    return i18n::fill(i18n::translate(Plc::kTextContext, kFormat),
                      {utils::string::detail::utf8ToUtf16(filePath.native()),
                       utils::string::detail::utf8ToUtf16(message)});
}

} // namespace corvane::workbench::plugins::s7Driver
