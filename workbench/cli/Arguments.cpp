#include "workbench/cli/Arguments.hpp"

namespace corvane::workbench::cli {

namespace {

// No text that begins so means anything to the library, nor does it in an option's place.
constexpr char kShield = '=';

std::string shield(std::string_view text) { return kShield + std::string(text); }

bool isOption(std::string_view word) { return word.size() > 1 && word.front() == '-'; }

} // namespace

std::vector<std::string>
shielded(std::span<const char* const> words,
         function_ref<bool(std::string_view verb, std::string_view option)> takesValue) {
    std::vector<std::string> result;
    std::string_view verb;
    bool textsOnly = false;
    bool valueNext = false;
    for (const std::string_view word : words) {
        if (valueNext || textsOnly) {
            result.push_back(shield(word));
            valueNext = false;
        } else if (word == "--") {
            textsOnly = !verb.empty();
        } else if (isOption(word)) {
            const auto equals = word.find('=');
            const auto name = word.substr(0, equals);
            const bool hasValue = takesValue(verb, name);
            result.emplace_back(hasValue ? name : word);
            valueNext = hasValue && equals == std::string_view::npos;
            if (hasValue && !valueNext)
                result.push_back(shield(word.substr(equals + 1)));
        } else if (verb.empty()) {
            verb = word;
            result.emplace_back(word);
        } else {
            result.push_back(shield(word));
        }
    }
    return result;
}

std::string asGiven(std::string_view word) {
    if (word.starts_with(kShield))
        word.remove_prefix(1);
    return std::string(word);
}

} // namespace corvane::workbench::cli
