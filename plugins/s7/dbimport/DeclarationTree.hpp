#pragma once

#include "dbimport/RootNode.hpp"
#include "dbimport/TreeMemory.hpp"

#include <cstddef>
#include <memory>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

/// Owns the tree of one data block, together with a share in the memory that it stands in.
class DeclarationTree {
public:
    DeclarationTree(std::nullptr_t) {}
    DeclarationTree(std::shared_ptr<TreeMemory> memory, NodeOwner<RootNode> root)
        : memory_(std::move(memory)), root_(std::move(root)) {}

    [[nodiscard]] RootNode& operator*() const { return *root_; }
    [[nodiscard]] RootNode* operator->() const { return root_.get(); }

    /// Ends the tree, and with the last tree of the file their memory.
    void reset() {
        root_.reset();
        memory_.reset();
    }

private:
    std::shared_ptr<TreeMemory> memory_; // must outlive what stands in it
    NodeOwner<RootNode> root_;
};

} // namespace corvane::workbench::plugins::s7Driver
