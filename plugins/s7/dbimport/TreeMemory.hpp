#pragma once

#include "dbimport/DataBlockNode.hpp"

#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

/// The memory of the declaration trees of one file: nodes and their names, one behind the other in
/// the order of the file, given back all at once. Trees are large, made of small pieces, walked
/// once and then dropped together.
class TreeMemory {
public:
    TreeMemory() = default;
    TreeMemory(const TreeMemory&) = delete;
    TreeMemory& operator=(const TreeMemory&) = delete;

    /// A node, to be owned like any other; its bytes come free with this object, which must outlive
    /// it.
    template <class Node, class... Arguments>
    [[nodiscard]] NodeOwner<Node> make(Arguments&&... arguments) {
        void* const place = memory_.allocate(sizeof(Node), alignof(Node));
        return NodeOwner<Node>(new (place) Node(std::forward<Arguments>(arguments)...));
    }

    /// A copy of the text.
    [[nodiscard]] std::string_view keep(std::string_view text);

private:
    static constexpr std::size_t kFirstBlock = std::size_t{16} * 1024; // all of a small file's

    /// The usual memory, on large pages where blocks are large: they are filled from front to back.
    class Blocks final : public std::pmr::memory_resource {
        void* do_allocate(std::size_t size, std::size_t alignment) override;
        void do_deallocate(void* block, std::size_t size, std::size_t alignment) override;
        [[nodiscard]] bool do_is_equal(const memory_resource& other) const noexcept override {
            return this == &other;
        }
    };

    Blocks blocks_;
    std::pmr::monotonic_buffer_resource memory_{kFirstBlock, &blocks_};
};

} // namespace corvane::workbench::plugins::s7Driver
