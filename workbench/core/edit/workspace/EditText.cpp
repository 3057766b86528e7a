#include "workbench/core/edit/workspace/EditText.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

namespace corvane::workbench::core {

EditStopped::EditStopped()
    : EditError(utils::string::detail::utf16ToUtf8(
          editText("the change was stopped, and nothing has changed"))) {}

std::u16string editText(std::string_view text,
                        std::initializer_list<std::u16string_view> arguments) {
    return i18n::fill(i18n::translate("corvane::workbench::core::Editor", text), arguments);
}

std::u16string countedEditText(std::string_view one, std::string_view many,
                               std::span<model::Element* const> elements) {
    using utils::string::detail::utf8ToUtf16;
    if (elements.size() == 1)
        return editText(one, {utf8ToUtf16(elements.front()->name())});
    return editText(many,
                    {utf8ToUtf16(utils::numeric::detail::formatNumber(elements.size()).view())});
}

void refuseEdit(std::string_view text, std::initializer_list<std::u16string_view> arguments) {
    throw EditError(utils::string::detail::utf16ToUtf8(editText(text, arguments)));
}

} // namespace corvane::workbench::core
