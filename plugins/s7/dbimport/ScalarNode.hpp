#pragma once

#include "dbimport/DataBlockNode.hpp"
#include "dbimport/TypeTable.hpp"

#include <corvane/workbench/model/ElementReference.hpp>

#include <array>
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

    /// A type that becomes no item (S5Time, Date_And_Time, DTL) takes its memory and writes
    /// nothing.
    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;

private:
    ScalarNode(std::string_view name, bool plainName, ExternalAccess access, const TypeFacts& type,
               std::optional<std::uint64_t> elementCount, const ImportContext& importContext);

    [[nodiscard]] bool copyItem(utils::json::encoder::Array& targetArray,
                                const MemoryPosition& place, ElementPath& path,
                                const model::ImportReference& command) const;
    void encodeItem(utils::json::encoder::Array& targetArray, const MemoryPosition& place,
                    ElementPath& path, const model::ImportReference& command) const;

    // The length and whether it is declared, apart: so they take no more
    // room than one of them.
    bool hasElementCount_;
    bool plainName_; // it was given as a PlainName
    const TypeFacts* facts_;
    std::uint64_t textLength_;
    const ImportContext* importContext_;
};

/// The text of an address, kept in place.
class AddressText {
public:
    AddressText(const MemoryPosition& place, Alignment alignment);
    AddressText(const AddressText&) = delete;
    AddressText& operator=(const AddressText&) = delete;

    /// Valid as long as this object lives.
    [[nodiscard]] std::string_view view() const { return {text_.data(), end_}; }

private:
    std::array<char, 32> text_;
    char* end_;
};

/// Takes the memory of one variable of the type at `position`: aligns the position, moves it behind
/// the variable and returns where that begins. `textLength` counts for texts only, in characters.
/// Throws std::runtime_error for a type without a size.
MemoryPosition placeScalar(const TypeFacts& facts, std::uint64_t textLength,
                           MemoryPosition& position);

/// As `placeScalar`, giving the address relative to the data block: DB12, or DB0.3 for a Bool. No
/// width letter stands in it, since the width follows from the data type.
[[nodiscard]] AddressText scalarAddress(const ScalarNode& node, MemoryPosition& position);

} // namespace corvane::workbench::plugins::s7Driver
