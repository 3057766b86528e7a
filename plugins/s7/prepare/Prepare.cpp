#include "prepare/Prepare.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "prepare/Catalogue.hpp"
#include "prepare/DeclarationParser.hpp"
#include "prepare/Measure.hpp"
#include "prepare/SourceText.hpp"
#include "prepare/SystemTypes.hpp"
#include "prepare/Writer.hpp"

#include <algorithm>
#include <deque>
#include <set>
#include <tuple>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

std::string folded(std::string_view text) {
    std::string result;
    assignFolded(result, text);
    return result;
}

/// One preparation, stage by stage.
class Preparation {
public:
    Preparation(std::span<const ui::SourceFile> files, const Options& options, const Limits& limits)
        : files_(files), options_(options), limits_(limits) {}

    ui::PreparedSource run() {
        read();
        Catalogue catalogue(declarations_);
        Measurer measurer(declarations_, catalogue, limits_);
        for (std::uint32_t index = 0; index != declarations_.all.size(); ++index)
            look(index, catalogue, measurer);
        write();
        tellOfTypes();
        tellOfMissing();
        sortLeftOut();
        return std::move(result_);
    }

private:
    /// By place; what is told of one place stays in its order.
    void sortLeftOut() {
        std::vector<std::size_t> order;
        order.reserve(result_.leftOut.size());
        for (std::size_t index = 0; index != result_.leftOut.size(); ++index)
            order.push_back(index);
        std::ranges::sort(order, {}, [this](std::size_t index) {
            const auto& one = result_.leftOut[index];
            return std::tuple(one.file, one.line, index);
        });
        std::vector<ui::LeftOutSource> sorted;
        sorted.reserve(order.size());
        for (const std::size_t index : order)
            sorted.push_back(std::move(result_.leftOut[index]));
        result_.leftOut = std::move(sorted);
    }

    /// A block that is written, and what its members are those of.
    struct Chosen {
        std::uint32_t block;
        std::uint32_t body;
        const SystemType* system = nullptr;
    };

    void read() {
        ConstantValues constants;
        for (const auto& [name, value] : options_.constants)
            constants.insert_or_assign(folded(name), value);
        for (std::uint32_t index = 0; index != files_.size(); ++index) {
            names_.emplace_back(files_[index].name);
            readFile(index, texts_.emplace_back(files_[index].bytes), constants);
        }
    }

    void readFile(std::uint32_t index, const SourceText& text, const ConstantValues& constants) {
        const auto view = text.view();
        const bool fits = view && view->size() <= kLargestText;
        declarations_.texts.push_back(fits ? *view : std::string_view());
        if (!fits) {
            tellOf({.reason = view ? Reason::fileTooLarge : Reason::notText,
                    .place = {.file = index},
                    .subject = {}},
                   {});
            return;
        }
        DeclarationParser parser(declarations_, index, constants);
        parser.read();
        if (parser.failure())
            tellOf(*parser.failure(), {});
    }

    /// Whether the user wants the block.
    bool isWanted(const Declaration& block) {
        if (options_.blocks.empty())
            return true;
        const auto wanted = std::ranges::find_if(options_.blocks, [&](const std::string& name) {
            return keyOf(name) == block.key || folded(name) == folded(block.name);
        });
        if (wanted == options_.blocks.end())
            return false;
        found_.insert(*wanted);
        return true;
    }

    void look(std::uint32_t index, Catalogue& catalogue, Measurer& measurer) {
        if (declarations_.all[index].kind != DeclarationKind::dataBlock) {
            measurer.measure(index);
            return;
        }
        if (!isWanted(declarations_.all[index]) || catalogue.isRepetition(index))
            return;
        try {
            const Chosen chosen = choose(index, catalogue, measurer);
            addToTotal(declarations_.all[index], chosen);
            chosen_.push_back(chosen);
        } catch (const DeclarationFault& fault) {
            tellOf(fault.failure, declarations_.all[index].name);
        }
    }

    [[noreturn]] static void fail(const Declaration& block, Reason reason) {
        throw DeclarationFault({.reason = reason, .place = block.place, .subject = block.name});
    }

    Chosen choose(std::uint32_t index, Catalogue& catalogue, Measurer& measurer) {
        const Declaration& block = declarations_.all[index];
        if (block.failure && block.failure->reason == Reason::declaredTwice)
            throw DeclarationFault(*block.failure);
        expectAccess(block, block.access);
        if (block.failure)
            throw DeclarationFault(*block.failure);
        expectImportableName(block);
        Chosen chosen{.block = index, .body = index};
        if (!block.hasStructure) {
            if (block.typeKey.empty())
                fail(block, Reason::noStructure);
            const auto type = catalogue.resolve(block);
            if (!type.declaration) {
                chosen.system = &systemTypes()[type.systemType];
                return chosen;
            }
            chosen.body = *type.declaration;
        }
        measurer.measure(chosen.body);
        const Declaration& body = declarations_.all[chosen.body];
        if (body.failure)
            throw DeclarationFault(*body.failure);
        if (!body.hasStructure)
            throw DeclarationFault(
                {.reason = Reason::noStructure, .place = block.typePlace, .subject = body.name});
        if (block.access == Access::notStated && body.access == Access::optimized)
            fail(block, Reason::optimizedAccess);
        return chosen;
    }

