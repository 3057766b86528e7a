#include "dbimport/context/ImportContext.hpp"

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver {

ImportContext::ImportContext()
    : defaultCommand_(model::ImportReference::makeInternalReference(kDefaultCommandName)) {}

void ImportContext::useDefaultCommand(const model::ElementReference& command) {
    defaultCommand_ = model::ImportReference(command);
    createDefaultCommand_ = false;
}

void ImportContext::addDataBlock(std::string_view name, std::uint16_t dbNumber) {
    dbNumbers_.insert_or_assign(std::string(name), dbNumber);
    maxExistingDbNumber_ = std::max(maxExistingDbNumber_, dbNumber);
}

void ImportContext::addItemCommand(std::string_view dataBlock, std::string_view itemPath,
                                   const model::ElementReference& command) {
    auto found = itemCommands_.find(dataBlock);
    if (found == itemCommands_.end())
        found = itemCommands_.emplace(dataBlock, ItemCommands()).first;
    found->second.set(itemPath, shared(command));
}

const model::ImportReference& ImportContext::itemCommand(std::string_view itemPath) const {
    const ItemCommands* const commands = itemCommandsOf(itemPath);
    const model::ImportReference* const command =
        commands == nullptr ? nullptr : commands->find(itemPath);
    return command == nullptr ? defaultCommand_ : *command;
}

bool ImportContext::hasItemsBelow(std::string_view dataBlock) const {
    return itemCommandsOf(dataBlock) != nullptr;
}

const ItemCommands* ImportContext::itemCommandsOf(std::string_view itemPath) const {
    const auto found = itemCommands_.find(itemPath.substr(0, itemPath.find('.')));
    return found == itemCommands_.end() ? nullptr : &found->second;
}

const model::ImportReference& ImportContext::shared(const model::ElementReference& command) {
    if (lastShared_ != nullptr && command == lastCommand_)
        return *lastShared_;
    auto& reference = commands_[std::string(command.text())];
    if (reference == nullptr)
        reference = std::make_unique<const model::ImportReference>(command);
    lastCommand_ = command;
    lastShared_ = reference.get();
    return *reference;
}

} // namespace corvane::workbench::plugins::s7Driver
