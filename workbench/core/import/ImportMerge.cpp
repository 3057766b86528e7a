#include "workbench/core/import/ImportMerge.hpp"

#include "workbench/core/import/IdentityIndex.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace corvane::workbench::core {

namespace {

using host::Staging;
using model::Element;
using Elements = std::vector<std::unique_ptr<Element>>;

bool sameIdentity(const Element& a, const Element& b) {
    return &a.elementClass() == &b.elementClass() &&
           a.getSkillElement()->hasImportIdOf(*b.getSkillElement());
}

/// What the merges of all levels have in common.
struct Merge {
    Match match;
    ImportOutcome* outcome;
    ImportChanges* changes; // may be null
};

/// The merge of one level, and of the levels below it.
class LevelMerge {
public:
    LevelMerge(Element& parent, Elements staged, const Merge& merge)
        : parent_(parent),
          staged_(std::move(staged)),
          partners_(staged_.size()),
          match_(merge.match),
          outcome_(*merge.outcome),
          changes_(merge.changes) {}
    LevelMerge(const LevelMerge&) = delete;
    LevelMerge& operator=(const LevelMerge&) = delete;
    ~LevelMerge() {
        for (const auto& child : parent_.childElements())
            Staging::setPaired(*child, false);
    }

    /// Where the staged elements stand afterwards, in their order.
    std::vector<Element*> run() {
        if (!parent_.childElements().empty()) {
            pairByName();
            if (match_ == Match::identity)
                pairByIdentity();
            replacePaired();
        }
        return placeAll();
    }

    /// Notes what was there before and has met nothing.
    void noteUnmet() const {
        if (changes_ == nullptr || met_ == parent_.childElements().size())
            return;
        for (const auto& child : parent_.childElements())
            if (!Staging::isPaired(*child))
                changes_->unmet.push_back(child.get());
    }

private:
    bool arePartners(const Element& staged, const Element& existing) const {
        if (match_ == Match::path) // of one name: nobody asks otherwise
            return &staged.elementClass() == &existing.elementClass();
        return sameIdentity(staged, existing);
    }

    void pair(std::size_t index, Element& existing) {
        partners_[index] = &existing;
        setMet(existing);
    }

    void setMet(Element& element) {
        Staging::setPaired(element, true);
        ++met_;
    }

    // Names rarely change between two imports, so most pairs are found without an index; and of
    // several elements with one identity, the one of the same name is meant.
    void pairByName() {
        for (std::size_t i = 0; i != staged_.size(); ++i) {
            fetchBothAhead(i);
            Element* const existing = existingNamed(i);
            if (existing != nullptr && arePartners(*staged_[i], *existing))
                pair(i, *existing);
        }
    }

    // Partners stand at the same places, as a rule.
    void fetchBothAhead(std::size_t index) const {
        fetchAhead(staged_, index);
        fetchAhead(parent_.childElements(), index);
    }

    // The existing element with the name of a staged one. As a rule it stands at the same place.
    Element* existingNamed(std::size_t index) {
        const auto existing = parent_.childElements();
        const auto& name = staged_[index]->name();
        if (index < existing.size() && existing[index]->name() == name)
            return existing[index].get();
        return parent_.findChild(name);
    }

    void pairByIdentity() {
        std::optional<IdentityIndex> index;
        std::vector<std::size_t> misnamed;
        for (std::size_t i = 0; i != staged_.size(); ++i) {
            if (partners_[i] != nullptr)
                continue;
            const auto id = staged_[i]->getSkillElement()->importId();
            if (!id)
                continue;
            if (!index)
                index.emplace(parent_.childElements());
            if (Element* const existing = index->take(staged_[i]->elementClass(), *id)) {
                pair(i, *existing);
                if (nameOnReplacement(*existing, *staged_[i]) != staged_[i]->name())
                    misnamed.push_back(i);
            }
        }
        noteMisleading(misnamed);
    }

