#pragma once

#include "dbimport/facts/ImportLimits.hpp"
#include "dbimport/tree/RootNode.hpp"
#include "dbimport/tree/TreeMemory.hpp"

#include <corvane/utils/io/InputStream.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class ImportContext;
struct ImportFindings;

/// Owns the tree of one data block, together with a share in the memory that it stands in.
class DeclarationTree {
public:
    DeclarationTree(std::nullptr_t) {}
    DeclarationTree(std::shared_ptr<TreeMemory> memory, NodeOwner<RootNode> root)
        : memory_(std::move(memory)), root_(std::move(root)) {}
    DeclarationTree(DeclarationTree&&) = default;
    /// Ends the tree that was there before its memory goes.
    DeclarationTree& operator=(DeclarationTree&& other) noexcept {
        root_ = std::move(other.root_);
        memory_ = std::move(other.memory_);
        return *this;
    }
    ~DeclarationTree() = default;

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

/// A data block of the file.
struct DataBlockRecord {
    std::string name;
    std::optional<std::uint16_t> dbNumber; ///< empty until it is known
    DeclarationTree root;
    std::uint64_t place = 0; ///< where its name begins in the file, in bytes from 0
};

/// Reads a .db file: its data blocks in the order of the file, without those that have no body. A
/// block that the PLC has already brings its number along. The trees keep pointing at the context.
/// Blocks without a body, and names that are not UTF-8, are noted in `findings`.
///
/// Throws std::runtime_error with a message of the importer, the standard conversion errors, or
/// what the stream throws.
[[nodiscard]] std::vector<DataBlockRecord> readDataBlocks(utils::io::InputStream& stream,
                                                          const ImportContext& context,
                                                          const ImportLimits& limits,
                                                          ImportFindings& findings);

} // namespace corvane::workbench::plugins::s7Driver
