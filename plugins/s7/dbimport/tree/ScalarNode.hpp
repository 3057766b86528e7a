#pragma once

#include "dbimport/facts/TypeTable.hpp"
#include "dbimport/tree/DataBlockNode.hpp"
#include "dbimport/tree/MemoryPosition.hpp"

#include <corvane/workbench/model/ElementReference.hpp>

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

class ImportContext;

/// A name that a document shows as it is (`utils::json::encoder::isPlain`), in memory where sixteen
/// bytes can be read whatever its size (`TreeMemory`): so that it is quickly copied.
struct PlainName {
    std::string_view text;
};

/// A variable of a type that is not made of others; a leaf of the tree.
class ScalarNode final : public DataBlockNode {
public:
    /// The types that take their memory and become no item.
    static constexpr TypeSet skippedTypes = typesWithoutItem();

    /// Throws std::runtime_error when a type that is no text has an element count. The context must
    /// outlive the node.
    ScalarNode(std::string_view name, ExternalAccess access, const TypeFacts& type,
               std::optional<std::uint64_t> elementCount, const ImportContext& importContext);

    ScalarNode(PlainName name, ExternalAccess access, const TypeFacts& type,
               std::optional<std::uint64_t> elementCount, const ImportContext& importContext);

    /// Throws std::runtime_error as well when `typeKeyword` (lower case) names no type.
    ScalarNode(std::string_view name, ExternalAccess access, std::string_view typeKeyword,
               std::optional<std::uint64_t> elementCount, const ImportContext& importContext);

    [[nodiscard]] S7DataType type() const { return facts_->type; }
    [[nodiscard]] const TypeFacts& typeFacts() const { return *facts_; }

    /// The declared length of a text, in characters; empty where none is declared.
    [[nodiscard]] std::optional<std::uint64_t> elementCount() const {
        return hasElementCount_ ? std::optional(textLength_) : std::nullopt;
    }

    /// The length of a text, in characters, declared or not.
    [[nodiscard]] std::uint64_t textLength() const { return textLength_; }

    /// Throws std::runtime_error; the child is destroyed.
    void addChild(NodeOwner<DataBlockNode> child) override;

    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;

private:
    ScalarNode(std::string_view name, bool plainName, ExternalAccess access, const TypeFacts& type,
               std::optional<std::uint64_t> elementCount, const ImportContext& importContext);

    [[nodiscard]] bool copyItem(utils::json::encoder::Array& targetArray,
                                const RelativeAddress& address, ElementPath& path,
                                const model::ImportReference& command) const;

    // Apart from the length that it tells of: so the two take no more room than one number.
    bool hasElementCount_;
    bool plainName_; // it was given as a PlainName
    const TypeFacts* facts_;
    std::uint64_t textLength_;
    const ImportContext* importContext_;
};

/// Lays out one variable: takes its memory as `placeScalar` does, and returns where it lies.
[[nodiscard]] RelativeAddress scalarAddress(const ScalarNode& node, MemoryPosition& position);

} // namespace corvane::workbench::plugins::s7Driver
