#include "dbimport/DataBlockRecord.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/DbFileParser.hpp"
#include "dbimport/DbFileReader.hpp"
#include "dbimport/Decimal.hpp"
#include "dbimport/DocumentText.hpp"
#include "dbimport/ImportContext.hpp"
#include "dbimport/Messages.hpp"
#include "dbimport/NodeFactory.hpp"
#include "dbimport/StructNode.hpp"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// What one file's data blocks have in common while they are read.
class DbFile {
public:
    DbFile(utils::io::InputStream& stream, const ImportContext& context, const ImportLimits& limits)
        : context_(&context),
          reader_(stream),
          parser_(reader_),
          factory_(parser_, context, limits, *memory_) {}

    std::vector<DataBlockRecord> read() {
        reader_.skipByteOrderMark();
        while (!reader_.atEnd())
            readDataBlock();
        return std::move(records_);
    }

private:
    void readDataBlock() {
        parser_.beginDataBlock();
        const std::string name = readName();
        while (!parser_.parseHeaderLine())
            if (reader_.atEnd())
                fail(Message::endOfFile);
        if (parser_.state() == DbFileParser::State::structRead)
            readBody(name);
        if (parser_.state() != DbFileParser::State::endRead)
            readAssignments();
    }

    std::string readName() {
        std::string name = parser_.parseDataBlockHeader();
        if (!names_.insert(name).second)
            fail(Message::duplicateBlockName);
        makeDocumentText(name);
        return name;
    }

    void readBody(const std::string& name) {
        const std::string_view kept = memory_->keep(name);
        auto root = memory_->make<RootNode>(kept);
        auto body = memory_->make<StructNode>(kept, root->access(), true);
        factory_.readStructure(*body, true);
        root->addChild(std::move(body));
        records_.push_back({name, context_->dbNumber(name), {memory_, std::move(root)}});
    }

    void readAssignments() {
        while (!parser_.parseAssignmentStep())
            if (reader_.atEnd())
                fail(Message::endOfFile);
    }

    const ImportContext* context_;
    std::shared_ptr<TreeMemory> memory_ = std::make_shared<TreeMemory>();
    DbFileReader reader_;
    DbFileParser parser_;
    NodeFactory factory_;
    std::unordered_set<std::string> names_; // of blocks without a body too
    std::vector<DataBlockRecord> records_;
};

/// The digits of a name that is "DB" and digits; empty for any other name.
std::string_view numberInName(std::string_view name) {
    if (!name.starts_with(kDataBlockMarker))
        return {};
    name.remove_prefix(kDataBlockMarker.size());
    return std::ranges::all_of(name, isDecimalDigit<char>) ? name : std::string_view();
}

} // namespace

std::vector<DataBlockRecord> readDbFile(utils::io::InputStream& stream,
                                        const ImportContext& context, const ImportLimits& limits) {
    return DbFile(stream, context, limits).read();
}

void numberDataBlocks(std::vector<DataBlockRecord>& records, const ImportContext& context) {
    std::uint16_t highest = context.maxExistingDbNumber();
    for (DataBlockRecord& record : records) {
        if (const std::string_view digits = numberInName(record.name); !digits.empty())
            record.dbNumber = static_cast<std::uint16_t>(readDecimal(digits));
        highest = std::max(highest, record.dbNumber.value_or(0));
    }
    for (DataBlockRecord& record : records)
        if (!record.dbNumber)
            record.dbNumber = ++highest;
}

} // namespace corvane::workbench::plugins::s7Driver
