#pragma once

#include "dbimport/reader/WordScan.hpp"
#include "dbimport/tree/DataBlockNode.hpp"

#include <corvane/utils/memory/Arena.hpp>
#include <corvane/utils/string/CopyText.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

/// The memory of the declaration trees of one file: nodes and their names, one behind the other in
/// the order of the file, given back all at once. Trees are large, made of small pieces, walked
/// once and then dropped together.
class TreeMemory {
public:
    /// A node, to be owned like any other; its bytes come free with this object, which must outlive
    /// it.
    template <class Node, class... Arguments>
    [[nodiscard]] NodeOwner<Node> make(Arguments&&... arguments) {
        static_assert(alignof(Node) <= utils::memory::Arena::kAlignment);
        void* const place = arena_.allocate(sizeof(Node));
        return NodeOwner<Node>(new (place) Node(std::forward<Arguments>(arguments)...));
    }

    /// A copy of the text. A block (`scan::kBlockSize`) can be read there, whatever its size.
    [[nodiscard]] std::string_view keep(std::string_view text) {
        char* const copy = place(text.size());
        return {copy, utils::string::copyText(copy, text)};
    }

    /// As `keep`, for a text where a block can be read, too.
    [[nodiscard]] std::string_view keepShort(std::string_view text) {
        char* const copy = place(text.size());
        return {copy, scan::copyShort(copy, text)};
    }

private:
    char* place(std::size_t size) {
        return static_cast<char*>(arena_.allocate(std::max(size, scan::kBlockSize)));
    }

    utils::memory::Arena arena_;
};

} // namespace corvane::workbench::plugins::s7Driver
