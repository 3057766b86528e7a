#include "model/ChildList.hpp"

#include "model/Internals.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>

#include <algorithm>
#include <bit>
#include <iterator>
#include <utility>

namespace corvane::workbench::model {

namespace {

constexpr std::size_t kSearchedAsItIs = 16; // children, up to which a scan beats an index
constexpr std::string_view kUnnamed = "Unnamed";

bool tooFull(std::size_t entries, std::size_t slots) { return entries * 4 > slots * 3; }

} // namespace

std::uint32_t ChildList::hashOf(std::string_view name) {
    const std::size_t hash = std::hash<std::string_view>{}(name);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

Element* ChildList::find(std::string_view name) const {
    if (elements_.size() > kSearchedAsItIs) {
        const Slot* const slot = findSlot(name);
        return slot == nullptr ? nullptr : elements_[slot->position - 1].get();
    }
    const auto found = std::ranges::find_if(
        elements_, [&](const auto& element) { return element->name() == name; });
    return found == elements_.end() ? nullptr : found->get();
}

ChildList::Slot* ChildList::findSlot(std::string_view name) const {
    if (slots_.empty())
        buildIndex(std::bit_ceil(elements_.size() * 2));
    const auto hash = hashOf(name);
    for (std::size_t i = hash;; ++i) {
        Slot& slot = slots_[i & (slots_.size() - 1)];
        if (slot.position == 0)
            return nullptr;
        if (slot.hash == hash && slot.position != kLeft &&
            elements_[slot.position - 1]->name() == name)
            return &slot;
    }
}

void ChildList::dropIndex() {
    slots_.clear();
    usedSlots_ = 0;
}

void ChildList::buildIndex(std::size_t slotCount) const {
    slots_.assign(slotCount, Slot{});
    usedSlots_ = 0;
    for (std::uint32_t position = 0; position != elements_.size(); ++position)
        if (const auto& name = elements_[position]->name(); !name.empty())
            insert(hashOf(name), position + 1);
}

// Puts a child that has just got its name in the index, which is there.
void ChildList::enter(const Element& child, std::uint32_t position) const {
    if (tooFull(usedSlots_ + 1, slots_.size()))
        buildIndex(std::bit_ceil(elements_.size() * 2));
    else
        insert(hashOf(child.name()), position);
}

void ChildList::insert(std::uint32_t hash, std::uint32_t position) const {
    std::size_t i = hash & (slots_.size() - 1);
    while (slots_[i].position != 0)
        i = (i + 1) & (slots_.size() - 1);
    slots_[i] = {hash, position};
    ++usedSlots_;
}

void ChildList::changeName(Element& child, std::string name) {
    nextNumbers_.reset(); // the old name, perhaps a numbered one, is free again
    if (slots_.empty()) {
        Internals::name(child) = std::move(name);
        return;
    }
    Slot* const slot = findSlot(child.name());
    const auto position = std::exchange(slot->position, kLeft);
    Internals::name(child) = std::move(name);
    enter(child, position);
}

// A child that waits for its new name has none meanwhile, and does not stand in the index: no other
// name can be like it, whatever characters names are made of.
void ChildList::changeNames(std::span<Element* const> children,
                            std::span<const std::string_view> names) {
    const bool indexed = elements_.size() > kSearchedAsItIs;
    std::vector<std::uint32_t> positions(indexed ? names.size() : 0);
    std::vector<std::string> before(names.size());
    nextNumbers_.reset(); // the old names are free again
    for (std::size_t i = 0; i != names.size(); ++i) {
        Element& child = *children[i];
        if (indexed)
            positions[i] = std::exchange(findSlot(child.name())->position, kLeft);
        before[i].swap(Internals::name(child));
    }
    try {
        for (std::size_t i = 0; i != names.size(); ++i) {
            Element& child = *children[i];
            Internals::name(child) = freeName(names[i], nullptr);
            if (indexed)
                enter(child, positions[i]);
        }
    } catch (...) {
        for (std::size_t i = 0; i != names.size(); ++i)
            Internals::name(*children[i]).swap(before[i]);
        dropIndex();
        nextNumbers_.reset();
        throw;
    }
}

std::string ChildList::freeName(std::string_view name, const Element* except) const {
    if (name.empty())
        name = kUnnamed;
    const auto taken = [&](std::string_view candidate) {
        const Element* const owner = find(candidate);
        return owner != nullptr && owner != except;
    };
    if (!taken(name))
        return std::string(name);

    // The numbers below the one to try next are taken, by `except` perhaps.
    std::uint32_t first = 2;
    if (except == nullptr && nextNumbers_ == nullptr)
        nextNumbers_ = std::make_unique<Numbers>();
    auto& number = except != nullptr
                       ? first
                       : nextNumbers_->try_emplace(std::string(name), first).first->second;
    for (;;) {
        std::string candidate(name);
        candidate.append(" ").append(utils::numeric::detail::formatNumber(number).view());
        if (!taken(candidate))
            return candidate;
        ++number;
    }
}

void ChildList::append(std::unique_ptr<Element> child) {
    elements_.push_back(std::move(child));
    if (!slots_.empty())
        enter(*elements_.back(), static_cast<std::uint32_t>(elements_.size()));
}

std::unique_ptr<Element> ChildList::remove(const Element& child) {
    const auto found = std::ranges::find(elements_, &child, &std::unique_ptr<Element>::get);
    auto removed = std::move(*found);
    elements_.erase(found);
    dropIndex();
    nextNumbers_.reset(); // lower numbers may be free again
    return removed;
}

std::vector<std::unique_ptr<Element>> ChildList::take(std::span<const std::size_t> positions) {
    if (positions.empty())
        return {};
    std::vector<std::unique_ptr<Element>> taken;
    taken.reserve(positions.size());
    std::size_t kept = positions.front();
    for (std::size_t i = positions.front(); i != elements_.size(); ++i) {
        if (taken.size() != positions.size() && positions[taken.size()] == i)
            taken.push_back(std::move(elements_[i]));
        else
            elements_[kept++] = std::move(elements_[i]);
    }
    elements_.resize(kept);
    dropIndex();
    nextNumbers_.reset(); // lower numbers may be free again
    return taken;
}

void ChildList::moveLast(std::span<const std::size_t> positions) {
    std::size_t from = elements_.size() - positions.size();
    if (positions.empty() || positions.front() == from)
        return; // they stand there already
    const auto first = elements_.begin() + static_cast<std::ptrdiff_t>(from);
    std::vector last(std::make_move_iterator(first), std::make_move_iterator(elements_.end()));
    for (std::size_t to = elements_.size(); !last.empty();) {
        --to;
        if (positions[last.size() - 1] == to) {
            elements_[to] = std::move(last.back());
            last.pop_back();
        } else {
            elements_[to] = std::move(elements_[--from]);
        }
    }
    dropIndex();
}

std::vector<std::unique_ptr<Element>> ChildList::release() {
    dropIndex();
    nextNumbers_.reset();
    return std::exchange(elements_, {});
}

} // namespace corvane::workbench::model
