#include "workbench/cli/verbs/FieldInput.hpp"

#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/edit/workspace/FieldText.hpp"

#include <corvane/utils/string/Utf.hpp>

namespace corvane::workbench::cli {

std::expected<ui::ControlValue, std::string> readValue(ui::Control& control,
                                                       std::string_view text) {
    if (!utils::string::detail::isValidUtf8(text))
        return std::unexpected("the value “" + utils::string::detail::replaceMalformedUtf8(text) +
                               "” is not valid UTF-8");
    auto value = core::valueFromText(control, utils::string::detail::utf8ToUtf16(text));
    if (!value)
        return std::unexpected(narrow(value.error()));
    return *std::move(value);
}

} // namespace corvane::workbench::cli
