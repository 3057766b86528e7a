#pragma once

#include "dbimport/context/ItemCommands.hpp"

#include <corvane/workbench/model/ElementReference.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane::workbench::plugins::s7Driver {

class Plc;

/// What an import must know of the PLC that it goes into. Made afresh for each import; a
/// default-constructed one is that of a PLC without children.
class ImportContext {
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

public:
    /// What can be looked up by a name of which there is only a view, too.
    template <class Value>
    using ByName = std::unordered_map<std::string, Value, Hash, std::equal_to<>>;

    /// The name of the command that a document brings where the PLC has none, and of the command
    /// that is preferred where the PLC has several.
    static constexpr std::string_view kDefaultCommandName = "Default Command";

    ImportContext();

    /// Lets items use an existing command; the document then brings none of its own.
    void useDefaultCommand(const model::ElementReference& command);

    /// Records an existing data block.
    void addDataBlock(std::string_view name, std::uint16_t dbNumber);

    /// Records the command of the item `itemPath` of the data block `dataBlock`. The command may be
    /// the empty reference: an item without one keeps none.
    void addItemCommand(std::string_view dataBlock, std::string_view itemPath,
                        const model::ElementReference& command);

    /// The numbers of the existing data blocks, by name.
    [[nodiscard]] const ByName<std::uint16_t>& dbNumbers() const { return dbNumbers_; }

    /// The highest number of an existing data block; 0 where there is none.
    [[nodiscard]] std::uint16_t maxExistingDbNumber() const { return maxExistingDbNumber_; }

    /// The command of items that do not exist yet.
    [[nodiscard]] const model::ImportReference& defaultCommand() const { return defaultCommand_; }

    /// Whether the PLC has no command, so that the document must bring one.
    [[nodiscard]] bool createDefaultCommand() const { return createDefaultCommand_; }

    /// The command of the existing item at that path, else the default command. What stands before
    /// the path's first "." names the data block.
    [[nodiscard]] const model::ImportReference& itemCommand(std::string_view itemPath) const;

    /// The commands of the existing items: by the name of their data block, then by item path.
    [[nodiscard]] const ByName<ItemCommands>& itemCommands() const { return itemCommands_; }

    /// Whether an item path that begins with `dataBlock` can be that of an existing item.
    [[nodiscard]] bool hasItemsBelow(std::string_view dataBlock) const;

private:
    [[nodiscard]] const ItemCommands* itemCommandsOf(std::string_view itemPath) const;
    const model::ImportReference& shared(const model::ElementReference& command);

    ByName<std::uint16_t> dbNumbers_;
    std::uint16_t maxExistingDbNumber_ = 0;
    ByName<ItemCommands> itemCommands_;
    // By text: a PLC has few commands and may have a million items that use them. The last one is
    // remembered, since the next item has it as a rule; looked up again it is the same one
    // (DataBlockImportTest.ManyItemsAreFound).
    ByName<std::unique_ptr<const model::ImportReference>> commands_;
    model::ElementReference lastCommand_;
    const model::ImportReference* lastShared_ = nullptr;
    model::ImportReference defaultCommand_;
    bool createDefaultCommand_ = true;
};

/// What an import into `plc` must know of its children: the command that new items get, the numbers
/// of its data blocks, and the commands of the items in them. The PLC stands in a project.
[[nodiscard]] ImportContext gatherImportContext(const Plc& plc);

} // namespace corvane::workbench::plugins::s7Driver
