#include "dbimport/TypeTable.hpp"

#include "dbimport/Messages.hpp"
#include "elements/DataTypes.hpp"

#include <algorithm>

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

constexpr std::size_t kSlots = 128;
constexpr std::uint8_t kNoKeyword = 0xFF;
using Slots = std::array<std::uint8_t, kSlots>;

/// Tells the keywords apart by their length and three of their letters.
constexpr std::size_t slotOf(std::string_view keyword, std::uint64_t seed) {
    constexpr unsigned kShift = 64 - 7;
    const auto letter = [&](std::size_t index) {
        return std::uint64_t{static_cast<unsigned char>(keyword[index])};
    };
    const std::uint64_t mark =
        keyword.size() | letter(0) << 8 | letter(1) << 16 | letter(keyword.size() - 1) << 24;
    return static_cast<std::size_t>((mark * seed) >> kShift);
}

struct Lookup {
    std::uint64_t seed = 0x9E3779B97F4A7C15;
    Slots slots{};

    constexpr bool fill() {
        slots.fill(kNoKeyword);
        for (std::size_t row = 0; row < kTypeKeywords.size(); ++row) {
            std::uint8_t& slot = slots[slotOf(kTypeKeywords[row].keyword, seed)];
            if (slot != kNoKeyword)
                return false;
            slot = static_cast<std::uint8_t>(row);
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

} // namespace

const TypeFacts* findType(std::string_view keyword) {
    constexpr std::size_t kShortest = 2;
    if (keyword.size() < kShortest)
        return nullptr;
    const std::uint8_t row = kLookup.slots[slotOf(keyword, kLookup.seed)];
    if (row == kNoKeyword || kTypeKeywords[row].keyword != keyword)
        return nullptr;
    return &kTypes[static_cast<std::size_t>(kTypeKeywords[row].type) - 1];
}

std::string_view typeName(S7DataType type) {
    const auto code = static_cast<std::size_t>(type);
    if (code == 0)
        fail(Message::uninitializedType);
    if (code > kTypes.size())
        fail(Message::unnamedType);
    return kTypes[code - 1].name;
}

} // namespace corvane::workbench::plugins::s7Driver
