#include "dbimport/DataBlockReading.hpp"

#include "dbimport/context/ImportContext.hpp"
#include "dbimport/facts/ForeignNames.hpp"
#include "dbimport/facts/Messages.hpp"
#include "dbimport/parser/DbFileParser.hpp"
#include "dbimport/reader/DbFileReader.hpp"
#include "dbimport/tree/NodeFactory.hpp"
#include "dbimport/tree/StructNode.hpp"
#include "dbimport/warnings/ImportFindings.hpp"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// What one file's data blocks have in common while they are read.
class DbFile {
public:
    DbFile(utils::io::InputStream& stream, const ImportContext& context, const ImportLimits& limits,
           ImportFindings& findings)
        : context_(&context),
          findings_(&findings),
          reader_(stream),
          parser_(reader_),
          factory_(parser_, context, limits, *memory_, foreignNames_) {}

    std::vector<DataBlockRecord> read() try {
        reader_.skipByteOrderMark();
        while (!reader_.atEnd())
            readDataBlock();
        return std::move(records_);
    } catch (Fault& fault) {
        fault.locate(reader_.place());
        throw;
    }

private:
    void readDataBlock() {
        parser_.beginDataBlock();
        foreignNames_ = ForeignNames();
        const std::string name = readName();
        while (!parser_.parseHeaderLine())
            failAtEnd();
        if (parser_.state() == DbFileParser::State::structRead)
            readBody(name);
        else
            findings_->withoutBody.add({.name = name, .place = parser_.namePlace()});
        if (parser_.state() != DbFileParser::State::endRead)
            readAssignments();
    }

    std::string readName() {
        std::string name = parser_.parseDataBlockHeader();
        foreignNames_.makeDocumentText(name);
        if (!names_.insert(name).second)
            failAt(parser_.namePlace(), Message::duplicateBlockName);
        return name;
    }

    void readBody(const std::string& name) {
        const std::uint64_t place = parser_.namePlace();
        const std::string_view kept = memory_->keep(name);
        auto root = memory_->make<RootNode>(kept);
        auto body = memory_->make<StructNode>(kept, root->access(), true);
        factory_.readStructure(*body, true);
        root->addChild(std::move(body));
        findings_->addForeignNames(name, foreignNames_);
        records_.push_back({.name = name,
                            .dbNumber = existingNumber(name),
                            .root = {memory_, std::move(root)},
                            .place = place});
    }

    [[nodiscard]] std::optional<std::uint16_t> existingNumber(std::string_view name) const {
        const auto found = context_->dbNumbers().find(name);
        return found == context_->dbNumbers().end() ? std::nullopt : std::optional(found->second);
    }

    void failAtEnd() {
        if (reader_.atEnd())
            failAt(reader_.offset(), Message::endOfFile);
    }

    void readAssignments() {
        while (!parser_.parseAssignmentStep())
            failAtEnd();
    }

    const ImportContext* context_;
    ImportFindings* findings_;
    std::shared_ptr<TreeMemory> memory_ = std::make_shared<TreeMemory>();
    DbFileReader reader_;
    DbFileParser parser_;
    ForeignNames foreignNames_; // of the block that is read
    NodeFactory factory_;
    std::unordered_set<std::string>
        names_; // as the project will know them, of blocks without a body too
    std::vector<DataBlockRecord> records_;
};

} // namespace

std::vector<DataBlockRecord> readDataBlocks(utils::io::InputStream& stream,
                                            const ImportContext& context,
                                            const ImportLimits& limits, ImportFindings& findings) {
    return DbFile(stream, context, limits, findings).read();
}

} // namespace corvane::workbench::plugins::s7Driver
