#include <corvane/workbench/i18n/Translate.hpp>

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <array>

namespace corvane::workbench::i18n {

namespace {

Translator& translator() {
    static Translator installed;
    return installed;
}

void append(std::u16string& target, std::u16string_view text) { target.append(text); }

void append(std::u16string& target, std::string_view utf8) {
    if (!utf8.empty())
        utils::string::detail::appendUtf16(target, utf8);
}

/// Appends the format with its placeholders replaced; either may be UTF-16 or UTF-8.
template <class Format, class Argument>
void append(std::u16string& target, Format format, std::initializer_list<Argument> arguments) {
    using Char = typename Format::value_type;
    constexpr std::array<Char, 2> kPlaceholder{'{', '}'};
    // Just enough where each argument has its placeholder.
    std::size_t size = format.size() - std::min(format.size(), 2 * arguments.size());
    for (const auto argument : arguments)
        size += argument.size();
    target.reserve(size);
    for (const auto argument : arguments) {
        const auto placeholder = std::ranges::search(format, kPlaceholder);
        if (placeholder.empty())
            break;
        append(target, Format(format.begin(), placeholder.begin()));
        append(target, argument);
        format = Format(placeholder.end(), format.end());
    }
    append(target, format);
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
    append(filled, format, arguments);
    return filled;
}

void fillTranslated(std::u16string& target, std::string_view context, std::string_view text,
                    std::initializer_list<std::string_view> arguments) {
    target.clear();
    if (translator())
        append(target, std::u16string_view(translate(context, text)), arguments);
    else
        append(target, text, arguments);
}

std::string translateToUtf8(std::string_view context, std::string_view text,
                            std::initializer_list<std::string_view> arguments) {
    std::u16string filled;
    fillTranslated(filled, context, text, arguments);
    return utils::string::detail::utf16ToUtf8(filled);
}

} // namespace corvane::workbench::i18n
