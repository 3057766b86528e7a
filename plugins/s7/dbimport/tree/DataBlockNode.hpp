#pragma once

#include "dbimport/facts/VariableDeclaration.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class ElementPath;
struct MemoryPosition;

class DataBlockNode;

/// Ends a node's life; its bytes belong to the memory of its tree.
struct EndNode {
    void operator()(DataBlockNode* node) const;
};

template <class Node>
using NodeOwner = std::unique_ptr<Node, EndNode>;

/// A node of the tree that a data block declares. It owns its children, in the order of the file.
/// Names are views, which must outlive the node (see `TreeMemory`).
///
/// The tree lays itself out in the memory of a data block with standard access while it writes its
/// elements into the import document: one walk, from which all addresses follow.
class DataBlockNode {
public:
    using Children = std::vector<NodeOwner<DataBlockNode>>;

    DataBlockNode(const DataBlockNode&) = delete;
    DataBlockNode& operator=(const DataBlockNode&) = delete;
    virtual ~DataBlockNode() = default;

    /// Appends a child.
    virtual void addChild(NodeOwner<DataBlockNode> child) = 0;

    /// Writes this node's elements into `targetArray` and moves `position` behind the memory that
    /// they take. The path is the same after the call as before, without its index suffix.
    ///
    /// A variable that is not externally accessible takes no memory here: what follows is placed as
    /// if it were absent. Addresses of existing projects depend on that, so it stays.
    ///
    /// Throws std::runtime_error with a message of the importer.
    virtual void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                               ElementPath& path) = 0;

    /// About how many bytes `writeElements` will write, rather more than less, when an index of
    /// `indexSize` characters lies on the node. Not an integer, since a file can ask for anything.
    [[nodiscard]] virtual double documentSize(std::size_t indexSize) const = 0;

    [[nodiscard]] std::string name() const { return std::string(name_); }
    [[nodiscard]] virtual const Children& children() const;
    [[nodiscard]] ExternalAccess access() const { return access_; }

protected:
    DataBlockNode(std::string_view name, ExternalAccess access) : name_(name), access_(access) {}

    /// The name without a copy.
    [[nodiscard]] std::string_view nameView() const { return name_; }

private:
    std::string_view name_;
    ExternalAccess access_;
};

/// A node that has children.
class ParentNode : public DataBlockNode {
public:
    void addChild(NodeOwner<DataBlockNode> child) override {
        children_.push_back(std::move(child));
    }
    [[nodiscard]] const Children& children() const final { return children_; }

protected:
    using DataBlockNode::DataBlockNode;

    void writeChildren(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path);

private:
    Children children_;
};

inline void EndNode::operator()(DataBlockNode* node) const { std::destroy_at(node); }

} // namespace corvane::workbench::plugins::s7Driver
