#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvane::workbench::gui {

/// Everything that the user can command by menu, tool bar or key.
enum class Command : std::uint8_t {
    newProject,
    openProject,
    importFile,
    saveProject,
    saveProjectAs,
    quit,
    undo,
    redo,
    rename,
    remove,
    moveUp,
    moveDown,
    pickUp,
    putHere,
    duplicate,
    changeSelected,
    copyRows,
    pasteCells,
    fillDown,
    filterTree,
    filterTable,
    showTree,
    showForm,
    showTable,
    showMemory,
    showProblems,
    nextProblem,
    expandAll,
    collapseAll,
    goToElement,
    showSummaries,
    chooseEditor,
    themeSystem,
    themeLight,
    themeDark,
    about,
    count,
};

inline constexpr std::size_t kCommandCount = static_cast<std::size_t>(Command::count);

/// What a command is called, how it looks and by which key it is given.
struct CommandInfo {
    Command id;
    const char* name; // stable, not shown
    const char* text; // English; "&" stands before the letter of the menu
    const char* icon; // of the icons folder; empty for none
    const char* shortcut;
};

/// The one table of commands, in the order of the enumeration.
inline constexpr std::array<CommandInfo, kCommandCount> kCommands{{
    {Command::newProject, "newProject", "&New Project", "new", "Ctrl+N"},
    {Command::openProject, "openProject", "&Open Project…", "open", "Ctrl+O"},
    {Command::importFile, "importFile", "&Import…", "import", "Ctrl+I"},
    {Command::saveProject, "saveProject", "&Save", "save", "Ctrl+S"},
    {Command::saveProjectAs, "saveProjectAs", "Save &As…", "save-as", "Ctrl+Shift+S"},
    {Command::quit, "quit", "&Quit", "", "Ctrl+Q"},
    {Command::undo, "undo", "&Undo", "undo", "Ctrl+Z"},
    {Command::redo, "redo", "&Redo", "redo", "Ctrl+Shift+Z"},
    {Command::rename, "rename", "Re&name", "rename", "F2"},
    {Command::remove, "remove", "Re&move", "remove", "Ctrl+Del"},
    {Command::moveUp, "moveUp", "Mo&ve Up", "", "Ctrl+Shift+Up"},
    {Command::moveDown, "moveDown", "Move &Down", "", "Ctrl+Shift+Down"},
    {Command::pickUp, "pickUp", "&Pick Up to Move", "", "Ctrl+X"},
    {Command::putHere, "putHere", "Put &Here", "", "Ctrl+V"},
    {Command::duplicate, "duplicate", "D&uplicate", "", "Ctrl+D"},
    {Command::changeSelected, "changeSelected", "&Change Selected Rows…", "change", "Ctrl+E"},
    {Command::copyRows, "copyRows", "Cop&y Rows", "", "Ctrl+C"},
    {Command::pasteCells, "pasteCells", "Pa&ste into Cells", "", "Ctrl+V"},
    {Command::fillDown, "fillDown", "Fi&ll Down", "", "Ctrl+D"},
    {Command::filterTree, "filterTree", "&Filter Tree", "filter", "Ctrl+F"},
    {Command::filterTable, "filterTable", "Filter Ta&ble", "filter", "Ctrl+Shift+F"},
    {Command::showTree, "showTree", "&Tree", "", "Alt+1"},
    {Command::showForm, "showForm", "&Properties", "form", "Alt+2"},
    {Command::showTable, "showTable", "&Elements", "table", "Alt+3"},
    {Command::showMemory, "showMemory", "&Memory", "memory", "Alt+5"},
    {Command::showProblems, "showProblems", "Pr&oblems", "problem", "Alt+4"},
    {Command::nextProblem, "nextProblem", "Ne&xt Problem", "", "F8"},
    {Command::expandAll, "expandAll", "E&xpand All", "", ""},
    {Command::collapseAll, "collapseAll", "&Collapse All", "", ""},
    {Command::goToElement, "goToElement", "&Go to Element…", "", "Ctrl+P"},
    {Command::showSummaries, "showSummaries", "Data Types and &Addresses in the Tree", "", ""},
    {Command::chooseEditor, "chooseEditor", "Te&xt Editor…", "", ""},
    {Command::themeSystem, "themeSystem", "As the &Desktop", "", ""},
    {Command::themeLight, "themeLight", "&Light", "", ""},
    {Command::themeDark, "themeDark", "Dar&k", "", ""},
    {Command::about, "about", "&About", "", ""},
}};

static_assert(
    [] {
        for (std::size_t i = 0; i != kCommandCount; ++i)
            if (static_cast<std::size_t>(kCommands[i].id) != i)
                return false;
        return true;
    }(),
    "the table follows the enumeration");

} // namespace corvane::workbench::gui
