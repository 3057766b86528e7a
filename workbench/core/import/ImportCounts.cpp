#include "workbench/core/import/ImportCounts.hpp"

#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/utils/json/Encoder.hpp>

#include <algorithm>
#include <vector>

namespace corvane::workbench::core {

namespace {

namespace encoder = utils::json::encoder;
using Change = ImportedElement::Change;

/// Compares what elements save. It keeps the room for both texts: an import compares as many as it
/// meets again.
class Comparison {
public:
    bool areEqual(const skill::Element& a, const skill::Element& b) {
        return write(a, first_) == write(b, second_);
    }

private:
    using Text = utils::io::StringOutputStream;

    static std::string_view write(const skill::Element& element, Text& text) {
        text.clear();
        {
            encoder::Document document(text, encoder::Format::compact);
            auto members = document.object();
            element.save(members);
        }
        return text.view();
    }

    Text first_;
    Text second_;
};

// Where the name in the file is taken, an element may get back the very name that it had.
bool isRenamed(const ImportChanges::Renaming& renaming) {
    return renaming.before != renaming.after;
}

/// The elements that got another name, sorted.
std::vector<const model::Element*> renamedIn(const ImportChanges& changes) {
    std::vector<const model::Element*> renamed;
    for (const auto& renaming : changes.renamings)
        if (isRenamed(renaming))
            renamed.push_back(renaming.element);
    std::ranges::sort(renamed);
    return renamed;
}

} // namespace

ImportCounts countImported(const ImportChanges& changes, const model::Element* newTarget,
                           function_ref<void(const ImportedElement&)> visit) {
    ImportCounts counts;
    const auto noteAdded = [&](const model::Element& element) {
        ++counts.added;
        visit({Change::added, &element, {}});
    };
    if (newTarget != nullptr)
        noteAdded(*newTarget);
    for (const auto& [parent, first, count] : changes.appendings)
        forEachElement(parent->childElements().subspan(first, count), noteAdded);

    const auto renamed = renamedIn(changes);
    Comparison comparison;
    for (const auto& [element, replaced] : changes.replacements) {
        if (!comparison.areEqual(*replaced, *element->getSkillElement())) {
            ++counts.updated;
            visit({Change::updated, element, {}});
        } else if (!std::ranges::binary_search(renamed, element)) {
            ++counts.unchanged;
        }
    }
    for (const auto& renaming : changes.renamings)
        if (isRenamed(renaming))
            visit({Change::renamed, renaming.element, renaming.before});
    counts.renamed = renamed.size();
    return counts;
}

ImportCounts countImported(const ImportChanges& changes, const model::Element* newTarget) {
    return countImported(changes, newTarget, [](const ImportedElement&) {});
}

} // namespace corvane::workbench::core