    // Of the elements that keep their names, those that whoever reads the document takes for
    // others.
    void noteMisleading(const std::vector<std::size_t>& misnamed) {
        if (changes_ == nullptr || misnamed.empty())
            return;
        std::unordered_set<std::string_view> names;
        names.reserve(staged_.size());
        for (const auto& staged : staged_)
            names.insert(staged->name());
        for (const auto i : misnamed)
            if (names.contains(partners_[i]->name()))
                changes_->misleading.push_back({partners_[i], staged_[i]->name()});
    }

    void replacePaired() {
        std::vector<host::NewName> renamed;
        for (std::size_t i = 0; i != staged_.size(); ++i) {
            fetchBothAhead(i);
            if (Element* const existing = partners_[i]) {
                auto name = nameOnReplacement(*existing, *staged_[i]);
                if (name != existing->name())
                    renamed.push_back({existing, std::move(name)});
                replace(i, *existing);
            }
        }
        rename(renamed);
    }

    static std::string nameOnReplacement(const Element& existing, const Element& staged) {
        const bool keeps = staged.getSkillElement()->preserveExistingNameOnImport();
        return keeps ? existing.name() : staged.name();
    }

    void rename(const std::vector<host::NewName>& renamed) {
        auto* const notes = changes_ == nullptr ? nullptr : &changes_->renamings;
        const auto first = notes == nullptr ? 0 : notes->size();
        if (notes != nullptr)
            for (const auto& [element, name] : renamed)
                notes->push_back({element, element->name(), element->name(), name});
        host::renameAll(renamed);
        if (notes != nullptr)
            for (auto& note : std::span(*notes).subspan(first))
                note.after = note.element->name();
    }

    void replace(std::size_t index, Element& existing) {
        const auto staged = std::exchange(staged_[index], nullptr);
        auto children = Staging::releaseChildren(*staged);
        const bool moved = match_ != Match::identity && !sameIdentity(*staged, existing);
        staged->getSkillElement()->importMerge(*existing.getSkillElement());
        auto replaced = host::replaceSkillElement(existing, *staged);
        if (changes_ != nullptr)
            changes_->replacements.push_back({&existing, std::move(replaced), moved});
        outcome_.successors.push_back(&existing);
        ++outcome_.replaced;
        LevelMerge below(existing, std::move(children), {match_, &outcome_, changes_});
        below.run();
        below.noteUnmet();
    }

    std::vector<Element*> placeAll() {
        std::vector<Element*> places(partners_);
        for (std::size_t i = 0; i != staged_.size(); ++i)
            if (partners_[i] == nullptr)
                places[i] = &place(i);
        return places;
    }

    Element& place(std::size_t index) {
        const std::string name = staged_[index]->name();
        std::string candidate = name;
        for (std::uint64_t number = 2; Element* const taken = parent_.findChild(candidate);
             ++number) {
            Staging::tryName(*staged_[index], candidate);
            if (!Staging::isPaired(*taken) && arePartners(*staged_[index], *taken)) {
                pair(index, *taken);
                replace(index, *taken);
                return *taken;
            }
            candidate = name + " ";
            candidate.append(utils::numeric::detail::formatNumber(number).view());
        }
        auto& added = host::appendChild(parent_, std::move(staged_[index]), candidate);
        noteAppended();
        if (changes_ != nullptr && candidate != name)
            changes_->renumbered.push_back({&added, name});
        setMet(added); // it is not one to be replaced
        outcome_.added += 1 + countElements(added.childElements());
        return added;
    }

    void noteAppended() {
        if (changes_ == nullptr)
            return;
        if (!appending_) {
            appending_ = changes_->appendings.size();
            changes_->appendings.push_back({&parent_, 0});
        }
        ++changes_->appendings[*appending_].count;
    }

    Element& parent_;
    Elements staged_;
    std::vector<Element*> partners_; // of each staged element; null where there is none
    std::size_t met_ = 0;            // children that are paired or new
    Match match_;
    ImportOutcome& outcome_;
    ImportChanges* changes_;               // may be null
    std::optional<std::size_t> appending_; // this level's, among the changes
};

} // namespace

ImportOutcome mergeStaged(Staging& staging, Match match, ImportChanges* changes) {
    ImportOutcome outcome;
    outcome.top = LevelMerge(staging.target(), staging.release(), {match, &outcome, changes}).run();
    return outcome;
}

} // namespace corvane::workbench::core
