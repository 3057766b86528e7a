#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane::workbench::model {

/// The children of an element in their order, and the look-up of their names.
///
/// Short lists are searched as they are. Longer ones get a hash index of 8 bytes a slot, which is
/// built when a name is first looked for and thrown away when a child leaves.
class ChildList {
public:
    [[nodiscard]] const std::vector<std::unique_ptr<Element>>& elements() const {
        return elements_;
    }

    [[nodiscard]] Element* find(std::string_view name) const;

    /// `name`, or the first of "NAME 2", "NAME 3" and so on that no child but `except` has. An
    /// empty name is none: "Unnamed" is used for it.
    [[nodiscard]] std::string freeName(std::string_view name, const Element* except) const;

    /// `child` has its name already.
    void append(std::unique_ptr<Element> child);
    [[nodiscard]] std::unique_ptr<Element> remove(const Element& child);
    [[nodiscard]] std::vector<std::unique_ptr<Element>> release();

    /// Removes the children at `positions`, which ascend, in one pass.
    [[nodiscard]] std::vector<std::unique_ptr<Element>>
    take(std::span<const std::size_t> positions);

    /// Moves the last children, as many as there are positions, to where they shall stand; the
    /// positions ascend.
    void moveLast(std::span<const std::size_t> positions);

    /// Gives a child a name that is free.
    void changeName(Element& child, std::string name);

    /// Gives children, each once, other names, as many; all give up theirs before the first takes
    /// its new one, or the first free one made from it. What is thrown leaves them their old ones.
    void changeNames(std::span<Element* const> children, std::span<const std::string_view> names);

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = 0; // in elements_, counted from 1; 0 is a free slot
    };
    /// The position in slots that were left: searches go on behind them.
    static constexpr std::uint32_t kLeft = 0xffffffff;

    static std::uint32_t hashOf(std::string_view name);
    [[nodiscard]] Slot* findSlot(std::string_view name) const;
    void dropIndex();
    void buildIndex(std::size_t slotCount) const;
    void insert(std::uint32_t hash, std::uint32_t position) const;
    void enter(const Element& child, std::uint32_t position) const;

    std::vector<std::unique_ptr<Element>> elements_;
    mutable std::vector<Slot> slots_; // a power of two, at most three quarters full; empty: none
    mutable std::size_t usedSlots_ = 0;

    /// The number to try next for a name that was taken before: many equal names stay cheap.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Numbers = std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>>;
    mutable std::unique_ptr<Numbers> nextNumbers_;
};

} // namespace corvane::workbench::model
