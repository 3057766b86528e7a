#include "dbimport/DataBlockImport.hpp"

#include "dbimport/DataBlockNumbering.hpp"
#include "dbimport/DataBlockReading.hpp"
#include "dbimport/DataBlockWriting.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/diagnosis/Hints.hpp"
#include "dbimport/diagnosis/SourcePlace.hpp"
#include "dbimport/facts/Messages.hpp"
#include "dbimport/reader/StreamWrapper.hpp"
#include "dbimport/warnings/ImportFindings.hpp"
#include "dbimport/warnings/ImportWarnings.hpp"
#include "elements/Plc.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <exception>
#include <memory>
#include <string_view>
#include <system_error>
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

// The file is looked at once more, from its beginning. One that can be read only once keeps its
// place and its hint to itself.
void diagnose(utils::io::InputStream& stream, const Fault& fault, ui::ImportFailure& known) try {
    if (!fault.place)
        return;
    const SourceView view = viewOf(stream, *fault.place);
    known.line = view.place.line;
    known.column = view.place.column;
    known.hint = hintFor(fault.message, view);
} catch (const std::system_error&) {
    known = {};
}

/// As `makeImportDocument`; what there is to know of a fault in the file is then in `known`.
ui::ImportedDocument makeDiagnosed(const Plc& plc, utils::io::InputStream& stream,
                                   const ImportLimits& limits, ui::ImportFailure& known) try {
    return makeImportDocument(plc, stream, limits);
} catch (const Fault& fault) {
    diagnose(stream, fault, known);
    throw;
}

/// A failure with what is known beside its text.
ImportResult completed(ImportResult result, const ui::ImportFailure& known) {
    if (result)
        return result;
    result.error().line = known.line;
    result.error().column = known.column;
    result.error().hint = known.hint;
    return result;
}

} // namespace

ImportResult importDataBlocks(const Plc& plc, const std::filesystem::path& filePath) {
    ui::ImportFailure known;
    return completed(importResult(filePath,
                                  [&] {
                                      try {
                                          const auto file =
                                              std::make_shared<wrapper::StreamWrapper>(filePath);
                                          return makeDiagnosed(plc, file->stream(), {}, known);
                                      } catch (const std::system_error& error) {
                                          known.hint = hintFor(error.code());
                                          throw;
                                      }
                                  }),
                     known);
}

ImportResult importDataBlocks(const Plc& plc, const std::filesystem::path& filePath,
                              utils::io::InputStream& stream, const ImportLimits& limits) {
    ui::ImportFailure known;
    return completed(
        importResult(filePath, [&] { return makeDiagnosed(plc, stream, limits, known); }), known);
}

// The whole road: each stage makes of what the one before gave what the next one takes.
ui::ImportedDocument makeImportDocument(const Plc& plc, utils::io::InputStream& stream,
                                        const ImportLimits& limits) {
    const ImportContext context = gatherImportContext(plc);
    ImportFindings findings;
    std::vector<DataBlockRecord> records = readDataBlocks(stream, context, limits, findings);
    numberDataBlocks(records, context, findings);
    ui::ImportedDocument document = writeDataBlocks(std::move(records), context, limits, findings);
    document.warnings = warningsOf(findings, stream);
    return document;
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
