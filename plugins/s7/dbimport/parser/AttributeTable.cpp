#include "dbimport/parser/AttributeTable.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/Messages.hpp"

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver {

void AttributeTable::Entry::setValue(std::string_view value) {
    isFalse = equalsFolded(value, "'false'") || equalsFolded(value, "false");
}

AttributeTable::Entry* AttributeTable::find(std::string_view name) {
    const auto entry = std::ranges::find_if(
        entries_, [&](const Entry& candidate) { return equalsFolded(name, candidate.name); });
    return entry == entries_.end() ? nullptr : &*entry;
}

bool AttributeTable::isFalse(std::string_view name) const {
    const auto entry = std::ranges::find(entries_, name, &Entry::name);
    return entry != entries_.end() && entry->isFalse;
}

AttributeTable variableAttributes() {
    return AttributeTable{kAccessibleAttribute, kWritableAttribute};
}

ExternalAccess accessOf(const AttributeTable& variableAttributes) {
    return {!variableAttributes.isFalse(kAccessibleAttribute),
            !variableAttributes.isFalse(kWritableAttribute)};
}

bool endsAttributeBlock(char separator) {
    if (separator != '}' && separator != ';')
        fail(Message::attributeNotClosed);
    return separator == '}';
}

} // namespace corvane::workbench::plugins::s7Driver
