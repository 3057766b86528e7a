#include "dbimport/DataBlockImport.hpp"

#include "dbimport/DataBlockNumbering.hpp"
#include "dbimport/DataBlockReading.hpp"
#include "dbimport/DataBlockWriting.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/reader/StreamWrapper.hpp"
#include "elements/Plc.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <exception>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

namespace {

std::u16string errorText(const std::filesystem::path& filePath, std::string_view message) {
    constexpr std::string_view kFormat = "Error importing S7 data blocks from {}: {} ";
    return i18n::fill(i18n::translate(Plc::kTextContext, kFormat),
                      {utils::string::detail::utf8ToUtf16(filePath.native()),
                       utils::string::detail::utf8ToUtf16(message)});
}

} // namespace

ImportResult importDataBlocks(const Plc& plc, const std::filesystem::path& filePath) {
    return importResult(filePath, [&] {
        const auto file = std::make_shared<wrapper::StreamWrapper>(filePath);
        return makeImportDocument(plc, file->stream());
    });
}

// The whole road: each stage makes of what the one before gave what the next one takes.
ui::ImportedDocument makeImportDocument(const Plc& plc, utils::io::InputStream& stream,
                                        const ImportLimits& limits) {
    const ImportContext context = gatherImportContext(plc);
    std::vector<DataBlockRecord> records = readDataBlocks(stream, context, limits);
    numberDataBlocks(records, context);
    return writeDataBlocks(std::move(records), context, limits);
}

ImportResult importResult(const std::filesystem::path& filePath,
                          function_ref<ui::ImportedDocument()> import) {
    try {
        return import();
    } catch (const std::exception& error) {
        return std::unexpected(ui::ImportFailure{.text = errorText(filePath, error.what())});
    } catch (...) {
        return std::unexpected(ui::ImportFailure{.text = errorText(filePath, "unknown error")});
    }
}

} // namespace corvane::workbench::plugins::s7Driver
