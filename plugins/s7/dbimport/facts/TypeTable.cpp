#include "dbimport/facts/TypeTable.hpp"

#include "elements/DataTypes.hpp"

#include <algorithm>
#include <bit>

namespace corvane::workbench::plugins::s7Driver {

namespace {

constexpr bool rowsStandAtTheirCodes() {
    for (std::size_t row = 0; row < kTypes.size(); ++row)
        if (static_cast<std::size_t>(kTypes[row].type) != row + 1)
            return false;
    return true;
}
static_assert(rowsStandAtTheirCodes(), "rows are found by code");

constexpr bool itemsKnow(std::string_view name) {
    return std::ranges::any_of(kDataTypes, [&](const DataType& type) { return type.name == name; });
}

constexpr bool itemsKnowWhatBecomesAnItem() {
    return std::ranges::all_of(
        kTypes, [](const TypeFacts& facts) { return facts.producesItem == itemsKnow(facts.name); });
}
static_assert(itemsKnowWhatBecomesAnItem(), "the types of items are named as items name them");

constexpr KeywordBlock blockOf(std::string_view keyword) {
    KeywordBlock block{};
    std::ranges::copy(keyword.substr(0, block.size()), block.begin());
    return block;
}

constexpr std::size_t slotOf(const KeywordBlock& keyword, std::uint64_t seed) {
    constexpr unsigned kShift = 64 - 7;
    const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(keyword);
    return static_cast<std::size_t>(((halves[0] ^ halves[1]) * seed) >> kShift);
}

struct Slot {
    KeywordBlock keyword{};
    std::size_t size = 0; // no keyword has
    const TypeFacts* facts = nullptr;
};

struct Lookup {
    std::uint64_t seed = 0x9E3779B97F4A7C15;
    std::array<Slot, 128> slots{};

    constexpr bool fill() {
        slots.fill(Slot());
        for (const TypeKeyword& row : kTypeKeywords) {
            Slot& slot = slots[slotOf(blockOf(row.keyword), seed)];
            if (slot.size != 0)
                return false;
            slot = {blockOf(row.keyword), row.keyword.size(),
                    &kTypes[static_cast<std::size_t>(row.type) - 1]};
        }
        return true;
    }
};

/// Tries seeds until each keyword has a slot of its own, so that a look-up is one comparison.
consteval Lookup makeLookup() {
    Lookup lookup;
    while (!lookup.fill())
        lookup.seed = lookup.seed * 6364136223846793005U + 1442695040888963407U;
    return lookup;
}

constexpr Lookup kLookup = makeLookup();

static_assert(std::ranges::all_of(kTypeKeywords, [](const TypeKeyword& row) {
    return row.keyword.size() <= KeywordBlock().size();
}));

} // namespace

const TypeFacts* findType(std::string_view keyword) {
    return findType(blockOf(keyword), keyword.size());
}

const TypeFacts* findType(const KeywordBlock& keyword, std::size_t size) {
    const Slot& slot = kLookup.slots[slotOf(keyword, kLookup.seed)];
    return slot.keyword == keyword && slot.size == size ? slot.facts : nullptr;
}

} // namespace corvane::workbench::plugins::s7Driver
