#include "dbimport/DataBlockImport.hpp"

#include "dbimport/ImportContext.hpp"
#include "dbimport/ImportContextGathering.hpp"
#include "dbimport/ImportDocumentWriter.hpp"
#include "dbimport/ImportError.hpp"
#include "dbimport/StreamWrapper.hpp"

#include <exception>

namespace corvane::workbench::plugins::s7Driver {

std::expected<ui::ImportedDocument, std::u16string>
importDataBlocks(const Plc& plc, const std::filesystem::path& filePath) {
    try {
        const ImportContext context = gatherImportContext(plc);
        wrapper::StreamWrapper file(filePath);
        return makeImportDocument(file.stream(), context);
    } catch (const std::exception& error) {
        return std::unexpected(importErrorText(filePath, error.what()));
    }
}

} // namespace corvane::workbench::plugins::s7Driver
