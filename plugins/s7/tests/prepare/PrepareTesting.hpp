#pragma once

#include "../dbimport/ImportTesting.hpp"
#include "prepare/Prepare.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the tests of the preparation share.
namespace corvane::workbench::plugins::s7Driver::prepare::testing {

using Files = std::vector<ui::SourceFile>;

/// A single file.
inline Files one(std::string text) { return {{.name = "a.db", .bytes = std::move(text)}}; }

/// Each thing that was left out, as FILE:LINE:COLUMN: NAME: REASON; HELP.
inline std::vector<std::string> leftOutOf(const Files& files, const ui::PreparedSource& prepared) {
    using utils::string::detail::utf16ToUtf8;
    std::vector<std::string> lines;
    lines.reserve(prepared.leftOut.size());
    for (const ui::LeftOutSource& one : prepared.leftOut)
        lines.push_back(files[one.file].name + ":" + std::to_string(one.line.value_or(0)) + ":" +
                        std::to_string(one.column.value_or(0)) + ": " + one.name + ": " +
                        utf16ToUtf8(one.reason) + "; " + utf16ToUtf8(one.help));
    return lines;
}

/// The value of the first member `key` of an element document at the front of `text`.
inline std::string memberOf(std::string_view text, std::string_view key) {
    const std::string begin = "\"" + std::string(key) + "\":\"";
    const std::size_t at = text.find(begin) + begin.size();
    return std::string(text.substr(at, text.find('"', at) - at));
}

/// The items of an import document in its order, each as NAME TYPE ADDRESS, and the structures
/// around them as NAME {.
inline std::vector<std::string> itemsOf(std::string_view document) {
    constexpr std::string_view kElement = R"({"@Skill.S7.)";
    std::vector<std::string> items;
    for (std::size_t at = document.find(kElement); at != std::string_view::npos;
         at = document.find(kElement, at + 1)) {
        const std::string_view element = document.substr(at);
        const std::string name = memberOf(element, "name");
        const std::string_view kind = element.substr(kElement.size());
        if (kind.starts_with("Item"))
            items.push_back(name + " " + memberOf(element, "dataType") + " " +
                            memberOf(element, "address"));
        else if (!kind.starts_with("Command"))
            items.push_back(name + " {");
    }
    return items;
}

/// What an import makes of the text.
inline std::vector<std::string> importedItems(std::string_view text) {
    return itemsOf(s7Driver::testing::import(text).text);
}

/// A source with one data block, called Data, that has standard access.
inline std::string blockWith(std::string_view parts) {
    return std::string("DATA_BLOCK \"Data\"\n{ S7_Optimized_Access := 'FALSE' }\n").append(parts) +
           "\nBEGIN\nEND_DATA_BLOCK\n";
}

inline std::string blockOf(std::string_view members) {
    return blockWith(std::string("STRUCT\n").append(members) + "\nEND_STRUCT;");
}

inline std::string typeOf(std::string_view name, std::string_view members) {
    return std::string("TYPE ").append(name).append("\nVERSION : 0.1\nSTRUCT\n").append(members) +
           "\nEND_STRUCT;\nEND_TYPE\n";
}

} // namespace corvane::workbench::plugins::s7Driver::prepare::testing
