#include "workbench/core/import/MissingElements.hpp"

#include <corvane/workbench/host/Tree.hpp>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace corvane::workbench::core {

namespace {

using model::Element;
using Elements = std::span<Element* const>;

/// What an element is known by among its siblings.
using Identity = std::pair<const skill::Element::Class*, utils::core::Uuid>;

/// The unmet children of one parent.
class UnmetLevel {
public:
    explicit UnmetLevel(Elements unmet) : unmet_(unmet) {
        for (auto* const element : unmet)
            if (const auto id = element->getSkillElement()->importId())
                entries_.push_back({{&element->elementClass(), *id}, element});
    }

    void appendMissing(Match match, std::vector<Element*>& missing) {
        if (match == Match::identity && !entries_.empty())
            leaveOutWhatASiblingMet();
        for (const auto& entry : entries_)
            missing.push_back(entry.element);
    }

private:
    struct Entry {
        Identity identity;
        Element* element;
    };

    void leaveOutWhatASiblingMet() {
        auto met = identitiesMet();
        std::ranges::sort(met);
        std::erase_if(entries_, [&](const Entry& entry) {
            return std::ranges::binary_search(met, entry.identity);
        });
    }

    // The unmet ones are among the siblings in their order.
    std::vector<Identity> identitiesMet() const {
        std::vector<Identity> met;
        auto next = unmet_.begin();
        for (const auto& sibling : unmet_.front()->parentElement()->childElements()) {
            if (next != unmet_.end() && *next == sibling.get())
                ++next;
            else if (const auto id = sibling->getSkillElement()->importId())
                met.emplace_back(&sibling->elementClass(), *id);
        }
        return met;
    }

    Elements unmet_;
    std::vector<Entry> entries_;
};

/// The elements at the front that have one parent; those of a level stand together.
Elements levelOf(Elements elements) {
    const auto* const parent = elements.front()->parentElement();
    const auto end = std::ranges::find_if(
        elements, [&](const Element* element) { return element->parentElement() != parent; });
    return elements.first(static_cast<std::size_t>(end - elements.begin()));
}

void removeLevel(Elements level, host::Model& model,
                 std::vector<ImportChanges::Removal>& removals) {
    Element& parent = *level.front()->parentElement();
    auto& removal = removals.emplace_back(ImportChanges::Removal{&parent, {}, {}, {}});
    auto next = level.begin();
    const auto children = parent.childElements();
    for (std::size_t i = 0; i != children.size() && next != level.end(); ++i)
        if (children[i].get() == *next) {
            removal.positions.push_back(i);
            removal.lost.collect(**next++);
        }
    removal.lost.detach(model);
    removal.elements = host::takeChildren(parent, removal.positions);
}

void giveFreeNames(std::vector<ImportChanges::Misnaming>& renumbered) {
    std::erase_if(renumbered, [](const ImportChanges::Misnaming& one) {
        const auto* const parent = one.element->parentElement();
        if (parent == nullptr || parent->isNameTaken(one.nameInDocument))
            return false;
        host::rename(*one.element, one.nameInDocument);
        return true;
    });
}

} // namespace

std::vector<Element*> missingElements(const ImportChanges& changes, Match match) {
    std::vector<Element*> missing;
    for (Elements rest = changes.unmet; !rest.empty();) {
        const auto level = levelOf(rest);
        UnmetLevel(level).appendMissing(match, missing);
        rest = rest.subspan(level.size());
    }
    return missing;
}

bool removeMissing(host::Model& model, Match match, ImportChanges& changes) {
    const auto missing = missingElements(changes, match);
    for (Elements rest = missing; !rest.empty();) {
        const auto level = levelOf(rest);
        removeLevel(level, model, changes.removals);
        rest = rest.subspan(level.size());
    }
    if (missing.empty())
        return false;
    changes.unmet.clear();
    giveFreeNames(changes.renumbered);
    return std::ranges::any_of(changes.removals,
                               [](const auto& removal) { return !removal.lost.empty(); });
}

} // namespace corvane::workbench::core
