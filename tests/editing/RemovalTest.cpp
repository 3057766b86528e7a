#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

/// Two PLCs, the items of the second with commands of the first.
class RemovalTest : public testing::Test {
public:
    RemovalTest() {
        place.write("P.json", R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "h", "children": [
    {"@Skill.S7.Command": {"name": "Slow"}},
    {"@Skill.S7.Command": {"name": "Fast"}},
    {"@Skill.S7.Item": {"name": "near", "address": "MB0", "command": "/PLC/Slow"}}]}},
  {"@Skill.S7.PLC": {"name": "Other", "address": "o", "children": [
    {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 3, "children": [
      {"@Skill.S7.Item": {"name": "far", "address": "DBB0", "command": "/PLC/Slow"}}]}},
    {"@Skill.S7.Item": {"name": "x/y", "address": "MB1", "command": "/PLC/Fast"}}]}}]})");
    }

    Sandbox place;
};

} // namespace

TEST_F(RemovalTest, TellsOfItemsOfAnotherPlc) {
    EXPECT_EQ(place.run({"remove", "P.json", "/PLC/Fast"}),
              done("/Other/x~1y now refers to nothing: /PLC/Fast is gone\n"));
}

TEST_F(RemovalTest, TellsOfSeveralLosses) {
    EXPECT_EQ(place.run({"remove", "P.json", "/PLC/Slow"}),
              done("/PLC/near now refers to nothing: /PLC/Slow is gone\n"
                   "/Other/b/far now refers to nothing: /PLC/Slow is gone\n"));
}

// What goes itself has lost nothing.
TEST_F(RemovalTest, OfAWholePlcThatOthersReferTo) {
    EXPECT_EQ(place.run({"remove", "P.json", "/PLC"}),
              done("/Other/b/far now refers to nothing: /PLC/Slow is gone\n"
                   "/Other/x~1y now refers to nothing: /PLC/Fast is gone\n"));
    EXPECT_EQ(place.run({"check", "P.json"}),
              (Result{.exitCode = 1,
                      .out = "/Other/b/far: Command: the referenced element “/PLC/Slow” does "
                             "not exist\n"
                             "/Other/x~1y: Command: the referenced element “/PLC/Fast” does "
                             "not exist\n"
                             "2 problems found.\n",
                      .err = {}}));
}

} // namespace corvane::test
