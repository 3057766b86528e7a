#include "EditorTesting.hpp"

#include "workbench/core/edit/workspace/Fields.hpp"
#include "workbench/core/project/ElementWalk.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>

namespace corvane::workbench::core::test {

using model::Element;
using utils::string::detail::utf16ToUtf8;

namespace {

std::string textOf(const ui::ControlValue& value) {
    if (const auto* const text = std::get_if<std::u16string>(&value))
        return utf16ToUtf8(*text);
    if (const auto* const flag = std::get_if<bool>(&value))
        return *flag ? "true" : "false";
    if (const auto* const number = std::get_if<std::uint64_t>(&value))
        return std::to_string(*number);
    return {};
}

std::ostream& operator<<(std::ostream& stream, const std::vector<std::string>& lines) {
    for (const auto& line : lines)
        stream << line << '\n';
    return stream;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Sight& sight) {
    return stream << sight.document << '\n' << sight.problems << sight.fields;
}

void Follower::aboutToInsert(Element& parent, std::size_t position, std::size_t count) {
    EXPECT_EQ(pending_.parent, nullptr);
    EXPECT_EQ(childrenOf(parent), children_[&parent]);
    EXPECT_LE(position, parent.childElements().size());
    pending_ = {&parent, position, count, childrenOf(parent)};
}

void Follower::inserted() {
    ASSERT_NE(pending_.parent, nullptr);
    const auto now = childrenOf(*pending_.parent);
    auto rest = now;
    const auto first = rest.begin() + static_cast<std::ptrdiff_t>(pending_.position);
    rest.erase(first, first + static_cast<std::ptrdiff_t>(pending_.count));
    EXPECT_EQ(rest, pending_.expected);
    read(*pending_.parent);
    pending_ = {};
}

void Follower::aboutToRemove(Element& parent, std::size_t position, std::size_t count) {
    EXPECT_EQ(pending_.parent, nullptr);
    auto rest = childrenOf(parent);
    EXPECT_EQ(rest, children_[&parent]);
    ASSERT_LE(position + count, rest.size());
    const auto first = rest.begin() + static_cast<std::ptrdiff_t>(position);
    rest.erase(first, first + static_cast<std::ptrdiff_t>(count));
    pending_ = {&parent, position, count, std::move(rest)};
}

void Follower::removed() {
    ASSERT_NE(pending_.parent, nullptr);
    EXPECT_EQ(childrenOf(*pending_.parent), pending_.expected);
    children_[pending_.parent] = pending_.expected;
    pending_ = {};
}

void Follower::aboutToReset(Element& element) {
    EXPECT_EQ(pending_.parent, nullptr);
    pending_.parent = &element;
}

void Follower::reset(Element& element) {
    EXPECT_EQ(pending_.parent, &element);
    read(element);
    pending_ = {};
    ++resets;
}

Follower::Children Follower::childrenOf(const Element& parent) {
    Children children;
    for (const auto& child : parent.childElements())
        children.push_back(child.get());
    return children;
}

void Follower::read(Element& parent) {
    children_[&parent] = childrenOf(parent);
    for (const auto& child : parent.childElements()) {
        names_[child.get()] = child->name();
        read(*child);
    }
}

void Follower::compare() const { compare(*root_); }

void Follower::compare(const Element& parent) const {
    EXPECT_EQ(children_.at(&parent), childrenOf(parent));
    for (const auto& child : parent.childElements()) {
        EXPECT_EQ(names_.at(child.get()), child->name());
        compare(*child);
    }
}

Sight EditorTest::sightOf(const Project& project) const {
    Sight sight{elementsOf(project), errorsOf(project), {}};
    forEachElement(project.model().root().childElements(), [&](Element& element) {
        const OpenForm form(element);
        for (const auto* const control : form.controls())
            sight.fields.push_back(element.path() + ": " + utf16ToUtf8(control->texts().label) +
                                   ": " + textOf(control->value()) +
                                   (control->isVisible() ? "" : " (hidden)"));
    });
    return sight;
}

void EditorTest::expectAsReloaded(const Project& project) const {
    EXPECT_EQ(sightOf(reloaded(project)), sightOf(project));
}

void EditorTest::expectUndoAndRedo(Editor& editor, const Sight& before) const {
    const auto after = sightOf(editor.project());
    editor.undo();
    EXPECT_EQ(sightOf(editor.project()), before);
    editor.redo();
    EXPECT_EQ(sightOf(editor.project()), after);
}

const LoadedClass& EditorTest::classOf(std::string_view key) const {
    return *plugins.findClass("@Skill." + std::string(key));
}

void EditorTest::set(Editor& editor, std::string_view path, std::u16string_view label,
                     ui::ControlValue value) {
    auto& element = editor.project().element(path);
    const auto keyOf = [&] { return std::string(fieldOf(OpenForm(element), label).key()); };
    const FieldValue field{keyOf(), std::move(value)};
    editor.setValues(element, {&field, 1});
}

ui::ControlValue EditorTest::shown(const Project& project, std::string_view path,
                                   std::u16string_view label) {
    const OpenForm form(project.element(path));
    return fieldOf(form, label).value();
}

void EditorTest::move(Editor& editor, const std::vector<std::string>& paths,
                      std::string_view parent, std::size_t position) {
    std::vector<Element*> elements;
    elements.reserve(paths.size());
    for (const auto& path : paths)
        elements.push_back(&editor.project().element(path));
    editor.move(elements,
                parent == "/" ? editor.project().model().root() : editor.project().element(parent),
                position);
}

} // namespace corvane::workbench::core::test
