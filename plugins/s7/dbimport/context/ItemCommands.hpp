#pragma once

#include <corvane/workbench/model/ElementReference.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

/// The commands of a data block's existing items, by item path. Made for blocks with many items:
/// the paths stand in one text, the look-up table in one array.
class ItemCommands {
public:
    /// Keeps the command, which must outlive this object; of two for one path the later counts.
    void set(std::string_view itemPath, const model::ImportReference& command);

    /// The command of that path; null where there is none.
    [[nodiscard]] const model::ImportReference* find(std::string_view itemPath) const;

private:
    struct Entry {
        std::size_t hash;
        std::size_t pathStart;
        std::size_t pathSize;
        const model::ImportReference* command;
    };

    [[nodiscard]] std::size_t slotOf(std::string_view itemPath, std::size_t hash) const;
    void grow();

    std::string paths_;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slots_; // indices of entries_ plus one, 0 for a free slot
};

} // namespace corvane::workbench::plugins::s7Driver
