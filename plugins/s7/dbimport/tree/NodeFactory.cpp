#include "dbimport/tree/NodeFactory.hpp"

#include "dbimport/facts/ForeignNames.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/Messages.hpp"
#include "dbimport/facts/VariableDeclaration.hpp"
#include "dbimport/parser/DbFileParser.hpp"
#include "dbimport/parser/PlainDeclaration.hpp"
#include "dbimport/tree/ArrayNode.hpp"
#include "dbimport/tree/ScalarNode.hpp"
#include "dbimport/tree/StructNode.hpp"
#include "dbimport/tree/TreeMemory.hpp"

#include <corvane/utils/json/PlainText.hpp>

#include <utility>

namespace corvane::workbench::plugins::s7Driver {

NodeFactory::NodeFactory(DbFileParser& parser, const ImportContext& context,
                         const ImportLimits& limits, TreeMemory& memory, ForeignNames& foreignNames)
    : parser_(&parser),
      context_(&context),
      memory_(&memory),
      foreignNames_(&foreignNames),
      maximumLevels_(limits.structLevels) {}

void NodeFactory::readStructure(StructNode& node, bool isTopLevel) {
    VariableDeclaration declaration;
    readPlainDeclarations(node);
    while (parser_->parseDeclaration(declaration, isTopLevel)) {
        createNode(declaration, node);
        readPlainDeclarations(node);
    }
}

void NodeFactory::readPlainDeclarations(StructNode& node) {
    PlainDeclaration declaration;
    while (parser_->peekPlainDeclaration(declaration)) {
        node.addChild(memory_->make<ScalarNode>(PlainName{memory_->keepShort(declaration.name)},
                                                declaration.access.within(node.access()),
                                                *declaration.type, declaration.elementCount,
                                                *context_));
        parser_->skipPlainDeclaration(declaration);
    }
}

void NodeFactory::createNode(VariableDeclaration& declaration, DataBlockNode& parent) {
    foreignNames_->makeDocumentText(declaration.name);
    const std::string_view name = memory_->keep(declaration.name);
    const ExternalAccess access = declaration.access.within(parent.access());
    parser_->setPlace(declaration.typePlace); // of what is wrong with the type
    if (std::holds_alternative<ArrayShape>(declaration.shape))
        createArray(declaration, name, access, parent);
    else if (declaration.type == nullptr &&
             keywordOf(declaration.typeKeyword) == Keyword::structure)
        createStruct(name, access, parent);
    else
        createScalar(declaration, name, access, parent);
}

void NodeFactory::createStruct(std::string_view name, ExternalAccess access,
                               DataBlockNode& parent) {
    if (level_ == maximumLevels_)
        fail(Message::structsTooDeep, maximumLevels_);
    auto node = memory_->make<StructNode>(name, access, false);
    ++level_;
    readStructure(*node, false);
    --level_;
    parent.addChild(std::move(node));
}

void NodeFactory::createArray(VariableDeclaration& declaration, std::string_view name,
                              ExternalAccess access, DataBlockNode& parent) {
    auto node = memory_->make<ArrayNode>(
        name, access, std::get<ArrayShape>(declaration.shape).dimensions, declaration.place);
    parser_->parseType(declaration, false);
    createNode(declaration, *node);
    parent.addChild(std::move(node));
}

void NodeFactory::createScalar(const VariableDeclaration& declaration, std::string_view name,
                               ExternalAccess access, DataBlockNode& parent) {
    const auto count = std::get<ScalarShape>(declaration.shape).elementCount;
    const auto add = [&](auto nodeName, const auto& type) {
        parent.addChild(memory_->make<ScalarNode>(nodeName, access, type, count, *context_));
    };
    if (declaration.type == nullptr)
        add(name, declaration.typeKeyword);
    else if (utils::json::encoder::isPlain(name))
        add(PlainName{name}, *declaration.type);
    else
        add(name, *declaration.type);
}

} // namespace corvane::workbench::plugins::s7Driver
