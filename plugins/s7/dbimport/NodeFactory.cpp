#include "dbimport/NodeFactory.hpp"

#include "dbimport/ArrayNode.hpp"
#include "dbimport/DbFileParser.hpp"
#include "dbimport/DocumentText.hpp"
#include "dbimport/Keywords.hpp"
#include "dbimport/Messages.hpp"
#include "dbimport/ScalarNode.hpp"
#include "dbimport/StructNode.hpp"
#include "dbimport/VariableDeclaration.hpp"

#include <memory>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

NodeFactory::NodeFactory(DbFileParser& parser, const ImportContext& context,
                         const ImportLimits& limits)
    : parser_(&parser), context_(&context), maximumLevels_(limits.structLevels) {}

void NodeFactory::readStructure(StructNode& node, bool isTopLevel) {
    VariableDeclaration declaration;
    while (parser_->parseDeclaration(declaration, isTopLevel))
        createNode(declaration, node);
}

void NodeFactory::createNode(VariableDeclaration& declaration, DataBlockNode& parent) {
    makeDocumentText(declaration.name);
    const ExternalAccess access = declaration.access.within(parent.access());
    if (std::holds_alternative<ArrayShape>(declaration.shape))
        createArray(declaration, access, parent);
    else if (keywordOf(declaration.typeKeyword) == Keyword::structure)
        createStruct(declaration, access, parent);
    else
        createScalar(declaration, access, parent);
}

void NodeFactory::createStruct(VariableDeclaration& declaration, ExternalAccess access,
                               DataBlockNode& parent) {
    if (level_ == maximumLevels_)
        fail(Message::structsTooDeep, maximumLevels_);
    auto node = std::make_unique<StructNode>(std::move(declaration.name), access, false);
    ++level_;
    readStructure(*node, false);
    --level_;
    parent.addChild(std::move(node));
}

void NodeFactory::createArray(VariableDeclaration& declaration, ExternalAccess access,
                              DataBlockNode& parent) {
    auto node = std::make_unique<ArrayNode>(declaration.name, access,
                                            std::get<ArrayShape>(declaration.shape).dimensions);
    parser_->parseType(declaration, false);
    createNode(declaration, *node);
    parent.addChild(std::move(node));
}

void NodeFactory::createScalar(VariableDeclaration& declaration, ExternalAccess access,
                               DataBlockNode& parent) {
    const auto count = std::get<ScalarShape>(declaration.shape).elementCount;
    parent.addChild(std::make_unique<ScalarNode>(std::move(declaration.name), access,
                                                 declaration.typeKeyword, count, *context_));
}

} // namespace corvane::workbench::plugins::s7Driver
