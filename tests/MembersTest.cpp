#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

class MembersTest : public testing::Test {
protected:
    MembersTest() {
        place.write("P.json", R"({"corvane": 1, "elements": [
            {"@Skill.S7.PLC": {"name": "PLC", "children": [
                {"@Skill.S7.Command": {"name": "c"}},
                {"@Skill.S7.DataBlock": {"name": "b"}},
                {"@Skill.S7.Struct": {"name": "s"}},
                {"@Skill.S7.Item": {"name": "read", "dataType": "Bool"}},
                {"@Skill.S7.Item": {"name": "write", "dataType": "Real", "writable": true}}]}}]})");
    }

public:
    Sandbox place;
};

} // namespace

TEST_F(MembersTest, OfAPlc) {
    EXPECT_EQ(place.run({"members", "P.json", "/PLC"}), done(R"(attribute  deviceState
attribute  connectionTime
attribute  error
event      connected
event      disconnected
task       reconnect
)"));
}

TEST_F(MembersTest, OfACommand) {
    EXPECT_EQ(place.run({"members", "P.json", "/PLC/c"}), done(R"(attribute  updateTime
attribute  quality
attribute  error
attribute  writeTime
attribute  writeError
event      read
event      written
event      writeFailed
task       execute
)"));
}

TEST_F(MembersTest, OfItems) {
    EXPECT_EQ(place.run({"members", "P.json", "/PLC/read"}), done(R"(attribute  value
attribute  changeTime
attribute  quality
attribute  error
event      changed
event      read
)"));
    EXPECT_EQ(place.run({"members", "P.json", "/PLC/write"}),
              done(R"(attribute  value  (read and write)
attribute  changeTime
attribute  quality
attribute  error
attribute  writeTime
attribute  writeError
event      changed
event      read
event      written
event      writeFailed
)"));
}

TEST_F(MembersTest, OfElementsThatHaveNone) {
    for (const std::string path : {"/PLC/b", "/PLC/s"}) {
        EXPECT_EQ(place.run({"members", "P.json", path}),
                  done("The element publishes no attributes, events or tasks.\n"));
        EXPECT_EQ(place.run({"members", "P.json", path, "--json"}),
                  done(R"({"attributes": [], "events": [], "tasks": []})"
                       "\n"));
    }
}

TEST_F(MembersTest, AsJson) {
    const auto json = place.printed({"members", "P.json", "/PLC/write", "--json"});
    for (const std::string_view line :
         {R"(    {"name": "value", "access": 2, "type": 3, "bits": 32, "directions": 3},)",
          R"(    {"name": "error", "access": 0, "type": 9, "bits": 0, "directions": 1},)",
          R"(    {"name": "writeError", "access": 0, "type": 9, "bits": 0, "directions": 2})",
          R"(    {"name": "read", "directions": 1},)",
          R"(    {"name": "written", "directions": 2},)",
          R"(    {"name": "writeFailed", "directions": 2})"})
        EXPECT_NE(json.find("\n" + std::string(line.substr(2)) + "\n"), std::string::npos)
            << line << "\n"
            << json;
    EXPECT_EQ(place.printed({"members", "P.json", "/PLC/read", "--json"}).substr(0, 90),
              R"({"attributes": [
  {"name": "value", "access": 0, "type": 0, "bits": 1, "directions": 3},
)");

    const auto command = place.printed({"members", "P.json", "/PLC/c", "--json"});
    EXPECT_TRUE(command.ends_with(R"("tasks": [
  {"name": "execute"}
]}
)")) << command;
    EXPECT_TRUE(command.starts_with("{\"attributes\": [\n  {\"name\": \"updateTime\", "));
}

} // namespace corvane::test
