#pragma once

#include "workbench/core/memory/MemorySpace.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane::workbench::core {

/// Something suspicious that is no error: two elements that share bits of one memory, or two blocks
/// that are one memory.
struct MemoryWarning {
    model::Element* element; // of the two, the one that comes second
    model::Element* other;
    std::uint64_t begin; // the bits that both hold; of blocks begin and end are 0
    std::uint64_t end;

    friend bool operator==(const MemoryWarning&, const MemoryWarning&) = default;
};

/// What a user reads of a warning, beside the element's path: translated, it names the other one.
/// Put together at each call.
[[nodiscard]] std::u16string messageOf(const MemoryWarning& warning);

/// Finds what lies twice in the memories of a project: blocks that are the same memory of one
/// device, and elements that share bits of one memory. Each element that overlaps others is told
/// once, with the one before it that reaches farthest: as many warnings as elements at the most.
///
///     for each element of the project, parents first:  search.add(element)
///     until search.lookOnce() says false               -> search.takeWarnings()
///
/// Both steps are small, so that the work can rest between any two of them; the project must not
/// change meanwhile.
class MemoryWarningSearch {
public:
    void add(model::Element& element);

    /// Looks through one memory; false when none is left.
    bool lookOnce();

    /// What was found so far: blocks that are the same, then overlaps, memory by memory.
    [[nodiscard]] std::vector<MemoryWarning> takeWarnings() { return std::move(warnings_); }

private:
    struct Group {
        MemorySpace space;
        std::vector<MemoryPiece> pieces;
    };
    struct Key {
        const model::Element* owner;
        std::string name; // of an area, or a block's designation
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    void addBlock(model::Element& block, const std::string& designation);
    Group& groupOf(const PlacedPiece& place);

    MemoryPlaces places_;
    std::vector<Group> groups_;
    std::unordered_map<Key, std::size_t, KeyHash> groupsByKey_;
    std::unordered_map<Key, model::Element*, KeyHash> firstBlocks_;
    std::size_t latest_ = 0; // the group of the latest piece
    std::size_t looked_ = 0; // how many groups were looked through
    std::vector<MemoryWarning> warnings_;
};

/// All of them for the elements and those below them.
[[nodiscard]] std::vector<MemoryWarning> memoryWarnings(ElementList elements);

} // namespace corvane::workbench::core
