#include <corvane/workbench/i18n/Translate.hpp>

#include <corvane/utils/string/Utf.hpp>

namespace corvane::workbench::i18n {

namespace {

Translator& translator() {
    static Translator installed;
    return installed;
}

} // namespace

std::u16string translate(std::string_view context, std::string_view text) {
    if (translator())
        if (auto translated = translator()(context, text))
            return *std::move(translated);
    return utils::string::detail::utf8ToUtf16(text);
}

void setTranslator(Translator newTranslator) { translator() = std::move(newTranslator); }

std::u16string fill(std::u16string_view format,
                    std::initializer_list<std::u16string_view> arguments) {
    std::u16string filled;
    std::size_t size = format.size();
    for (const auto argument : arguments)
        size += argument.size();
    filled.reserve(size);
    for (const auto argument : arguments) {
        const auto placeholder = format.find(u"{}");
        if (placeholder == std::u16string_view::npos)
            break;
        filled.append(format.substr(0, placeholder)).append(argument);
        format.remove_prefix(placeholder + 2);
    }
    filled.append(format);
    return filled;
}

} // namespace corvane::workbench::i18n
