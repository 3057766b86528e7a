#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace corvane::workbench::testing {
namespace {

using model::Element;

TEST(Element, HasAClassAndASkillElement) {
    auto skillElement = std::make_unique<Machine>();
    Machine* const machine = skillElement.get();
    Element element(Machine::elementClass(), std::move(skillElement));
    EXPECT_EQ(&element.elementClass(), &Machine::elementClass());
    EXPECT_EQ(element.getSkillElement(), machine);
    EXPECT_EQ(std::as_const(element).getSkillElement(), machine);
    EXPECT_EQ(machine->modelElement(), &element);
    EXPECT_TRUE(element.isA<Machine>());
    EXPECT_FALSE(element.isA<Station>());
}

TEST(Element, StandsNowhereAtFirst) {
    const auto element = make<Machine>();
    EXPECT_EQ(element->name(), "");
    EXPECT_EQ(element->parentElement(), nullptr);
    EXPECT_EQ(element->tree(), nullptr);
    EXPECT_TRUE(element->childElements().empty());
    EXPECT_EQ(element->findChild("any"), nullptr);
}

TEST(Element, KnowsItsPlace) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& cell = add<Station>(line, "cell");
    auto& pump = add<Machine>(cell, "pump");

    EXPECT_EQ(pump.parentElement(), &cell);
    EXPECT_EQ(std::as_const(cell).parentElement(), &line);
    EXPECT_EQ(line.parentElement(), nullptr); // the root is not an element of the project
    EXPECT_EQ(pump.depth(), 3u);
    EXPECT_EQ(line.depth(), 1u);
    EXPECT_EQ(model.root().depth(), 0u);
    EXPECT_EQ(pump.tree(), &model);
    EXPECT_EQ(pump.path(), "/line/cell/pump");
    EXPECT_EQ(line.path(), "/line");
}

TEST(Element, FindsTheNearestAncestorOfAClass) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& cell = add<Station>(line, "cell");
    auto& pump = add<Machine>(cell, "pump");
    auto& valve = add<Station>(pump, "valve");

    EXPECT_EQ(valve.findAncestor<Machine>(), &as<Machine>(pump));
    EXPECT_EQ(valve.findAncestor<Station>(), &as<Station>(cell));
    EXPECT_EQ(std::as_const(cell).findAncestor<Station>(), &as<Station>(line));
    EXPECT_EQ(line.findAncestor<Station>(), nullptr);
    EXPECT_EQ(pump.findAncestor<Machine>(), nullptr);
}

TEST(Element, KeepsItsChildrenInTheirOrder) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    for (const auto* name : {"c", "a", "b"})
        add<Machine>(line, name);
    EXPECT_EQ(namesOf(line), "c,a,b,");
    host::rename(*line.findChild("a"), "z");
    EXPECT_EQ(namesOf(line), "c,z,b,");
    static_cast<void>(host::removeChild(line, *line.findChild("c")));
    EXPECT_EQ(namesOf(line), "z,b,");
}

TEST(Element, RemovedStandsNowhere) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& cell = add<Station>(line, "cell");
    auto& pump = add<Machine>(cell, "pump");

    const auto removed = host::removeChild(line, cell);
    EXPECT_EQ(removed.get(), &cell);
    EXPECT_EQ(cell.parentElement(), nullptr);
    EXPECT_EQ(cell.tree(), nullptr);
    EXPECT_EQ(pump.parentElement(), &cell);
    EXPECT_EQ(model.findElement("/line/cell"), nullptr);
}

TEST(Element, ATopmostOneCanBePutElsewhere) {
    host::Model model;
    auto& cell = add<Station>(model.root(), "cell");
    auto& pump = add<Machine>(cell, "pump");
    auto& line = add<Station>(model.root(), "line");

    host::appendChild(line, host::removeChild(model.root(), cell), "cell");
    EXPECT_EQ(cell.parentElement(), &line);
    EXPECT_EQ(pump.path(), "/line/cell/pump");
    EXPECT_EQ(model.findElement("/line/cell/pump"), &pump);
}

TEST(Element, ASubtreeCanBeBuiltBeforeItGetsItsPlace) {
    auto cell = make<Station>();
    auto& pump = add<Machine>(*cell, "pump");
    EXPECT_EQ(pump.parentElement(), cell.get());

    host::Model model;
    host::appendChild(model.root(), std::move(cell), "cell");
    EXPECT_EQ(pump.path(), "/cell/pump");
    EXPECT_EQ(pump.getSkillElement()->primaryKey(), "cell.pump");
    EXPECT_EQ(pump.findAncestor<Station>(), pump.parentElement()->getSkillElement());
}

