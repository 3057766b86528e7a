#include "dbimport/context/ImportContext.hpp"

#include "elements/Command.hpp"
#include "elements/DataBlock.hpp"
#include "elements/Item.hpp"
#include "elements/Plc.hpp"
#include "elements/Struct.hpp"

#include <corvane/workbench/model/Element.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// The key of an element below its PLC: without the PLC's own name.
std::string keyBelowPlc(const skill::Element& element) {
    const std::string key = element.primaryKey();
    const std::size_t dot = key.find('.');
    return dot == std::string::npos ? key : key.substr(dot + 1);
}

/// Records the commands of all items in a data block. The key of each is that of its parent and its
/// name, so one text serves all of them.
class ItemWalk {
public:
    ItemWalk(ImportContext& context, const model::Element& block)
        : context_(&context), block_(&block), path_(keyBelowPlc(*block.getSkillElement())) {}

    void run() { visitChildren(*block_); }

private:
    void visitChildren(const model::Element& parent) {
        const std::size_t size = path_.size();
        for (const auto& child : parent.childElements()) {
            path_.append(1, '.').append(child->name());
            visit(*child);
            path_.resize(size);
        }
    }

    void visit(const model::Element& element) {
        if (const Item* const item = element.getSkillElement()->as<Item>())
            context_->addItemCommand(block_->name(), path_, item->command);
        else if (element.isA<Struct>())
            visitChildren(element);
    }

    ImportContext* context_;
    const model::Element* block_;
    std::string path_;
};

} // namespace

ImportContext gatherImportContext(const Plc& plc) {
    ImportContext context;
    model::Element* command = nullptr;
    for (const auto& child : plc.modelElement()->childElements()) {
        if (child->isA<Command>()) {
            if (command == nullptr || child->name() == ImportContext::kDefaultCommandName)
                command = child.get();
        } else if (const DataBlock* const block = child->getSkillElement()->as<DataBlock>()) {
            context.addDataBlock(child->name(), block->dbNumber);
            ItemWalk(context, *child).run();
        }
    }
    if (command != nullptr)
        context.useDefaultCommand(command->makeReference());
    return context;
}

} // namespace corvane::workbench::plugins::s7Driver
