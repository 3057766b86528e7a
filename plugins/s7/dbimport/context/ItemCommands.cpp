#include "dbimport/context/ItemCommands.hpp"

#include <algorithm>
#include <functional>

namespace corvane::workbench::plugins::s7Driver {

void ItemCommands::set(std::string_view itemPath, const model::ImportReference& command) {
    // Half full at most, so that a search is short.
    if (2 * (entries_.size() + 1) > slots_.size())
        grow();
    const std::size_t hash = std::hash<std::string_view>()(itemPath);
    std::uint32_t& slot = slots_[slotOf(itemPath, hash)];
    if (slot != 0) {
        entries_[slot - 1].command = &command;
        return;
    }
    entries_.push_back({hash, paths_.size(), itemPath.size(), &command});
    paths_.append(itemPath);
    slot = static_cast<std::uint32_t>(entries_.size());
}

const model::ImportReference* ItemCommands::find(std::string_view itemPath) const {
    if (slots_.empty())
        return nullptr;
    const std::uint32_t slot = slots_[slotOf(itemPath, std::hash<std::string_view>()(itemPath))];
    return slot == 0 ? nullptr : entries_[slot - 1].command;
}

// The slot of the path, or the free one where it belongs.
std::size_t ItemCommands::slotOf(std::string_view itemPath, std::size_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        if (slots_[slot] == 0)
            return slot;
        const Entry& entry = entries_[slots_[slot] - 1];
        if (entry.hash == hash &&
            std::string_view(paths_).substr(entry.pathStart, entry.pathSize) == itemPath)
            return slot;
    }
}

void ItemCommands::grow() {
    constexpr std::size_t kSmallest = 16;
    slots_.assign(std::max(kSmallest, 2 * slots_.size()), 0);
    const std::size_t mask = slots_.size() - 1;
    for (std::uint32_t index = 0; index < entries_.size(); ++index) {
        std::size_t slot = entries_[index].hash & mask;
        while (slots_[slot] != 0)
            slot = (slot + 1) & mask;
        slots_[slot] = index + 1;
    }
}

} // namespace corvane::workbench::plugins::s7Driver
