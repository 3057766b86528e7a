#include "workbench/cli/ImportPreview.hpp"

#include "workbench/cli/TextOutput.hpp"
#include "workbench/core/ElementWalk.hpp"
#include "workbench/core/StringOutputStream.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <algorithm>
#include <vector>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

std::string membersOf(const skill::Element& element) {
    core::StringOutputStream stream;
    {
        encoder::Document document(stream, encoder::Format::compact);
        auto members = document.object();
        element.save(members);
    }
    return stream.take();
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what);
}

/// The lines and their numbers.
class Preview {
public:
    Preview(const core::ImportChanges& changes, const model::Element* newTarget) {
        if (newTarget != nullptr)
            note("added", *newTarget, added_);
        for (const auto& [parent, first, count] : changes.appendings)
            core::forEachElement(parent->childElements().subspan(first, count),
                                 [&](model::Element& element) { note("added", element, added_); });
        const auto renamed = renamedIn(changes);
        for (const auto& [element, replaced] : changes.replacements) {
            if (membersOf(*replaced) != membersOf(*element->getSkillElement()))
                note("updated", *element, updated_);
            else if (!std::ranges::binary_search(renamed, element))
                ++unchanged_;
        }
        for (const auto& [element, before, after] : changes.renamings) {
            note("renamed", *element, renamed_);
            lines_.insert(lines_.size() - 1, ", was " + printable(before));
        }
    }

    void print(utils::io::OutputStream& stream) const {
        stream.write(counted(added_, "added, ") + counted(updated_, "updated, ") +
                     counted(renamed_, "renamed, ") + counted(unchanged_, "unchanged.\n"));
        stream.write(lines_);
    }

private:
    /// The elements that get another name, sorted.
    static std::vector<const model::Element*> renamedIn(const core::ImportChanges& changes) {
        std::vector<const model::Element*> renamed;
        renamed.reserve(changes.renamings.size());
        for (const auto& renaming : changes.renamings)
            renamed.push_back(renaming.element);
        std::ranges::sort(renamed);
        return renamed;
    }

    void note(std::string_view what, const model::Element& element, std::size_t& count) {
        lines_.append(padded(what, 9)).append(printable(element.path())).append("\n");
        ++count;
    }

    std::string lines_;
    std::size_t added_ = 0;
    std::size_t updated_ = 0;
    std::size_t renamed_ = 0;
    std::size_t unchanged_ = 0;
};

} // namespace

void printImportPreview(utils::io::OutputStream& stream, const core::ImportChanges& changes,
                        const model::Element* newTarget) {
    Preview(changes, newTarget).print(stream);
}

} // namespace corvane::workbench::cli
