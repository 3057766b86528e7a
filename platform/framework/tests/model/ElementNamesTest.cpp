#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

#include <map>

namespace corvane::workbench::testing {
namespace {

/// Names of siblings: unique, not empty, and found whatever has happened to the list.
class ElementNamesTest : public ::testing::Test {
protected:
    model::Element& add(std::string_view name) { return testing::add<Machine>(parent_, name); }

    host::Model model_;
    model::Element& parent_ = testing::add<Station>(model_.root(), "line");
};

TEST_F(ElementNamesTest, ATakenNameGetsTheNextFreeNumber) {
    EXPECT_EQ(add("Pump").name(), "Pump");
    EXPECT_EQ(add("Pump").name(), "Pump 2");
    EXPECT_EQ(add("Pump").name(), "Pump 3");
    EXPECT_EQ(add("Pump 2").name(), "Pump 2 2");
    EXPECT_EQ(add("pump").name(), "pump");
}

TEST_F(ElementNamesTest, ANumberThatIsTakenAlreadyIsPassedOver) {
    add("Pump 2");
    add("Pump");
    EXPECT_EQ(add("Pump").name(), "Pump 3");
    EXPECT_EQ(add("Pump").name(), "Pump 4");
}

TEST_F(ElementNamesTest, AreUniqueAmongSiblingsOnly) {
    auto& other = testing::add<Station>(model_.root(), "other line");
    add("Pump");
    EXPECT_EQ(testing::add<Machine>(other, "Pump").name(), "Pump");
}

TEST_F(ElementNamesTest, AnEmptyNameIsNone) {
    EXPECT_EQ(add("").name(), "Unnamed");
    EXPECT_EQ(add("").name(), "Unnamed 2");
    EXPECT_EQ(host::rename(add("Pump"), ""), "Unnamed 3");
}

TEST_F(ElementNamesTest, AnyTextIsAName) {
    for (const std::string_view name : {"a/b", "~", "\"", "\x01", "\u00e4\U0001f600", " "}) {
        EXPECT_EQ(add(name).name(), name);
        ASSERT_NE(parent_.findChild(name), nullptr) << name;
    }
}

TEST_F(ElementNamesTest, ARemovedNameIsFreeAgain) {
    add("Pump");
    auto& second = add("Pump");
    add("Pump");
    static_cast<void>(host::removeChild(parent_, second));
    EXPECT_EQ(add("Pump").name(), "Pump 2");
    EXPECT_EQ(add("Pump").name(), "Pump 4");
}

TEST_F(ElementNamesTest, RenamingFreesTheOldName) {
    auto& pump = add("Pump");
    auto& second = add("Pump");
    EXPECT_EQ(host::rename(pump, "Valve"), "Valve");
    EXPECT_EQ(parent_.findChild("Valve"), &pump);
    EXPECT_EQ(parent_.findChild("Pump"), nullptr);
    EXPECT_EQ(add("Pump").name(), "Pump");
    EXPECT_EQ(second.name(), "Pump 2");
}

TEST_F(ElementNamesTest, RenamingToATakenNameGetsANumber) {
    add("Pump");
    auto& valve = add("Valve");
    EXPECT_EQ(host::rename(valve, "Pump"), "Pump 2");
    EXPECT_EQ(host::rename(valve, "Pump 2"), "Pump 2");
}

TEST_F(ElementNamesTest, RenamingCountsTheElementsOwnNameAsFree) {
    add("Pump");
    auto& second = add("Pump");
    add("Pump");
    add("Pump"); // numbers up to 4 have been given
    EXPECT_EQ(host::rename(second, "Pump"), "Pump 2");
}

TEST_F(ElementNamesTest, AreExchangedWhateverTheyAre) {
    auto& a = add("\x01");
    auto& b = add("\x01\x01");
    auto& c = add("c");
    auto& d = testing::add<Machine>(testing::add<Station>(model_.root(), "other line"), "d");
    const auto epoch = model_.epoch();
    host::renameAll(std::vector<host::NewName>{{&b, "\x01"}, {&a, "\x01\x01"}, {&d, "D"}});
    EXPECT_EQ(a.name(), "\x01\x01");
    EXPECT_EQ(b.name(), "\x01");
    EXPECT_EQ(d.name(), "D");
    EXPECT_GT(model_.epoch(), epoch);

    // Those that stay keep their names; an empty name is none.
    host::renameAll(std::vector<host::NewName>{{&a, "c"}, {&b, ""}});
    EXPECT_EQ(a.name(), "c 2");
    EXPECT_EQ(b.name(), "Unnamed");
    EXPECT_EQ(c.name(), "c");
}

TEST_F(ElementNamesTest, WithoutAParentAnyNameIsFree) {
    const auto alone = make<Machine>();
    EXPECT_EQ(host::rename(*alone, "Pump"), "Pump");
    EXPECT_EQ(host::rename(*alone, "Pump"), "Pump");
}

TEST_F(ElementNamesTest, TakenIsAskedWithAnException) {
    auto& pump = add("Pump");
    EXPECT_TRUE(parent_.isNameTaken("Pump"));
    EXPECT_FALSE(parent_.isNameTaken("Pump", &pump));
    EXPECT_FALSE(parent_.isNameTaken("Valve"));
    EXPECT_FALSE(pump.isNameTaken("Pump"));
}

// Each number is tried once: were all tried for each element, this test would not end.
TEST_F(ElementNamesTest, ManyEqualNamesCostNoMoreThanOthers) {
    constexpr int kCount = 100'000;
    for (int i = 1; i < kCount; ++i)
        add("Pump");
    EXPECT_EQ(add("Pump").name(), "Pump 100000");
    EXPECT_EQ(parent_.findChild("Pump 77777"), parent_.childElements()[77'776].get());
}

/// Whether every child is found by its name, at the place where it stands.
bool allAreFound(const model::Element& parent) {
    for (const auto& child : parent.childElements())
        if (parent.findChild(child->name()) != child.get())
            return false;
    return true;
}

TEST_F(ElementNamesTest, AreFoundInListsOfEverySize) {
    for (int i = 0; i != 200; ++i) {
        add("m" + std::to_string(i));
        ASSERT_TRUE(allAreFound(parent_)) << i;
        ASSERT_EQ(parent_.findChild("m" + std::to_string(i + 1)), nullptr);
    }
}

TEST_F(ElementNamesTest, AreFoundWhileTheListShrinks) {
    for (int i = 0; i != 40; ++i)
        add("m" + std::to_string(i));
    for (std::size_t i = 0; !parent_.childElements().empty(); i += 7) {
        const auto children = parent_.childElements();
        const auto removed = host::removeChild(parent_, *children[i % children.size()]);
        ASSERT_EQ(parent_.findChild(removed->name()), nullptr);
        ASSERT_TRUE(allAreFound(parent_));
    }
}

TEST_F(ElementNamesTest, AreFoundAfterAllHaveBeenExchanged) {
    for (const std::size_t count : {2U, 16U, 17U, 200U}) {
        auto& line = testing::add<Station>(model_.root(), "exchanged");
        for (std::size_t i = 0; i != count; ++i)
            testing::add<Machine>(line, "m" + std::to_string(i));
        const auto children = line.childElements();
        for (std::size_t round = 1; round != 10; ++round) {
            std::vector<host::NewName> names;
            for (std::size_t i = 0; i != count; ++i)
                names.push_back({children[i].get(), children[(i + round) % count]->name()});
            host::renameAll(names);
            ASSERT_TRUE(allAreFound(line)) << count;
            for (const auto& [element, name] : names)
                ASSERT_EQ(element->name(), name);
            ASSERT_EQ(line.findChild(""), nullptr);
        }
        EXPECT_EQ(testing::add<Machine>(line, "m0").name(), "m0 2");
        ASSERT_TRUE(allAreFound(line)) << count;
    }
}

// Every rename leaves a used place behind in the index, which must not fill up with them.
TEST_F(ElementNamesTest, AreFoundAfterAnyNumberOfRenames) {
    for (int i = 0; i != 20; ++i)
        add("m" + std::to_string(i));
    for (int i = 0; i != 5000; ++i) {
        auto& child = *parent_.childElements()[static_cast<std::size_t>(i) % 20];
        const std::string before = child.name();
        host::rename(child, "r" + std::to_string(i));
        ASSERT_EQ(parent_.findChild(before), nullptr);
        ASSERT_EQ(parent_.findChild("no such name"), nullptr);
    }
    EXPECT_TRUE(allAreFound(parent_));
}

// The same against a plain map, with everything mixed.
TEST_F(ElementNamesTest, AreTheOnesThatAPlainMapWouldHave) {
    std::map<std::string, model::Element*> expected;
    unsigned random = 1;
    for (int step = 0; step != 4000; ++step) {
        random = random * 1664525 + 1013904223;
        const auto name = "n" + std::to_string((random >> 8) % 50);
        const auto children = parent_.childElements();
        const auto choice = (random >> 20) % 8;
        if (choice < 4 || children.empty()) {
            auto& added = add(name);
            ASSERT_TRUE(expected.emplace(added.name(), &added).second);
        } else if (auto& child = *children[random % children.size()]; choice < 6) {
            expected.erase(child.name());
            ASSERT_TRUE(expected.emplace(host::rename(child, name), &child).second);
        } else {
            expected.erase(child.name());
            static_cast<void>(host::removeChild(parent_, child));
        }
        const auto found = expected.find(name);
        ASSERT_EQ(parent_.findChild(name), found == expected.end() ? nullptr : found->second);
    }
    EXPECT_EQ(parent_.childElements().size(), expected.size());
    EXPECT_TRUE(allAreFound(parent_));
}

} // namespace
} // namespace corvane::workbench::testing
