#pragma once

#include "dbimport/facts/ImportLimits.hpp"

#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

class DataBlockNode;
class DbFileParser;
class ImportContext;
class StructNode;
class ForeignNames;
class TreeMemory;
struct ExternalAccess;
struct VariableDeclaration;

/// Builds the tree of a data block out of what the parser reads.
class NodeFactory {
public:
    /// All of them must outlive the factory, context and memory the nodes, too. Names that are not
    /// UTF-8 are noted in `foreignNames`.
    NodeFactory(DbFileParser& parser, const ImportContext& context, const ImportLimits& limits,
                TreeMemory& memory, ForeignNames& foreignNames);

    /// Reads the members of a structure into `node`, up to its end. The body of the data block is
    /// the top level.
    void readStructure(StructNode& node, bool isTopLevel);

    /// Makes the node of a declared variable and adds it to `parent`. Of a struct the members are
    /// read, of an array the element type. The declaration is used up.
    void createNode(VariableDeclaration& declaration, DataBlockNode& parent);

private:
    void readPlainDeclarations(StructNode& node);
    void createStruct(std::string_view name, ExternalAccess access, DataBlockNode& parent);
    void createArray(VariableDeclaration& declaration, std::string_view name, ExternalAccess access,
                     DataBlockNode& parent);
    void createScalar(const VariableDeclaration& declaration, std::string_view name,
                      ExternalAccess access, DataBlockNode& parent);

    DbFileParser* parser_;
    const ImportContext* context_;
    TreeMemory* memory_;
    ForeignNames* foreignNames_;
    unsigned maximumLevels_;
    unsigned level_ = 0; // of structs around the declaration that is read
};

} // namespace corvane::workbench::plugins::s7Driver
