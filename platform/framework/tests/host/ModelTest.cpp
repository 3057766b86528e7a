#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

#include <utility>

namespace corvane::workbench::testing {
namespace {

TEST(Model, HasANamelessRoot) {
    host::Model model;
    EXPECT_EQ(model.root().name(), "");
    EXPECT_EQ(model.root().getSkillElement(), nullptr);
    EXPECT_EQ(model.root().tree(), &model);
    EXPECT_TRUE(std::as_const(model).root().childElements().empty());
}

TEST(Model, FindsElementsByPath) {
    host::Model model;
    auto& line = add<Station>(model.root(), "line");
    auto& odd = add<Station>(line, "a/b~");
    auto& pump = add<Machine>(odd, "pump");
    EXPECT_EQ(model.findElement("/line"), &line);
    EXPECT_EQ(model.findElement("/line/a~1b~0"), &odd);
    EXPECT_EQ(model.findElement(pump.path()), &pump);
}

TEST(Model, FindsNothingByOtherPaths) {
    host::Model model;
    add<Machine>(add<Station>(model.root(), "line"), "pump");
    for (const std::string_view path :
         {"", "/", "//", "line", "/lin", "/line2", "/line/", "/line//pump", "//line", "/line/pump/",
          "/line/pump/x", "/Line", "/~", "line/pump"})
        EXPECT_EQ(model.findElement(path), nullptr) << path;
}

TEST(Model, TheEpochGrowsWithEveryChangeOfAPath) {
    host::Model model;
    auto last = model.epoch();
    const auto hasGrown = [&] { return model.epoch() > std::exchange(last, model.epoch()); };
    auto& line = add<Station>(model.root(), "line");
    EXPECT_TRUE(hasGrown());
    auto& pump = add<Machine>(line, "pump");
    EXPECT_TRUE(hasGrown());
    host::rename(pump, "valve");
    EXPECT_TRUE(hasGrown());
    host::rename(pump, "valve");
    EXPECT_FALSE(hasGrown());
    static_cast<void>(host::removeChild(line, pump));
    EXPECT_TRUE(hasGrown());
}

} // namespace
} // namespace corvane::workbench::testing
