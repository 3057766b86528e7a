#include "dbimport/warnings/ImportWarnings.hpp"

#include "dbimport/diagnosis/BlockHeader.hpp"
#include "dbimport/diagnosis/SourcePlace.hpp"
#include "dbimport/warnings/FindingPlaces.hpp"
#include "dbimport/warnings/ImportFindings.hpp"
#include "elements/Plc.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <algorithm>
#include <array>
#include <exception>
#include <initializer_list>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

namespace {

enum class Warning : std::uint8_t {
#define S7_IMPORT_WARNING(name, text) name,
#include "dbimport/warnings/Warnings.def"
#undef S7_IMPORT_WARNING
};

constexpr auto kTexts = std::to_array<std::string_view>({
#define S7_IMPORT_WARNING(name, text) text,
#include "dbimport/warnings/Warnings.def"
#undef S7_IMPORT_WARNING
});

using Arguments = std::initializer_list<std::u16string_view>;

std::u16string textOf(Warning warning, Arguments arguments) {
    return i18n::fill(i18n::translate(Plc::kTextContext, kTexts[static_cast<std::size_t>(warning)]),
                      arguments);
}

std::u16string numberText(std::uint64_t number) {
    return utils::string::detail::utf8ToUtf16(std::to_string(number));
}

/// A name of the file, which may be as long as the file.
std::u16string nameText(std::string_view name) {
    constexpr std::size_t kLongest = 60;
    std::u16string text = utils::string::detail::utf8ToUtf16(name.substr(0, 4 * kLongest + 4));
    if (text.size() <= kLongest)
        return text;
    constexpr unsigned kSurrogateBits = 0xFC00;
    constexpr unsigned kHighSurrogate = 0xD800;
    const bool halved = (text[kLongest - 1] & kSurrogateBits) == kHighSurrogate;
    text.resize(kLongest - static_cast<std::size_t>(halved));
    return text + u'\u2026';
}

/// `textOfEntry` of each entry; `count` says how many there are in all.
template <class Entries, class TextOfEntry>
std::u16string listOf(const Entries& entries, std::size_t count, const TextOfEntry& textOfEntry) {
    std::u16string list;
    for (const auto& entry : entries) {
        std::u16string text = textOfEntry(entry);
        list = list.empty() ? std::move(text) : textOf(Warning::listItem, {list, text});
    }
    return count == entries.size()
               ? list
               : textOf(Warning::listRest, {list, numberText(count - entries.size())});
}

std::u16string numberedBlock(const FoundBlock& block) {
    return textOf(Warning::numberedBlock, {nameText(block.name), numberText(block.number)});
}

// What stands around a place costs a look at the file up to there: so only few blocks are asked.
Warning reasonOf(utils::io::InputStream& stream, const FoundBlock& block) try {
    const BlockHeader header = headerOf(viewOf(stream, block.place).after);
    if (header.variableSection)
        return Warning::blockOfSection;
    return header.ofType ? Warning::blockOfType : Warning::emptyBlock;
} catch (const std::exception&) {
    return Warning::emptyBlock;
}

class Writer {
public:
    Writer(const ImportFindings& findings, utils::io::InputStream& stream)
        : findings_(&findings), stream_(&stream) {}

    std::vector<ui::ImportWarning> write() {
        addHidden();
        addLarge();
        addNumbers();
        addWithoutBody();
        addWithoutItem();
        addForeignNames();
        locate();
        return std::move(warnings_);
    }

private:
    void add(std::u16string text, std::optional<FindingPlace> place = std::nullopt,
             std::string_view block = {}) {
        warnings_.push_back({.text = std::move(text), .element = model::escapeName(block)});
        places_.push_back(place);
    }

    void addHidden() {
        if (!findings_->firstHidden)
            return;
        const auto& [block, shift] = *findings_->firstHidden;
        add(textOf(Warning::hiddenVariable,
                   {nameText(shift.hidden.name), nameText(shift.moved.name)}) +
                furtherBlocks(findings_->shiftedBlocks),
            FindingPlace{block.place, shift.hidden.declaration}, block.name);
    }

