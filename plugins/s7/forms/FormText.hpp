#pragma once

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/ui/Control.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>

#include <string_view>

/// What the bindings of all elements share.
namespace corvane::workbench::plugins::s7Driver {

/// The texts of a control of T's form, translated.
template <class T>
[[nodiscard]] ui::Texts translatedTexts(std::string_view label, std::string_view description,
                                        std::string_view help) {
    const auto translate = [](std::string_view text) {
        return text.empty() ? std::u16string() : i18n::translate(T::kTextContext, text);
    };
    return {translate(label), translate(description), translate(help)};
}

/// Reads and writes a number or a flag of the element that a binding's pointer leads to; writing
/// publishes a changed value once.
template <class T, class Field>
[[nodiscard]] ui::Accessor<Field> fieldAccessor(T* const& element, Field T::* field) {
    return {[&element, field] { return element->*field; },
            [&element, field](Field value) { element->assign(element->*field, std::move(value)); }};
}

/// As `fieldAccessor`, for a field that keeps UTF-8.
template <class T>
[[nodiscard]] ui::Accessor<std::u16string> textAccessor(T* const& element, std::string T::* field) {
    using namespace utils::string::detail;
    return {[&element, field] { return utf8ToUtf16(element->*field); },
            [&element, field](const std::u16string& value) {
                element->assign(element->*field, utf16ToUtf8(value));
            }};
}

/// The property behind a field.
template <class T, class Field>
[[nodiscard]] bindings::PropertyHandle fieldHandle(T& element, Field T::* field) {
    return element.propertyHandle(bindings::PropertyId(element.*field));
}

/// The look of every spin box of the plug-in.
inline constexpr ui::SpinBoxControl::Settings kSpinBoxSettings{.preferredWidth = 200,
                                                               .minimumDigits = 1};

} // namespace corvane::workbench::plugins::s7Driver
