#include "TestSkill.hpp"

#include <corvane/workbench/model/Model.hpp>

#include <gtest/gtest.h>

#include <utility>

namespace corvane::workbench::testing {
namespace {

TEST(Model, HasANamelessRoot) {
    model::Model model;
    EXPECT_EQ(model.root().name(), "");
    EXPECT_EQ(model.root().getSkillElement(), nullptr);
    EXPECT_EQ(model.root().model(), &model);
    EXPECT_TRUE(std::as_const(model).root().childElements().empty());
}

TEST(Model, FindsElementsByPath) {
    model::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& odd = add<Station>(line, "a/b~");
    auto& pump = add<Machine>(odd, "pump");
    EXPECT_EQ(model.findElement("/line"), &line);
    EXPECT_EQ(model.findElement("/line/a~1b~0"), &odd);
    EXPECT_EQ(model.findElement(pump.path()), &pump);
}

TEST(Model, FindsNothingByOtherPaths) {
    model::Model model;
    add<Machine>(add<Station>(model.root(), "line"), "pump");
    for (const std::string_view path :
         {"", "/", "//", "line", "/lin", "/line2", "/line/", "/line//pump", "//line", "/line/pump/",
          "/line/pump/x", "/Line", "/~", "line/pump"})
        EXPECT_EQ(model.findElement(path), nullptr) << path;
}

TEST(Model, TheEpochGrowsWithEveryChangeOfAPath) {
    model::Model model;
    auto last = model.epoch();
    const auto hasGrown = [&] { return model.epoch() > std::exchange(last, model.epoch()); };
    auto& line = add<Station>(model.root(), "line");
    EXPECT_TRUE(hasGrown());
    auto& pump = add<Machine>(line, "pump");
    EXPECT_TRUE(hasGrown());
    pump.rename("valve");
    EXPECT_TRUE(hasGrown());
    pump.rename("valve");
    EXPECT_FALSE(hasGrown());
    static_cast<void>(line.removeChild(pump));
    EXPECT_TRUE(hasGrown());
}

} // namespace
} // namespace corvane::workbench::testing