    void addLarge() {
        const FoundBlocks& large = findings_->large;
        if (large.count() != 0)
            add(textOf(Warning::largeBlock,
                       {numberText(findings_->largeBytes), numberText(kAddressableBytes - 1)}) +
                    furtherBlocks(large.count()),
                FindingPlace{large.first().front().place, {}}, large.first().front().name);
    }

    static std::u16string furtherBlocks(std::size_t count) {
        return count == 1 ? std::u16string() : textOf(Warning::firstOfBlocks, {numberText(count)});
    }

    void addNumbers() {
        addBlocks(findings_->wrapped, numberedBlock, Warning::wrappedNumber,
                  Warning::wrappedNumbers);
        addBlocks(findings_->guessed, numberedBlock, Warning::guessedNumber,
                  Warning::guessedNumbers);
    }

    void addWithoutBody() {
        const auto withReason = [this](const FoundBlock& block) {
            return textOf(reasonOf(*stream_, block), {nameText(block.name)});
        };
        addBlocks(findings_->withoutBody, withReason, Warning::blockWithoutBody,
                  Warning::blocksWithoutBody);
        if (findings_->imported == 0)
            add(textOf(Warning::emptyFile, {}));
    }

    template <class TextOfBlock>
    void addBlocks(const FoundBlocks& blocks, const TextOfBlock& textOfBlock, Warning one,
                   Warning several) {
        if (blocks.count() != 0)
            addList(one, several, blocks.count(),
                    listOf(blocks.first(), blocks.count(), textOfBlock),
                    FindingPlace{blocks.first().front().place, {}});
    }

    void addWithoutItem() {
        const LayoutNotes::Counts& counts = findings_->withoutItem;
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < counts.size(); ++row)
            if (counts[row] != 0)
                rows.push_back(row);
        const auto countedType = [&](std::size_t row) {
            return textOf(Warning::countedType,
                          {numberText(counts[row]), nameText(kTypes[row].name)});
        };
        if (!rows.empty())
            addList(Warning::variableWithoutItem, Warning::variablesWithoutItem,
                    std::accumulate(counts.begin(), counts.end(), std::uint64_t{0}),
                    listOf(rows, rows.size(), countedType), findings_->firstWithoutItem);
    }

    void addList(Warning one, Warning several, std::uint64_t count, const std::u16string& list,
                 std::optional<FindingPlace> place) {
        const std::u16string highest = numberText(kAddressableBytes - 1); // of block numbers, too
        add(count == 1 ? textOf(one, {list, highest})
                       : textOf(several, {numberText(count), list, highest}),
            place);
    }

    void addForeignNames() {
        for (const auto& [name, names] : findings_->firstForeign)
            add(textOf(Warning::foreignNames, {numberText(names.count()),
                                               utils::string::detail::utf8ToUtf16(names.first())}),
                std::nullopt, name);
        if (const std::size_t more = findings_->foreignBlocks - findings_->firstForeign.size())
            add(textOf(Warning::foreignNamesElsewhere, {numberText(more)}));
    }

    void locate() {
        std::vector<FindingPlace> wanted;
        for (const auto& place : places_)
            if (place)
                wanted.push_back(*place);
        const std::vector<SourcePlace> found = sourcePlaces(*stream_, wanted);
        auto next = found.begin();
        for (std::size_t index = 0; index < places_.size() && next != found.end(); ++index)
            if (places_[index]) {
                warnings_[index].line = next->line;
                warnings_[index].column = next->column;
                ++next;
            }
    }

    std::vector<ui::ImportWarning> warnings_;
    std::vector<std::optional<FindingPlace>> places_; // of each
    const ImportFindings* findings_;
    utils::io::InputStream* stream_;
};

} // namespace

std::vector<ui::ImportWarning> warningsOf(const ImportFindings& findings,
                                          utils::io::InputStream& stream) {
    return Writer(findings, stream).write();
}

} // namespace corvane::workbench::plugins::s7Driver
