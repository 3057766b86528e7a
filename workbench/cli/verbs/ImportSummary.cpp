#include "workbench/cli/verbs/ImportSummary.hpp"

#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/workbench/skill/ElementClass.hpp>

#include <algorithm>
#include <map>

namespace corvane::workbench::cli {

namespace {

using ElementClass = skill::Element::Class;
using Counts = std::map<const ElementClass*, std::uint64_t>;

struct Row {
    const model::Element* element;
    Counts below;
    std::uint64_t bytes;
};

Counts countBelow(const model::Element& element) {
    Counts counts;
    core::forEachElement(element.childElements(),
                         [&](model::Element& child) { ++counts[&child.elementClass()]; });
    return counts;
}

// The pieces stand at the end of the document, in its order, behind what it brings beside them.
std::vector<Row> rowsOf(std::span<const ui::MemoryUse> pieces, const core::ImportOutcome& outcome) {
    std::vector<Row> rows;
    const auto first = outcome.top.size() - std::min(pieces.size(), outcome.top.size());
    for (std::size_t i = first; i != outcome.top.size(); ++i)
        rows.push_back({outcome.top[i], countBelow(*outcome.top[i]), pieces[i - first].bytes});
    return rows;
}

// In the order in which they are first met.
std::vector<const ElementClass*> classesOf(std::span<const Row> rows) {
    std::vector<const ElementClass*> classes;
    for (const auto& row : rows)
        core::forEachElement(row.element->childElements(), [&](model::Element& child) {
            if (std::ranges::find(classes, &child.elementClass()) == classes.end())
                classes.push_back(&child.elementClass());
        });
    return classes;
}

std::vector<std::string> cells(std::string name, const Counts& counts, std::uint64_t bytes,
                               std::span<const ElementClass* const> classes) {
    std::vector<std::string> row{std::move(name)};
    for (const auto* const elementClass : classes) {
        const auto found = counts.find(elementClass);
        row.push_back(std::to_string(found == counts.end() ? 0 : found->second));
    }
    row.push_back(std::to_string(bytes));
    return row;
}

} // namespace

void printImportSummary(TextOutput& output, std::span<const ui::MemoryUse> pieces,
                        const core::ImportOutcome& outcome) {
    const auto rows = rowsOf(pieces, outcome);
    if (rows.empty()) {
        output.writeLine("Nothing to import was found in the file.");
        return;
    }
    const auto classes = classesOf(rows);
    std::vector<std::string> headings{narrow(rows.front().element->elementClass().displayName())};
    for (const auto* const elementClass : classes)
        headings.push_back(narrow(elementClass->displayName()));
    headings.emplace_back("Bytes");

    Table table(std::move(headings));
    Row sum{nullptr, {}, 0};
    for (const auto& row : rows) {
        table.add(cells(row.element->name(), row.below, row.bytes, classes));
        for (const auto& [elementClass, count] : row.below)
            sum.below[elementClass] += count;
        sum.bytes += row.bytes;
    }
    table.add(cells(std::to_string(rows.size()) + " in all", sum.below, sum.bytes, classes));
    table.write(output);
}

} // namespace corvane::workbench::cli
