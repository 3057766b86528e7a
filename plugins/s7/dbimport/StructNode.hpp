#pragma once

#include "dbimport/DataBlockNode.hpp"

namespace corvane::workbench::plugins::s7Driver {

/// A struct with its members, or the body of a data block.
class StructNode final : public DataBlockNode {
public:
    /// A transparent struct, the body of a data block, is no element of its own: its members are
    /// written in its place.
    StructNode(std::string_view name, ExternalAccess access, bool transparent);

    [[nodiscard]] bool transparent() const { return transparent_; }

    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;

private:
    void writeMembers(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                      ElementPath& path);

    bool transparent_;
};

} // namespace corvane::workbench::plugins::s7Driver
