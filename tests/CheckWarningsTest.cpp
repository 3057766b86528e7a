#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

std::string item(std::string_view name, std::string_view type, std::string_view address) {
    return std::string(R"({"@Skill.S7.Item": {"name": ")")
        .append(name)
        .append(R"(", "dataType": ")")
        .append(type)
        .append(R"(", "address": ")")
        .append(address)
        .append(R"(", "command": "/PLC/c"}})");
}

std::string holder(std::string_view key, std::string_view head, const std::string& children) {
    return std::string("{\"@Skill.S7.").append(key).append("\": {").append(head) +
           ", \"children\": [" + children + "]}}";
}

std::string block(std::string_view name, int number, const std::string& items) {
    return holder("DataBlock",
                  std::string("\"name\": \"").append(name) +
                      "\", \"DBNumber\": " + std::to_string(number),
                  items);
}

std::string plc(std::string_view name, const std::string& children) {
    const auto command =
        name == "PLC" ? std::string(R"({"@Skill.S7.Command": {"name": "c"}},)") : std::string();
    return holder("PLC", std::string("\"name\": \"").append(name) + R"(", "address": "a")",
                  command + children);
}

std::string project(const std::string& elements) {
    return R"({"corvane": 1, "elements": [)" + elements + "]}";
}

/// Two items of one block, and what is to be said of the second one; nothing where they are apart.
struct Pair {
    std::string_view type;
    std::string_view address;
    std::string_view otherType;
    std::string_view otherAddress;
    std::string_view shared;
};

constexpr Pair kPairs[] = {
    {"Int", "DB0", "Int", "DB2", ""},
    {"Int", "DB0", "Int", "DB1", "byte 1"},
    {"Int", "DB0", "DInt", "DBD0", "bytes 0 to 1"},
    {"DInt", "DB4", "Bool", "DB7.7", "bit 7.7"},
    {"DInt", "DB4", "Bool", "DB8.0", ""},
    {"Bool", "DB0.1", "Bool", "DB0.1", "bit 0.1"},
    {"Bool", "DB0.1", "Bool", "DB0.2", ""},
    {"LReal", "DB0", "Byte", "DB7", "byte 7"},
    {"String", "DB0", "Byte", "DB255", "byte 255"}, // 254 characters behind two bytes
    {"String", "DB0", "Byte", "DB256", ""},
    {"WString", "DB0", "Byte", "DB511", "byte 511"},
    {"WString", "DB0", "Byte", "DB512", ""},
    {"Int", "DB0", "Int", "DB0.9", ""}, // has no address
    {"Real", "DB65534", "Byte", "DB65535", "byte 65535"},
};

} // namespace

TEST(CheckWarnings, OfItemsThatShareMemory) {
    const Sandbox place;
    for (const auto& [type, address, otherType, otherAddress, shared] : kPairs) {
        SCOPED_TRACE(
            std::string(type).append(" ").append(address).append(", ").append(otherAddress));
        place.write("P.json", project(plc("PLC", block("b", 7,
                                                       item("one", type, address) + "," +
                                                           item("two", otherType, otherAddress)))));
        const auto said = place.run({"check", "P.json", "--warnings"});
        const auto warning =
            "/PLC/b/two: warning: shares " + std::string(shared) + " of DB7 with “/PLC/b/one”\n";
        EXPECT_EQ(said.out.contains("warning: "), !shared.empty()) << said;
        EXPECT_EQ(said.out.contains(warning), !shared.empty()) << said;
    }
}