/// A chain of stations with `levels` of them below `top`; the lowest.
Element& nest(Element& top, unsigned levels) {
    Element* lowest = &top;
    for (unsigned i = 0; i != levels; ++i)
        lowest = &add<Station>(*lowest, "s");
    return *lowest;
}

TEST(Element, StandsNoDeeperThanTheLimit) {
    host::Model model;
    auto& lowest = nest(model.root(), Element::kMaxDepth);
    EXPECT_EQ(lowest.depth(), Element::kMaxDepth);
    EXPECT_THROW(add<Machine>(lowest, "too deep"), std::runtime_error);
    EXPECT_TRUE(lowest.childElements().empty());
    EXPECT_EQ(add<Machine>(*lowest.parentElement(), "last").depth(), Element::kMaxDepth);
}

TEST(Element, NothingBelowItStandsDeeperThanTheLimit) {
    auto subtree = make<Station>();
    nest(*subtree, 2);
    host::Model model;
    auto& lowest = nest(model.root(), Element::kMaxDepth - 2);
    EXPECT_THROW(host::appendChild(lowest, std::move(subtree), "too deep"), std::runtime_error);

    subtree = make<Station>();
    nest(*subtree, 1);
    host::appendChild(lowest, std::move(subtree), "just right");
    EXPECT_EQ(lowest.findChild("just right")->childElements().front()->depth(), Element::kMaxDepth);
}

TEST(Element, ReplacesItsSkillElement) {
    host::Model model;
    auto& pump = add<Machine>(model.root(), "pump");
    auto successor = make<Machine>();
    Machine* const taken = &as<Machine>(*successor);
    skill::Element* const left = pump.getSkillElement();

    const auto replaced = host::replaceSkillElement(pump, *successor);
    EXPECT_EQ(replaced.get(), left);
    EXPECT_EQ(replaced->modelElement(), nullptr);
    EXPECT_EQ(pump.getSkillElement(), taken);
    EXPECT_EQ(taken->modelElement(), &pump);
    EXPECT_EQ(taken->name(), "pump");
    EXPECT_FALSE(successor->isA<Machine>());
}

TEST(Element, SwapsItsSkillElement) {
    host::Model model;
    auto& pump = add<Machine>(model.root(), "pump");
    skill::Element* const first = pump.getSkillElement();
    std::unique_ptr<skill::Element> other = std::make_unique<Machine>();
    skill::Element* const second = other.get();
    host::swapSkillElement(pump, other);
    EXPECT_EQ(pump.getSkillElement(), second);
    EXPECT_EQ(second->modelElement(), &pump);
    EXPECT_EQ(other.get(), first);
    EXPECT_EQ(first->modelElement(), nullptr);
    host::swapSkillElement(pump, other);
    EXPECT_EQ(first->modelElement(), &pump);
    EXPECT_EQ(second->modelElement(), nullptr);
}

TEST(Element, WithoutItsSkillElementIsNoAncestor) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& cell = add<Station>(line, "cell");
    auto& pump = add<Machine>(cell, "pump");
    const auto replaced = host::replaceSkillElement(line, cell);
    EXPECT_EQ(pump.findAncestor<Station>(), line.getSkillElement());
}

TEST(Element, GoesAfterItsChildren) {
    std::string gone;
    {
        host::Model model;
        auto& pump = add<Machine>(model.root(), "pump");
        auto& valve = add<Machine>(pump, "valve");
        as<Machine>(pump).whenDestroyed = [&] { gone += "pump,"; };
        as<Machine>(valve).whenDestroyed = [&, above = &pump] {
            gone += "valve below " + above->getSkillElement()->name() + ",";
        };
    }
    EXPECT_EQ(gone, "valve below pump,pump,");
}

TEST(Element, EscapesNamesInPaths) {
    struct Case {
        std::string_view name;
        std::string_view escaped;
    };
    constexpr Case kCases[] = {
        {"", ""},      {"plain name", "plain name"}, {"/", "~1"},          {"~", "~0"},
        {"~1", "~01"}, {"a/b~c/", "a~1b~0c~1"},      {"\u00e4", "\u00e4"}, {"~0~1", "~00~01"},
    };
    for (const auto& [name, escaped] : kCases) {
        EXPECT_EQ(model::escapeName(name), escaped);
        EXPECT_EQ(model::unescapeName(escaped), name);
    }
}

TEST(Element, UnescapesWhatIsNoEscapeAsItStands) {
    for (const std::string_view text : {"~", "a~", "~2", "~~", "~ 0"})
        EXPECT_EQ(model::unescapeName(text), text);
    EXPECT_EQ(model::unescapeName("~~0"), "~~");
}

} // namespace
} // namespace corvane::workbench::testing
