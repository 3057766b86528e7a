#include "workbench/core/import/MemberChanges.hpp"

#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/json/Encoder.hpp>

#include <algorithm>
#include <utility>

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;
namespace encoder = utils::json::encoder;

struct Member {
    std::string name;
    std::string_view value; // JSON
};

/// Where the string ends that begins with the quote at `begin`.
std::size_t stringEnd(std::string_view json, std::size_t begin) {
    auto end = begin + 1;
    while (json[end] != '"')
        end += json[end] == '\\' ? 2 : 1;
    return end + 1;
}

/// Where the value that begins at `begin` ends, in a text without blanks.
std::size_t valueEnd(std::string_view json, std::size_t begin) {
    unsigned depth = 0;
    for (auto i = begin;;) {
        const char c = json[i];
        if (depth == 0 && (c == ',' || c == '}' || c == ']'))
            return i;
        if (c == '{' || c == '[')
            ++depth;
        else if (c == '}' || c == ']')
            --depth;
        i = c == '"' ? stringEnd(json, i) : i + 1;
    }
}

/// The members of a compact object, in its order. The decoder reads the names, and knows nothing of
/// a value's text: that is cut out here.
std::vector<Member> membersOf(std::string_view json) {
    std::vector<Member> members;
    const decoder::Document document{std::string(json)};
    auto object = document.root().asObject();
    for (std::size_t begin = 1; const auto member = object.next();) {
        const auto value = stringEnd(json, begin) + 1; // behind the colon
        const auto end = valueEnd(json, value);
        members.push_back({std::string(member->name.view()), json.substr(value, end - value)});
        begin = end + 1; // behind the comma
    }
    return members;
}

} // namespace

std::vector<MemberChange> ElementComparison::changes(const skill::Element& before,
                                                     const skill::Element& after) {
    auto old = membersOf(write(before, first_));
    std::vector<MemberChange> changes;
    for (auto& [name, value] : membersOf(write(after, second_))) {
        const auto found = std::ranges::find(old, name, &Member::name);
        if (found == old.end()) {
            changes.push_back({std::move(name), std::nullopt, std::string(value)});
            continue;
        }
        if (found->value != value)
            changes.push_back({std::move(name), std::string(found->value), std::string(value)});
        old.erase(found);
    }
    for (auto& [name, value] : old)
        changes.push_back({std::move(name), std::string(value), std::nullopt});
    return changes;
}

std::string_view ElementComparison::write(const skill::Element& element, Text& text) {
    text.clear();
    {
        encoder::Document document(text, encoder::Format::compact);
        auto members = document.object();
        element.save(members);
    }
    return text.view();
}

} // namespace corvane::workbench::core
