#pragma once

#include "CoreTesting.hpp"

#include "workbench/core/edit/Editor.hpp"

#include <map>
#include <ostream>
#include <string>
#include <vector>

/// What the tests of the editor work with.
namespace corvane::workbench::core::test {

/// All that can be seen of a project from outside.
struct Sight {
    std::string document;              // as a save would write it
    std::vector<std::string> problems; // every property error
    std::vector<std::string> fields;   // what each form shows: value, visibility, derived texts

    friend bool operator==(const Sight&, const Sight&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Sight& sight);
};

/// Keeps a tree of its own by what the editor tells it, as a view does, and compares it with the
/// project's after each change.
class Follower final : public EditObserver {
public:
    explicit Follower(model::Element& root) : root_(&root) { read(root); }

    void aboutToInsert(model::Element& parent, std::size_t position, std::size_t count) override;
    void inserted() override;
    void aboutToRemove(model::Element& parent, std::size_t position, std::size_t count) override;
    void removed() override;
    void renamed(model::Element& element) override { names_[&element] = element.name(); }
    void aboutToReset(model::Element& element) override;
    void reset(model::Element& element) override;
    void valuesChanged(model::Element& element) override { changed.push_back(&element); }
    void historyChanged() override { ++historyChanges; }

    /// Expects its tree to be the project's.
    void compare() const;

    std::vector<model::Element*> changed;
    std::size_t historyChanges = 0;
    std::size_t resets = 0;

private:
    using Children = std::vector<model::Element*>;
    static Children childrenOf(const model::Element& parent);
    void read(model::Element& parent);
    void compare(const model::Element& parent) const;

    model::Element* root_;
    std::map<const model::Element*, Children> children_;
    std::map<const model::Element*, std::string> names_;
    struct {
        model::Element* parent = nullptr;
        std::size_t position = 0;
        std::size_t count = 0;
        Children expected;
    } pending_; // between "about to" and "done"
};

class EditorTest : public ProjectTest {
protected:
    [[nodiscard]] Sight sightOf(const Project& project) const;

    /// Expects a project to be what saving it and loading it again gives.
    void expectAsReloaded(const Project& project) const;

    /// Undoes and redoes the last step, and expects the project to become what it was before it,
    /// and then what it is now.
    void expectUndoAndRedo(Editor& editor, const Sight& before) const;

    /// The class with this key, "@Skill." left out.
    [[nodiscard]] const LoadedClass& classOf(std::string_view key) const;

    /// Sets a field to a text, a number or a flag.
    static void set(Editor& editor, std::string_view path, std::u16string_view label,
                    ui::ControlValue value);

    /// What a field shows.
    [[nodiscard]] static ui::ControlValue shown(const Project& project, std::string_view path,
                                                std::u16string_view label);

    static void move(Editor& editor, const std::vector<std::string>& paths, std::string_view parent,
                     std::size_t position);
};

} // namespace corvane::workbench::core::test
