#include "dbimport/AttributeTable.hpp"

#include "dbimport/FoldCase.hpp"
#include "dbimport/Messages.hpp"

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver {

AttributeTable::AttributeTable(std::initializer_list<std::string_view> names) {
    std::ranges::transform(names, entries_.begin(),
                           [](std::string_view name) { return Entry{name, std::nullopt}; });
}

std::optional<std::string>* AttributeTable::find(std::string_view name) {
    const auto entry = std::ranges::find_if(
        entries_, [&](const Entry& candidate) { return equalsFolded(name, candidate.name); });
    return entry == entries_.end() ? nullptr : &entry->value;
}

bool AttributeTable::isFalse(std::string_view name) {
    const std::optional<std::string>* const value = find(name);
    return value != nullptr && (*value == "false" || *value == "'false'");
}

bool endsAttributeBlock(char separator) {
    if (separator != '}' && separator != ';')
        fail(Message::attributeNotClosed);
    return separator == '}';
}

} // namespace corvane::workbench::plugins::s7Driver
