#pragma once

#include "dbimport/facts/Messages.hpp"
#include "dbimport/tree/ItemText.hpp"
#include "dbimport/tree/LayoutNotes.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// How many nodes the layout of a file may still visit. An array of a hundred characters in the
/// file can ask for billions of visits, some of which write nothing.
class ElementBudget {
public:
    explicit ElementBudget(std::uint64_t elements) : maximum_(elements), left_(elements) {}

    /// Throws std::runtime_error when fewer than `elements` are left.
    void require(std::uint64_t elements) const {
        if (elements > left_)
            fail(Message::tooManyElements, maximum_);
    }

    /// Takes one; throws when none is left.
    void spend() {
        require(1);
        --left_;
    }

private:
    std::uint64_t maximum_;
    std::uint64_t left_;
};

/// Where the walk over a data block's tree is: the dotted names of the data block and the structs
/// around, as in Data.motors[2], and the index that an array gives its element.
///
/// One path serves the whole walk; a struct extends it while it writes its members (`Level`).
class ElementPath {
public:
    /// `tracked` says whether anyone will ask for paths: without existing items in the data block
    /// there is nothing to look up, and no names are joined. A path that is tracked for nothing
    /// changes no document (DataBlockImportTest.ItemsKeepTheirCommands).
    ElementPath(std::string_view dataBlockName, bool tracked, ElementBudget& budget)
        : dottedPath_(dataBlockName), tracked_(tracked), budget_(&budget) {}
    ElementPath(const ElementPath&) = delete;
    ElementPath& operator=(const ElementPath&) = delete;

    /// The names of the data block and of the structs around, joined by dots; only the data block's
    /// for a path that is not tracked.
    [[nodiscard]] std::string_view dottedPath() const { return dottedPath_; }

    /// The text such as [3] or [0,-1] that the enclosing array lays on its element; empty where
    /// there is none.
    [[nodiscard]] std::string_view indexSuffix() const { return indexSuffix_; }

    /// Keeps a view of `suffix`, which must live until the next call.
    void setIndexSuffix(std::string_view suffix) { indexSuffix_ = suffix; }
    void clearIndexSuffix() { indexSuffix_ = {}; }

    /// `name` and the index suffix. Valid until the next call.
    [[nodiscard]] std::string_view indexedName(std::string_view name);

    [[nodiscard]] bool tracked() const { return tracked_; }

    /// The path of the item that is called `name` here; only for a tracked path. Valid until the
    /// next call.
    [[nodiscard]] std::string_view itemPath(std::string_view name);

    [[nodiscard]] ElementBudget& budget() { return *budget_; }

    /// What this walk came across and made no item of.
    [[nodiscard]] LayoutNotes& notes() { return notes_; }

    /// The ready texts of the items of this walk.
    [[nodiscard]] itemText::Shared& itemTexts() { return itemTexts_; }

    /// The members of the struct `name`: the path is longer by its name and index for as long as
    /// this object lives, and no index lies on the members.
    class Level {
    public:
        Level(ElementPath& path, std::string_view name);
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { path_->dottedPath_.resize(size_); }

    private:
        ElementPath* path_;
        std::size_t size_;
    };

private:
    void extend(std::string_view name);

    std::string dottedPath_;
    std::string_view indexSuffix_;
    std::string name_; // of the element that was asked for last
    std::string path_; // of the item that was asked for last
    bool tracked_;
    ElementBudget* budget_;
    LayoutNotes notes_;
    itemText::Shared itemTexts_;
};

} // namespace corvane::workbench::plugins::s7Driver
