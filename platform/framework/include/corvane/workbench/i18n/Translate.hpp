#pragma once

#include <corvane/utils/Export.hpp>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

/// Every text that a user reads passes through here.
namespace corvane::workbench::i18n {

/// Gives the translation of an English text in a context (a class's qualified name, as a rule), or
/// nothing where it has none.
using Translator =
    std::function<std::optional<std::u16string>(std::string_view context, std::string_view text)>;

/// The text in the user's language; the English text itself where no translator has another.
/// `text` is UTF-8.
[[nodiscard]] CORVANE_EXPORT std::u16string translate(std::string_view context,
                                                      std::string_view text);

/// Installs the translator of the running program; an empty one takes it away.
CORVANE_EXPORT void setTranslator(Translator translator);

/// `format` with its placeholders "{}" replaced, one after the other, by the arguments. A
/// placeholder without an argument stays; an argument without a placeholder is dropped.
[[nodiscard]] CORVANE_EXPORT std::u16string
fill(std::u16string_view format, std::initializer_list<std::u16string_view> arguments);

/// As `fill` of the translated text, with arguments and result in UTF-8: for the texts of
/// exceptions.
[[nodiscard]] CORVANE_EXPORT std::string
translateToUtf8(std::string_view context, std::string_view text,
                std::initializer_list<std::string_view> arguments = {});

/// As `fill` of the translated text, with arguments in UTF-8. The result replaces `target`, whose
/// memory serves again: for what is put together once per element.
CORVANE_EXPORT void fillTranslated(std::u16string& target, std::string_view context,
                                   std::string_view text,
                                   std::initializer_list<std::string_view> arguments);

} // namespace corvane::workbench::i18n
