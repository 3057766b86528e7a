#include "workbench/core/import/ImportReport.hpp"

#include "workbench/core/import/MissingElements.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <algorithm>
#include <functional>
#include <utility>

namespace corvane::workbench::core {

namespace {

using Change = ImportedElement::Change;
using model::Element;

/// Names of elements, found by the element.
class NamesOf {
public:
    void add(const Element& element, std::string_view name) { names_.emplace_back(&element, name); }
    void sort() { std::ranges::sort(names_); }

    [[nodiscard]] std::optional<std::string_view> find(const Element* element) const {
        const auto found = std::ranges::lower_bound(names_, element, std::less(), &Entry::first);
        if (found == names_.end() || found->first != element)
            return std::nullopt;
        return found->second;
    }

    [[nodiscard]] std::size_t size() const { return names_.size(); }

private:
    using Entry = std::pair<const Element*, std::string_view>;
    std::vector<Entry> names_;
};

// Where the name in the file is taken, an element may get back the very name that it had.
bool isRenamed(const ImportChanges::Renaming& renaming) {
    return renaming.before != renaming.after;
}

} // namespace

/// What elements were called before an import, and what its document calls the new ones.
class PathsBefore {
public:
    explicit PathsBefore(const ImportChanges& changes) {
        for (const auto& renaming : changes.renamings)
            if (isRenamed(renaming))
                renamed_.add(*renaming.element, renaming.before);
        renamed_.sort();
        for (const auto& [element, name] : changes.renumbered)
            renumbered_.add(*element, name);
        renumbered_.sort();
    }

    [[nodiscard]] const NamesOf& renamed() const { return renamed_; }

    /// The path of an element that was there before.
    [[nodiscard]] std::string ofOld(const Element* element) const {
        if (element == nullptr)
            return {};
        return ofOld(element->parentElement()) + "/" +
               model::escapeName(renamed_.find(element).value_or(element->name()));
    }

    /// The path that the document gives a new element.
    [[nodiscard]] std::string ofNew(const Element& element) const {
        const auto* const parent = element.parentElement();
        return (parent == nullptr ? "" : parent->path()) + "/" +
               model::escapeName(renumbered_.find(&element).value_or(element.name()));
    }

private:
    NamesOf renamed_;
    NamesOf renumbered_;
};

std::string ImportedElement::path() const {
    return (parent_ == nullptr ? "" : parent_->path()) + element_->path();
}

std::optional<std::string> ImportedElement::from() const {
    auto before = change_ == Change::added ? paths_->ofNew(*element_)
                                           : paths_->ofOld(parent_) + paths_->ofOld(element_);
    if (before == path())
        return std::nullopt;
    return before;
}

std::vector<MemberChange> ImportedElement::members() const {
    if (replaced_ == nullptr)
        return {};
    return ElementComparison().changes(*replaced_, *element_->getSkillElement());
}

/// Goes through the changes of an import.
class ImportVisit {
public:
    ImportVisit(const ImportChanges& changes, Match match,
                function_ref<void(const ImportedElement&)> visit)
        : changes_(changes), match_(match), visit_(visit), paths_(changes) {}

    ImportCounts run(const Element* newTarget) {
        visitAdded(newTarget);
        visitReplaced();
        visitRenamed();
        visitRemoved();
        visitMissing();
        return counts_;
    }

private:
    void tell(std::size_t& count, ImportedElement imported) {
        ++count;
        visit_(imported);
    }

    [[nodiscard]] ImportedElement imported(Change change, const Element& element) const {
        return {change, element, paths_};
    }

    void visitAdded(const Element* newTarget) {
        const auto add = [&](const Element& element) {
            tell(counts_.added, imported(Change::added, element));
        };
        if (newTarget != nullptr)
            add(*newTarget);
        for (const auto& [parent, count] : changes_.appendings)
            forEachElement(parent->childElements().last(count), add);
    }

    void visitReplaced() {
        ElementComparison comparison;
        for (const auto& [element, replaced, moved] : changes_.replacements) {
            if (moved || !comparison.areEqual(*replaced, *element->getSkillElement())) {
                auto change = imported(moved ? Change::moved : Change::changed, *element);
                change.replaced_ = replaced.get();
                tell(moved ? counts_.moved : counts_.changed, change);
            } else if (!paths_.renamed().find(element)) {
                ++counts_.unchanged;
            }
        }
    }

    void visitRenamed() {
        for (const auto& renaming : changes_.renamings)
            if (isRenamed(renaming)) {
                auto change = imported(Change::renamed, *renaming.element);
                change.nameBefore_ = renaming.before;
                tell(counts_.renamed, change);
            }
    }

    void visitRemoved() {
        for (const auto& removal : changes_.removals)
            forEachElement(removal.elements, [&](const Element& element) {
                auto change = imported(Change::removed, element);
                change.parent_ = removal.parent;
                tell(counts_.removed, change);
            });
    }

    void visitMissing() {
        const auto visit = [&](const Element& element) {
            tell(counts_.missing, imported(Change::missing, element));
        };
        for (const auto* const element : missingElements(changes_, match_)) {
            visit(*element);
            forEachElement(element->childElements(), visit);
        }
    }

    const ImportChanges& changes_;
    Match match_;
    function_ref<void(const ImportedElement&)> visit_;
    PathsBefore paths_;
    ImportCounts counts_;
};

ImportCounts countImported(const ImportChanges& changes, Match match, const Element* newTarget,
                           function_ref<void(const ImportedElement&)> visit) {
    return ImportVisit(changes, match, visit).run(newTarget);
}

ImportCounts countImported(const ImportChanges& changes, Match match, const Element* newTarget) {
    return countImported(changes, match, newTarget, [](const ImportedElement&) {});
}

} // namespace corvane::workbench::core
