#include "address/DataBlockPrefix.hpp"

#include <corvane/utils/string/Ascii.hpp>

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver {

namespace {

template <class Character>
bool startsWithMarker(std::basic_string_view<Character> text) {
    return text.size() >= kDataBlockMarker.size() &&
           std::equal(kDataBlockMarker.begin(), kDataBlockMarker.end(), text.begin(),
                      [](char marker, Character character) {
                          return static_cast<Character>(marker) == character;
                      });
}

template <class Character>
std::size_t digitsEnd(std::basic_string_view<Character> text, std::size_t from) {
    while (from < text.size() && utils::string::ascii::isDigit(text[from]))
        ++from;
    return from;
}

template <class Character>
std::size_t numberEnd(std::basic_string_view<Character> text) {
    if (!startsWithMarker(text))
        return text.size();
    const std::size_t end = digitsEnd(text, kDataBlockMarker.size());
    const bool found = end > kDataBlockMarker.size() && end < text.size() && text[end] == '.';
    return found ? end : text.size();
}

template <class Character>
std::basic_string_view<Character> strip(std::basic_string_view<Character> text) {
    const std::size_t dot = numberEnd(text);
    if (dot == text.size())
        return text;
    const std::basic_string_view<Character> rest = text.substr(dot + 1);
    const bool whole =
        startsWithMarker(rest) && digitsEnd(rest, kDataBlockMarker.size()) == rest.size();
    return whole ? rest : text;
}

} // namespace

std::size_t dataBlockNumberEnd(std::string_view text) { return numberEnd(text); }

std::string_view stripDataBlockPrefix(std::string_view text) { return strip(text); }

std::u16string_view stripDataBlockPrefix(std::u16string_view text) { return strip(text); }

} // namespace corvane::workbench::plugins::s7Driver
