#include "dbimport/DataBlockWriting.hpp"

#include "dbimport/DataBlockReading.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/facts/DocumentKeys.hpp"
#include "dbimport/facts/Messages.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/MemoryPosition.hpp"
#include "dbimport/warnings/ImportFindings.hpp"
#include "elements/DocumentKeys.hpp"

#include <corvane/utils/json/Encoder.hpp>
#include <corvane/workbench/config/DocumentKeys.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
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
                             const ImportContext& context, ElementBudget& budget,
                             ImportFindings& findings) {
    auto entry = document.addObject();
    auto block = entry.addObject(documentKeys::kDataBlock);
    block.addStringView(config::kNameKey, record.name);
    block.addNumber(keys::kDbNumber, record.dbNumber.value());
    auto children = block.addArray(config::kChildrenKey);
    MemoryPosition position;
    ElementPath path(record.name, context.hasItemsBelow(record.name), budget);
    record.root->writeElements(children, position, path);
    findings.addLayout({.name = record.name, .place = record.place}, *record.root, path.notes(),
                       position.byteOffset);
    return position.byteOffset;
}

// A document that grows step by step is copied at each step, and the last two copies are in memory
// together. One that would be too large gets no room, since it fails soon enough. Without room made
// beforehand the document is the same, only later.
void reserveDocument(StringOutputStream& text, const std::vector<DataBlockRecord>& records,
                     const ImportLimits& limits) {
    double size = utils::io::OutputStream::kMaxReserve;
    for (const DataBlockRecord& record : records)
        size += record.root->documentSize(0);
    if (size <= static_cast<double>(limits.documentBytes))
        text.reserveRoom(static_cast<std::size_t>(size));
}

// Trees are destroyed as soon as they are written: the document grows while they go. `place` is
// that of the block being written.
std::vector<ui::MemoryUse> writeDocument(utils::io::OutputStream& stream,
                                         std::vector<DataBlockRecord> records,
                                         const ImportContext& context, const ImportLimits& limits,
                                         ImportFindings& findings, std::uint64_t& place) {
    std::vector<ui::MemoryUse> memory;
    memory.reserve(records.size());
    ElementBudget budget(limits.elements);
    encoder::Document document(stream, encoder::Format::compact);
    auto entries = document.array();
    if (context.createDefaultCommand())
        writeDefaultCommand(entries);
    for (DataBlockRecord& record : records) {
        place = record.place;
        const std::uint64_t bytes = writeDataBlock(entries, record, context, budget, findings);
        record.root.reset();
        memory.push_back({std::move(record.name), bytes});
    }
    return memory;
}

} // namespace

ui::ImportedDocument writeDataBlocks(std::vector<DataBlockRecord> records,
                                     const ImportContext& context, const ImportLimits& limits,
                                     ImportFindings& findings) {
    findings.imported = records.size();
    StringOutputStream text(limits.documentBytes);
    reserveDocument(text, records, limits);
    std::uint64_t place = 0;
    try {
        auto memory = writeDocument(text, std::move(records), context, limits, findings, place);
        return {.text = text.take(), .memory = std::move(memory), .warnings = {}};
    } catch (const utils::io::TextTooLongError&) {
        failAt(place, Message::documentTooLarge, std::to_string(limits.documentBytes));
    } catch (Fault& fault) {
        fault.locate(place);
        throw;
    }
}

} // namespace corvane::workbench::plugins::s7Driver
