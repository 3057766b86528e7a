#include "EditorTesting.hpp"

#include "workbench/core/project/ElementWalk.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <functional>
#include <random>

namespace corvane::workbench::core::test {

namespace {

using Elements = std::vector<model::Element*>;

constexpr std::string_view kPlant = R"(
    {"@Skill.S7.PLC": {"name": "P", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "a"}},
        {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 1, "children": [
            {"@Skill.S7.Item": {"name": "c", "address": "DBW0", "command": "/P/a"}},
            {"@Skill.S7.Struct": {"name": "d", "children": [
                {"@Skill.S7.Item": {"name": "e", "address": "DBW4", "command": "/P/e"}}]}}]}},
        {"@Skill.S7.DataBlock": {"name": "c", "DBNumber": 2}}]}},
    {"@Skill.S7.PLC": {"name": "Q", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "b"}}]}},
    {"@Skill.Wiring.Rack": {"name": "R", "children": [
        {"@Skill.Wiring.Pin": {"name": "a", "id": "1", "value": "v", "peer": "/R/b"}},
        {"@Skill.Wiring.Box": {"name": "c", "id": "2", "children": [
            {"@Skill.Wiring.Pin": {"name": "d", "id": "1", "value": "v", "peer": "/P/e"}}]}}]}})";

/// Makes edits at random, few names long, so that what one step takes away another brings back.
class Walker {
public:
    /// Called before each import.
    using LookAhead = std::function<void(model::Element& target, const std::string& document,
                                         const ImportOptions& options)>;

    Walker(Editor& editor, const PluginHost& plugins, unsigned seed, LookAhead lookAhead)
        : editor_(editor), plugins_(plugins), random_(seed), lookAhead_(std::move(lookAhead)) {}

    /// One edit, which the editor may refuse.
    void edit() {
        try {
            switch (below(7)) {
            case 0:
                add();
                break;
            case 1:
                editor_.rename(*any(), name());
                break;
            case 2:
                editor_.remove(some(2));
                break;
            case 3:
                editor_.move(some(3), *anyParent(), below(4));
                break;
            case 4:
                import();
                break;
            default:
                setValue();
                break;
            }
        } catch (const std::runtime_error&) {
            return; // refused, which is as good an edit as any
        }
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }

private:
    std::string name() { return std::string(1, static_cast<char>('a' + below(5))); }

    Elements all() {
        Elements elements;
        forEachElement(editor_.project().model().root().childElements(),
                       [&](model::Element& element) { elements.push_back(&element); });
        return elements;
    }

    model::Element* any() {
        const auto elements = all();
        if (elements.empty())
            return &editor_.project().model().root();
        return elements[below(elements.size())];
    }

    model::Element* anyParent() {
        return below(6) == 0 ? &editor_.project().model().root() : any();
    }

    Elements some(std::size_t most) {
        Elements elements;
        for (auto count = 1 + below(most); count != 0; --count)
            elements.push_back(any());
        return elements;
    }

    void add() {
        const auto& skill = plugins_.skills()[below(plugins_.skills().size())];
        const auto& entry = skill.classes[below(skill.classes.size())];
        // A new PLC without an address is another one when it is loaded again, on purpose.
        if (entry.elementClass->name() != "PLC")
            editor_.add(*anyParent(), entry, name());
    }

    void setValue() {
        auto& element = *any();
        const auto numbers = std::u16string(u"DBW") + static_cast<char16_t>(u'0' + below(9));
        const std::vector<std::pair<std::string, ui::ControlValue>> values{
            {"address", numbers},
            {"dbNumber", std::uint64_t{1 + below(3)}},
            {"command", pathOf(*any())},
            {"peer", pathOf(*any())},
            {"command", std::u16string()},
            {"writable", below(2) == 0},
            {"value", numbers},
            {"rack", std::uint64_t{below(9)}}};
        const auto& [key, value] = values[below(values.size())];
        editor_.setValues(element, std::vector{FieldValue{key, value}});
    }

    static std::u16string pathOf(const model::Element& element) {
        const auto path = element.path();
        return {path.begin(), path.end()};
    }

    void import() {
        const auto id = std::to_string(below(3));
        const ImportOptions options{.match = below(2) == 0 ? Match::path : Match::identity,
                                    .removeMissing = below(2) == 0};
        if (below(2) == 0)
            importInto(*any(),
                       R"([{"@Skill.Wiring.Pin": {"name": ")" + name() + R"(", "id": ")" + id +
                           R"(", "peer": "/R/)" + name() +
                           R"("}}, {"@Skill.Wiring.Box": {"name": ")" + name() +
                           R"(", "id": "2", "children": [{"@Skill.Wiring.Pin": )" +
                           R"({"name": "a", "id": "1"}}]}}])",
                       options);
        else
            importInto(*any(),
                       R"([{"@Skill.S7.Command": {"name": ")" + name() +
                           R"("}}, {"@Skill.S7.DataBlock": {"name": ")" + name() +
                           R"(", "DBNumber": )" + id +
                           R"(, "children": [{"@Skill.S7.Item": {"name": ")" + name() +
                           R"(", "address": "DBW0", "command": "/P/a"}}]}}])",
                       options);
    }

    void importInto(model::Element& target, const std::string& document,
                    const ImportOptions& options) {
        lookAhead_(target, document, options);
        editor_.import(target, document, options);
    }

    Editor& editor_;
    const PluginHost& plugins_;
    std::mt19937 random_;
    LookAhead lookAhead_;
};

class EditorWalkTest : public EditorTest, public testing::WithParamInterface<unsigned> {};

} // namespace

TEST_P(EditorWalkTest, EveryStepCanBeTakenBackAndMadeAgain) {
    auto project = load(kPlant);
    Editor editor(project);
    Follower follower(project.model().root());
    editor.setObserver(&follower);
    // Whatever has been undone and is waiting, a preview leaves it as it is.
    const auto lookAhead = [&](model::Element& target, const std::string& document,
                               const ImportOptions& options) {
        const auto before = sightOf(project);
        const auto refusal =
            messageOf([&] { static_cast<void>(editor.previewImport(target, document, options)); });
        EXPECT_EQ(sightOf(project), before) << refusal;
        follower.compare();
    };
    Walker walker(editor, plugins, GetParam(), lookAhead);
    std::vector<Sight> states{sightOf(project)}; // by the number of steps that are done
    std::size_t done = 0;

    for (int i = 0; i != 120 && !HasFailure(); ++i) {
        const auto changes = follower.historyChanges;
        switch (walker.below(5)) {
        case 0:
            if (editor.canUndo())
                --done;
            editor.undo();
            break;
        case 1:
            if (editor.canRedo())
                ++done;
            editor.redo();
            break;
        default:
            walker.edit();
            if (follower.historyChanges != changes) {
                EXPECT_EQ(follower.historyChanges, changes + 1);
                states.resize(done + 1);
                states.push_back(sightOf(project));
                ++done;
                expectAsReloaded(project);
            }
        }
        EXPECT_EQ(sightOf(project), states[done]) << "seed " << GetParam() << ", round " << i;
        EXPECT_EQ(editor.isModified(), done != 0);
        follower.compare();
    }
    while (editor.canUndo()) {
        editor.undo();
        EXPECT_EQ(sightOf(project), states[--done]);
    }
    while (editor.canRedo()) {
        editor.redo();
        EXPECT_EQ(sightOf(project), states[++done]);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, EditorWalkTest, testing::Range(1U, 41U));

} // namespace corvane::workbench::core::test
