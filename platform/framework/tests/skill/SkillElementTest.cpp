#include "TestSkill.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/utils/json/Decoder.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/model/Attribute.hpp>
#include <corvane/workbench/process/Event.hpp>
#include <corvane/workbench/process/Task.hpp>
#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/ui/Form.hpp>

#include "MessageOf.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane::workbench::testing {
namespace {

void load(skill::Element& element, std::string text) {
    const utils::json::decoder::Document document(std::move(text));
    auto members = document.root().asObject();
    host::ReferenceTable references;
    config::Context context(references);
    element.load(members, context);
}

TEST(SkillElement, LoadsNoMemberByDefault) {
    Station station;
    EXPECT_NO_THROW(load(station, "{}"));
    EXPECT_EQ(utils::test::messageOf<config::UnknownParameterError>([&] {
                  load(station, R"({ "colour": "red" })");
                  return 0;
              }),
              "unknown member “colour”");
}

TEST(SkillElement, SavesNothingByDefault) {
    utils::io::StringOutputStream stream;
    {
        utils::json::encoder::Document document(stream, utils::json::encoder::Format::compact);
        auto members = document.object();
        Station().save(members);
    }
    EXPECT_EQ(stream.take(), "{}");
}

TEST(SkillElement, PublishesNoMembersByDefault) {
    const Station station;
    EXPECT_FALSE(station.forEachAttribute([](const model::Attribute&) { return true; }));
    EXPECT_FALSE(station.forEachEvent([](const process::Event&) { return true; }));
    EXPECT_FALSE(station.forEachTask([](const process::Task&) { return true; }));
}

TEST(SkillElement, HasNoImportIdentityByDefault) {
    Station station;
    EXPECT_EQ(station.importId(), std::nullopt);
    EXPECT_FALSE(station.preserveExistingNameOnImport());
    station.importMerge(Station());
    EXPECT_EQ(station.importId(), std::nullopt);
}

TEST(SkillElement, TakesNoMemoryByDefault) {
    EXPECT_EQ(Station().memoryUse(), data::MemoryUse());
    EXPECT_EQ(Station().memoryUse().index(), 0u);
}

TEST(SkillElement, DeclaresNoPropertyByDefault) {
    Station station;
    station.makeDefault();
    const auto observation =
        station.observe([](auto, auto) { ADD_FAILURE() << "there is nothing to publish"; });
    configureAndPublish(station);
    EXPECT_EQ(station.localPropertyErrorCount(), 0u);
}

TEST(SkillElement, HasAnEmptyFormByDefault) {
    Station station;
    const auto binding = station.createBinding();
    ASSERT_NE(binding, nullptr);
    ui::FormContents contents;
    binding->buildForm(ui::Form(contents));
    EXPECT_TRUE(contents.controls().empty());
    EXPECT_EQ(utils::test::messageOf<std::logic_error>([&] {
                  binding->buildForm(ui::Form());
                  return 0;
              }),
              "internal error: attempt to access default constructed "
              "corvane::workbench::ui::Form object");
}

TEST(SkillElement, HasTheNameThatTheHostHolds) {
    EXPECT_EQ(Station().name(), "");
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    add<Station>(model.root(), "line");
    EXPECT_EQ(line.getSkillElement()->name(), "line");
    EXPECT_EQ(model.root().childElements()[1]->getSkillElement()->name(), "line 2");
    host::rename(line, "hall");
    EXPECT_EQ(line.getSkillElement()->name(), "hall");
}

TEST(SkillElement, ItsPrimaryKeyIsTheDottedPath) {
    EXPECT_EQ(Station().primaryKey(), "");
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& cell = add<Station>(line, "a/b");
    auto& pump = add<Machine>(cell, "p.q");
    EXPECT_EQ(line.getSkillElement()->primaryKey(), "line");
    EXPECT_EQ(pump.getSkillElement()->primaryKey(), "line.a/b.p.q"); // nothing is escaped
}

TEST(SkillElement, IsTakenForItsVeryClassOnly) {
    Machine machine;
    skill::Element& element = machine;
    EXPECT_EQ(element.as<Machine>(), &machine);
    EXPECT_EQ(element.as<Station>(), nullptr);
    EXPECT_EQ(std::as_const(element).as<Machine>(), &machine);
}

TEST(SkillElement, ACopyBelongsToNoPlace) {
    host::Model model;
    const auto& line = as<Station>(add<Station>(model.root(), "line"));
    const Station copy(line);
    EXPECT_EQ(copy.modelElement(), nullptr);
    EXPECT_NE(line.modelElement(), nullptr);
}

TEST(SkillElement, VisitsTheSkillElementsOfItsChildren) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& cell = add<Station>(line, "cell");
    auto& pump = add<Machine>(line, "pump");
    add<Machine>(cell, "below");

    std::vector<bindings::PropertyContainer*> visited;
    line.getSkillElement()->forEachSubPropertyContainer(
        [&](bindings::PropertyContainer& container) { visited.push_back(&container); });
    EXPECT_EQ(visited, (std::vector<bindings::PropertyContainer*>{cell.getSkillElement(),
                                                                  pump.getSkillElement()}));
    Station().forEachSubPropertyContainer([](auto&) { ADD_FAILURE() << "it stands nowhere"; });
}

TEST(SkillElement, VisitsTheReferencesAmongItsProperties) {
    Machine machine;
    configureAndPublish(machine);
    std::vector<const model::ElementReference*> visited;
    machine.forEachLocalCrossReference(
        [&](const model::ElementReference& reference) { visited.push_back(&reference); });
    EXPECT_EQ(visited, std::vector<const model::ElementReference*>{&machine.feeder});
}

TEST(SkillElement, TellsOfItsMembersAsAPropertyThatIsItself) {
    Machine machine;
    std::vector<std::pair<const void*, bindings::Action>> told;
    const auto observation = machine.observe([&](bindings::PropertyId id, bindings::Action action) {
        told.emplace_back(id.address(), action);
    });
    machine.changeMembers();
    const skill::Element& element = machine;
    EXPECT_EQ(told, (std::vector<std::pair<const void*, bindings::Action>>{
                        {&element, bindings::Action::members}}));
}

} // namespace
} // namespace corvane::workbench::testing