    void expectAccess(const Declaration& block, Access access) const {
        if (access == Access::optimized)
            fail(block, Reason::optimizedAccess);
        if (access == Access::notStated && !options_.standardAccess)
            fail(block, Reason::accessNotStated);
    }

    // DB alone would be followed by its number, and the number must be one.
    static void expectImportableName(const Declaration& block) {
        constexpr std::size_t kMostDigits = 9;
        const std::string_view name = block.name;
        const bool isNumbered = name.size() > 2 && name.starts_with("DB") &&
                                name.find_first_not_of("0123456789", 2) == std::string_view::npos;
        if (name.empty() || isKeyword(name) || equalsFolded(name, "db") ||
            (isNumbered && name.size() > 2 + kMostDigits))
            fail(block, Reason::nameNotImportable);
    }

    // What fits each by itself may be too much together.
    void addToTotal(const Declaration& block, const Chosen& chosen) {
        constexpr std::uint64_t kBlockLines = 8;
        constexpr std::uint64_t kBlockBytes = 1024;
        const Measure measure = chosen.system == nullptr
                                    ? *declarations_.all[chosen.body].measure
                                    : Measure{.elements = 10, .lines = 10, .bytes = 1000};
        const std::uint64_t elements = total_.elements + measure.elements + 2;
        const std::uint64_t bytes =
            total_.bytes + measure.bytes + kBlockBytes + block.name.size() + block.comment.size;
        if (elements > limits_.import.elements || bytes > limits_.outputBytes)
            fail(block, Reason::tooLarge);
        total_.elements = elements;
        total_.bytes = bytes;
        total_.lines += measure.lines + kBlockLines;
    }

    void write() {
        result_.origins.reserve(total_.lines);
        Writer writer(declarations_, names_, options_.showHidden, result_);
        for (const Chosen& chosen : chosen_)
            if (chosen.system != nullptr)
                writer.writeBlock(declarations_.all[chosen.block], *chosen.system);
            else
                writer.writeBlock(declarations_.all[chosen.block], declarations_.all[chosen.body]);
    }

    /// Whether it is wrong in any case, and not only of no use for want of something else.
    static bool isOwnFault(Reason reason) {
        return reason != Reason::typeMissing && reason != Reason::functionBlockMissing &&
               reason != Reason::sizeUnknown && reason != Reason::constantMissing;
    }

    // What is wrong with a type itself is told even where no block uses it.
    void tellOfTypes() {
        for (const Declaration& declaration : declarations_.all)
            if (declaration.kind != DeclarationKind::dataBlock && declaration.failure &&
                isOwnFault(declaration.failure->reason) && !isTold(declaration.failure->place))
                tellOf(*declaration.failure, declaration.name);
    }

    void tellOfMissing() {
        for (const std::string& name : options_.blocks)
            if (!found_.contains(name))
                tellOf({.reason = Reason::blockMissing, .place = {}, .subject = name}, name);
        if (!result_.text.empty() || !result_.leftOut.empty())
            return;
        for (std::uint32_t index = 0; index != files_.size(); ++index)
            tellOf({.reason = Reason::noDataBlock, .place = {.file = index}, .subject = {}}, {});
    }

    [[nodiscard]] bool isTold(const Place& place) const { return told_.contains(place); }

    void tellOf(const Failure& failure, std::string name) {
        told_.insert(failure.place);
        result_.leftOut.push_back(leftOut(failure, declarations_.texts[failure.place.file],
                                          std::move(name),
                                          failure.other ? textOf(*failure.other) : std::string()));
    }

    [[nodiscard]] std::string textOf(const Place& place) const {
        std::string text(names_[place.file]);
        text.append(":").append(std::to_string(place.line));
        if (const auto column = columnOf(declarations_.texts[place.file], place.at))
            text.append(":").append(std::to_string(*column));
        return text;
    }

    std::span<const ui::SourceFile> files_;
    const Options& options_;
    const Limits& limits_;
    std::deque<SourceText> texts_;
    std::vector<std::string_view> names_;
    Declarations declarations_;
    std::vector<Chosen> chosen_;
    std::set<std::string> found_; ///< of the blocks that are wanted
    std::set<Place> told_;
    Measure total_;
    ui::PreparedSource result_;
};

} // namespace

ui::PreparedSource prepareSources(std::span<const ui::SourceFile> files, const Options& options,
                                  const Limits& limits) {
    return Preparation(files, options, limits).run();
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
