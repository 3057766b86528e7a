#include "dbimport/ImportDocumentWriter.hpp"

#include "dbimport/DocumentKeys.hpp"
#include "dbimport/ElementBudget.hpp"
#include "dbimport/ElementPath.hpp"
#include "dbimport/ImportContext.hpp"
#include "dbimport/MemoryPosition.hpp"
#include "dbimport/Messages.hpp"
#include "dbimport/StringOutputStream.hpp"
#include "elements/DocumentKeys.hpp"

#include <corvane/utils/json/Encoder.hpp>
#include <corvane/workbench/config/DocumentKeys.hpp>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

namespace {

namespace encoder = utils::json::encoder;

void writeDefaultCommand(encoder::Array& document) {
    auto entry = document.addObject();
    auto command = entry.addObject(documentKeys::kCommand);
    command.addStringView(config::kNameKey, ImportContext::kDefaultCommandName);
}

std::uint64_t writeDataBlock(encoder::Array& document, const DataBlockRecord& record,
                             const ImportContext& context, ElementBudget& budget) {
    auto entry = document.addObject();
    auto block = entry.addObject(documentKeys::kDataBlock);
    block.addStringView(config::kNameKey, record.name);
    block.addNumber(keys::kDbNumber, record.dbNumber.value());
    auto children = block.addArray(config::kChildrenKey);
    MemoryPosition position;
    ElementPath path(record.name, context.hasItemsBelow(record.name), budget);
    record.root->writeElements(children, position, path);
    return position.byteOffset;
}

// A document that grows step by step is copied at each step, and the last two copies are in memory
// together. One that would be too large gets no room, since it fails soon enough.
void reserveDocument(StringOutputStream& text, const std::vector<DataBlockRecord>& records,
                     const ImportLimits& limits) {
    double size = utils::io::OutputStream::kMaxReserve;
    for (const DataBlockRecord& record : records)
        size += record.root->documentSize(0);
    if (size <= static_cast<double>(limits.documentBytes))
        text.reserveRoom(static_cast<std::size_t>(size));
}

} // namespace

std::vector<ui::MemoryUse> writeDataBlocks(utils::io::OutputStream& stream,
                                           std::vector<DataBlockRecord> records,
                                           const ImportContext& context,
                                           const ImportLimits& limits) {
    std::vector<ui::MemoryUse> memory;
    memory.reserve(records.size());
    ElementBudget budget(limits.elements);
    encoder::Document document(stream, encoder::Format::compact);
    auto entries = document.array();
    if (context.createDefaultCommand())
        writeDefaultCommand(entries);
    for (DataBlockRecord& record : records) {
        const std::uint64_t bytes = writeDataBlock(entries, record, context, budget);
        record.root.reset();
        memory.push_back({std::move(record.name), bytes});
    }
    return memory;
}

ui::ImportedDocument makeImportDocument(utils::io::InputStream& stream,
                                        const ImportContext& context, const ImportLimits& limits) {
    std::vector<DataBlockRecord> records = readDbFile(stream, context, limits);
    numberDataBlocks(records, context);
    StringOutputStream text(limits.documentBytes);
    reserveDocument(text, records, limits);
    try {
        auto memory = writeDataBlocks(text, std::move(records), context, limits);
        return {text.take(), std::move(memory)};
    } catch (const std::length_error&) {
        fail(Message::documentTooLarge, limits.documentBytes);
    }
}

} // namespace corvane::workbench::plugins::s7Driver