TEST(CheckWarnings, StandBesideTheErrors) {
    const Sandbox place;
    place.write(
        "P.json",
        project(plc("PLC",
                    block("Data", 5,
                          item("a", "Bool", "DB0.0") + "," +
                              holder("Struct", R"("name": "s")",
                                     item("b", "Word", "DB0") + "," + item("bad", "Word", "MW0"))) +
                        "," + block("Twin", 5, "") + "," + item("m", "Word", "MW0") + "," +
                        item("n", "Bool", "M1.7") + "," + item("q", "Bool", "Q1.7")) +
                "," + plc("Q", block("Data", 5, item("a", "Byte", "DB0")))));
    const std::string_view errors =
        "/PLC/Data/s/bad: Address: invalid address for a data block member data item, the memory "
        "area marker must be “DB”\n"
        "/Q/Data/a: Command: the command and the data item must share a common parent\n";
    EXPECT_EQ(place.run({"check", "P.json", "--warnings"}),
              (Result{.exitCode = 1,
                      .out = std::string(errors) +
                             "/PLC/Twin: warning: is DB5, and so is “/PLC/Data”\n"
                             "/PLC/Data/s/b: warning: shares bit 0.0 of DB5 with “/PLC/Data/a”\n"
                             "/PLC/n: warning: shares bit 1.7 of M with “/PLC/m”\n"
                             "2 problems, 3 warnings found.\n",
                      .err = {}}));
    EXPECT_EQ(
        place.run({"check", "P.json"}),
        (Result{.exitCode = 1, .out = std::string(errors) + "2 problems found.\n", .err = {}}));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings", "--json"}), (Result{.exitCode = 1,
                                                                              .out = R"([
  {"severity": "error", "element": "/PLC/Data/s/bad", "field": "Address", "message": "invalid address for a data block member data item, the memory area marker must be “DB”"},
  {"severity": "error", "element": "/Q/Data/a", "field": "Command", "message": "the command and the data item must share a common parent"},
  {"severity": "warning", "element": "/PLC/Twin", "field": "", "message": "is DB5, and so is “/PLC/Data”"},
  {"severity": "warning", "element": "/PLC/Data/s/b", "field": "", "message": "shares bit 0.0 of DB5 with “/PLC/Data/a”"},
  {"severity": "warning", "element": "/PLC/n", "field": "", "message": "shares bit 1.7 of M with “/PLC/m”"}
]
)",
                                                                              .err = {}}));
}

// What a document must say in place of an address is none all the same.
TEST(CheckWarnings, AnAddressThatWasNeverEntered) {
    const Sandbox place;
    place.write("P.json", project(R"({"@Skill.S7.PLC": {"name": "PLC"}})"));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings"}).exitCode, 1) << "it is an error";
    place.write("P.json", project(R"({"@Skill.S7.PLC": {"name": "PLC", "address": "missing"}})"));
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings"}),
              done("/PLC: warning: Please enter the network address of the target PLC\n"
                   "No problems, 1 warning found.\n"));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings", "--json"}), done(R"([
  {"severity": "warning", "element": "/PLC", "field": "Address", "message": "Please enter the network address of the target PLC"}
]
)"));
}

TEST(CheckWarnings, AloneChangeNoExitCode) {
    const Sandbox place;
    place.write(
        "P.json",
        project(plc("PLC",
                    block("b", 1, item("one", "Byte", "DB0") + "," + item("two", "Byte", "DB0")))));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings"}),
              done("/PLC/b/two: warning: shares byte 0 of DB1 with “/PLC/b/one”\n"
                   "No problems, 1 warning found.\n"));
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
    place.write("P.json", project(""));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings"}),
              done("No problems, no warnings found.\n"));
    EXPECT_EQ(place.run({"check", "P.json", "--warnings", "--json"}), done("[]\n"));
}

// One that lies below all others is the other one of each: there are no more warnings than items.
TEST(CheckWarnings, AreNoMoreThanTheItems) {
    const Sandbox place;
    constexpr int kItems = 4'000;
    std::string items = item("all", "WString", "DB0");
    for (int i = 0; i != kItems; ++i)
        items += "," + item("i" + std::to_string(i), "LWord", "DB" + std::to_string(i % 500));
    place.write("P.json", project(plc("PLC", block("b", 1, items))));
    const auto said = place.run({"check", "P.json", "--warnings"});
    EXPECT_EQ(said.exitCode, 0);
    EXPECT_TRUE(said.out.ends_with("No problems, 4000 warnings found.\n"));
}

} // namespace corvane::test
