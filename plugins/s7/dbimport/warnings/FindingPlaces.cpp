#include "dbimport/warnings/FindingPlaces.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/VariableDeclaration.hpp"
#include "dbimport/parser/DbFileParser.hpp"
#include "dbimport/parser/PlainDeclaration.hpp"
#include "dbimport/reader/DbFileReader.hpp"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>
#include <variant>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// Looks for declarations, which are in ascending order. Only the data blocks in which they stand
/// are read.
class PlaceReading {
public:
    PlaceReading(utils::io::InputStream& stream, std::span<const FindingPlace> wanted)
        : stream_(&stream), reader_(stream), parser_(reader_), wanted_(wanted) {
        places_.reserve(wanted.size());
    }

    std::vector<std::uint64_t> read() {
        while (!isDone()) {
            next_ = {wanted_[places_.size()].block, 0};
            skipTo(*stream_, next_.block);
            readHeader();
            readBody();
            if (isInBlock())
                return {}; // it is another file by now
        }
        return std::move(places_);
    }

private:
    void readHeader() {
        parser_.beginDataBlock();
        if (reader_.nextIs('"'))
            reader_.readQuoted('"');
        else if (equalsFolded(reader_.readWord(), "db"))
            reader_.readNumberText();
        while (!parser_.parseHeaderLine()) {
        }
    }

    void readBody() {
        VariableDeclaration declaration;
        std::size_t level = 0;
        readPlainDeclarations();
        while (isInBlock()) {
            if (parser_.parseDeclaration(declaration, level == 0))
                level += static_cast<std::size_t>(opensStructure(declaration));
            else if (level-- == 0)
                return;
            readPlainDeclarations();
        }
    }

    bool opensStructure(VariableDeclaration& declaration) {
        pass(declaration.place);
        if (std::holds_alternative<ArrayShape>(declaration.shape))
            parser_.parseType(declaration, false);
        return declaration.type == nullptr &&
               keywordOf(declaration.typeKeyword) == Keyword::structure;
    }

    void readPlainDeclarations() {
        PlainDeclaration declaration;
        while (isInBlock() && parser_.peekPlainDeclaration(declaration)) {
            pass(reader_.offset());
            parser_.skipPlainDeclaration(declaration);
        }
    }

    void pass(std::uint64_t place) {
        if (wanted_[places_.size()] == next_)
            places_.push_back(place);
        ++*next_.declaration;
    }

    [[nodiscard]] bool isDone() const { return places_.size() == wanted_.size(); }

    /// Whether there is more to be found in the present data block.
    [[nodiscard]] bool isInBlock() const {
        return !isDone() && wanted_[places_.size()].block == next_.block;
    }

    utils::io::InputStream* stream_;
    DbFileReader reader_;
    DbFileParser parser_;
    std::span<const FindingPlace> wanted_;
    FindingPlace next_{0, 0};
    std::vector<std::uint64_t> places_;
};

/// In bytes from 0, in the order of `findings`.
std::vector<std::uint64_t> offsetsOf(utils::io::InputStream& stream,
                                     std::span<const FindingPlace> findings) {
    std::vector<FindingPlace> declarations;
    std::ranges::copy_if(
        findings, std::back_inserter(declarations),
        [](const FindingPlace& finding) { return finding.declaration.has_value(); });
    std::ranges::sort(declarations);
    std::vector<std::uint64_t> found;
    if (!declarations.empty()) {
        stream.rewind();
        found = PlaceReading(stream, declarations).read();
    }
    std::vector<std::uint64_t> offsets;
    offsets.reserve(findings.size());
    for (const FindingPlace& finding : findings) {
        const auto at = std::ranges::lower_bound(declarations, finding) - declarations.begin();
        offsets.push_back(finding.declaration ? found.at(static_cast<std::size_t>(at))
                                              : finding.block);
    }
    return offsets;
}

} // namespace

std::vector<SourcePlace> sourcePlaces(utils::io::InputStream& stream,
                                      std::span<const FindingPlace> findings) try {
    const std::vector<std::uint64_t> offsets = offsetsOf(stream, findings);
    std::vector<std::uint64_t> ascending = offsets;
    std::ranges::sort(ascending);
    const std::vector<SourcePlace> sorted =
        ascending.empty() ? std::vector<SourcePlace>() : placesOf(stream, ascending);
    std::vector<SourcePlace> places;
    places.reserve(offsets.size());
    for (const std::uint64_t offset : offsets)
        places.push_back(sorted[static_cast<std::size_t>(
            std::ranges::lower_bound(ascending, offset) - ascending.begin())]);
    return places;
} catch (const std::exception&) {
    return {};
}

} // namespace corvane::workbench::plugins::s7Driver
