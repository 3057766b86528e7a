#include "workbench/core/import/ImportPreview.hpp"

#include <unordered_map>

namespace corvane::workbench::core {

namespace {

constexpr std::size_t kTickEvery = 1024; // changes

/// The places of elements at the top of a document.
class TopPlaces {
public:
    TopPlaces(const ImportOutcome& outcome, const model::Element& target) : target_(target) {
        places_.reserve(outcome.top.size());
        for (std::size_t place = 0; place != outcome.top.size(); ++place)
            places_.emplace(outcome.top[place], place);
    }

    [[nodiscard]] std::optional<std::size_t> of(const model::Element& element) const {
        if (element.parentElement() != &target_)
            return std::nullopt;
        const auto found = places_.find(&element);
        return found == places_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::unordered_map<const model::Element*, std::size_t> places_;
    const model::Element& target_;
};

} // namespace

ImportPreview previewOf(const ImportChanges& changes, const ImportOutcome& outcome,
                        const model::Element& target, Match match, function_ref<void()> tick) {
    ImportPreview preview;
    const TopPlaces places(outcome, target);
    preview.counts = countImported(changes, match, nullptr, [&](const ImportedElement& imported) {
        if (preview.changes.size() % kTickEvery == 0)
            tick();
        preview.changes.push_back({imported.change(), imported.path(), imported.from(),
                                   imported.members(), places.of(imported.element())});
    });
    preview.warnings = mergeWarnings(changes);
    return preview;
}

} // namespace corvane::workbench::core
