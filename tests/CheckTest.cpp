#include "Sandbox.hpp"

#include <corvane/utils/json/Decoder.hpp>

#include <gtest/gtest.h>

#include <array>
#include <span>

namespace corvane::test {

namespace {

namespace decoder = utils::json::decoder;

struct Problem {
    std::string element;
    std::string field;
    std::string message;

    friend bool operator==(const Problem&, const Problem&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Problem& problem) {
        return stream << problem.element << ": " << problem.field << ": " << problem.message;
    }
};

std::vector<Problem> problemsIn(std::string json) {
    const decoder::Document document(std::move(json));
    std::vector<Problem> problems;
    auto entries = document.root().asArray();
    while (auto entry = entries.next()) {
        auto object = entry->asObject();
        std::vector<std::string> values;
        for (const std::string_view name : {"element", "field", "message"}) {
            const auto member = object.next();
            EXPECT_EQ(member->name.view(), name);
            values.emplace_back(member->value.asString().view());
        }
        EXPECT_FALSE(object.next());
        problems.push_back({values[0], values[1], values[2]});
    }
    return problems;
}

/// An address, and what is wrong with it; nothing where it is right.
struct Address {
    std::string_view text;
    std::string_view problem;
};

constexpr std::string_view kOnlyInBlocks =
    "invalid address for a standalone data item, the memory area marker must not be “DB”";
constexpr std::string_view kNotInBlocks =
    "invalid address for a data block member data item, the memory area marker must be “DB”";
constexpr std::string_view kEmpty = "please enter the s7 memory address of the data item";

// What is wrong wherever the item stands.
constexpr std::array kWrongAddresses{
    Address{"", kEmpty},
    Address{"mW20", "missing memory area in the address"},
    Address{" MW2", "missing memory area in the address"},
    Address{"DB65536.DBB0", "DB number out of range, the maximum acceptable value is 65535"},
    Address{"DB12.MW8", "inconsistent address, while a DB number is set, the memory area marker is "
                        "not \"DB\""},
    Address{"M", "invalid or missing byte offset"},
    Address{"IecT5", "invalid or missing byte offset"},
    Address{"DBX", "invalid or missing byte offset"},
    Address{"MB65536", "byte offset out of range, the maximum acceptable value is 65535"},
    Address{"M0x", "invalid address, expected nothing or a ‘.’ after the byte offset"},
    Address{"DB4,0", "invalid address, expected nothing or a ‘.’ after the byte offset"},
    Address{"M0.", "invalid or missing bit offset"},
    Address{"M0.8", "bit offset out of range, the maximum acceptable value is 7"},
    Address{"M0.300", "bit offset out of range, the maximum acceptable value is 7"},
    Address{"M0.1.2", "encountered extra characters at the end of the address"},
};

constexpr std::array kStandaloneAddresses{
    Address{"M10.3", {}},
    Address{"MW20", {}},
    Address{"DI4", {}},
    Address{"C7", {}},
    Address{"IW65535.7", {}},
    Address{"DBX4.1", kOnlyInBlocks},
    Address{"DB1.5", kOnlyInBlocks},
    Address{"DB12.DBW8", kOnlyInBlocks},
};

constexpr std::array kMemberAddresses{
    Address{"DB0.0", {}},         Address{"DBX4.1", {}},       Address{"DBW65535", {}},
    Address{"DB5.DBX0.0", {}},    Address{"DB1.5", {}},        Address{"MW2", kNotInBlocks},
    Address{"DI4", kNotInBlocks}, Address{"L3", kNotInBlocks},
};

/// A command reference of an item of the PLC "A/1", and what is wrong with it.
struct Command {
    std::string_view text;
    std::string_view problem;
};

constexpr std::array kCommands{
    Command{"/A~11/Default Command", {}},
    Command{"/A~11/Fast", {}},
    Command{"", "please specify the command used to read and write the data item"},
    Command{"/A~11/Gone", "the referenced element “/A~11/Gone” does not exist"},
    Command{"Fast", "the referenced element “Fast” does not exist"},
    Command{"/A~11/Block 0", "the command must be a S7 command"},
    Command{"/A~11", "the command must be a S7 command"},
    Command{"/B/Default Command", "the command and the data item must share a common parent"},
};

/// Writes a large project and, beside it, what is wrong with it.
class LargeProject {
public:
    std::string text = R"({"corvane": 1, "elements": [
{"@Skill.S7.PLC": {"name": "A/1", "address": "", "children": [
{"@Skill.S7.Command": {"name": "Default Command"}},
{"@Skill.S7.Command": {"name": "Fast"}})";
    std::vector<Problem> problems{
        {"/A~11", "Address", "Please enter the network address of the target PLC"}};

    void write() {
        addItems(1'200, "/A~11", kStandaloneAddresses, ",\n");
        for (int block = 0; block != 8; ++block) {
            const auto name = "Block " + std::to_string(block);
            text += ",\n{\"@Skill.S7.DataBlock\": {\"name\": \"" + name + R"(", "DBNumber": )" +
                    std::to_string(block + 1) + R"(, "children": [
{"@Skill.S7.Struct": {"name": "outer", "children": [
{"@Skill.S7.Struct": {"name": "inner", "children": [)";
            const auto path = "/A~11/" + name;
            addItems(150, path + "/outer/inner", kMemberAddresses);
            text += "]}}";
            addItems(50, path + "/outer", kMemberAddresses, ",\n");
            text += "]}}";
            addItems(200, path, kMemberAddresses, ",\n");
            text += "]}}";
        }
        text += R"(]}},
{"@Skill.S7.PLC": {"name": "B", "address": "b", "children": [
{"@Skill.S7.Command": {"name": "Default Command"}},
{"@Skill.S7.Item": {"name": "good", "address": "MB0", "command": "/B/Default Command"}},
{"@Skill.S7.Item": {"name": "bad", "address": "MB0", "command": "/A~11/Fast"}}]}},
{"@Skill.S7.PLC": {"name": "C"}}]})";
        problems.push_back(
            {"/B/bad", "Command", "the command and the data item must share a common parent"});
        problems.push_back({"/C", "Address", "Please enter the network address of the target PLC"});
    }

private:
    void addItems(int count, const std::string& path, std::span<const Address> addresses,
                  std::string_view separator = "") {
        for (int i = 0; i != count; ++i, separator = ",\n") {
            const auto all = addresses.size() + kWrongAddresses.size();
            const auto which = static_cast<std::size_t>(next_) % all;
            const auto& address = which < addresses.size()
                                      ? addresses[which]
                                      : kWrongAddresses[which - addresses.size()];
            // 23 addresses and 8 commands have no common divisor: all pairs occur.
            addItem(path, address, kCommands[static_cast<std::size_t>(next_) % kCommands.size()],
                    separator);
        }
    }

    void addItem(const std::string& path, const Address& address, const Command& command,
                 std::string_view separator) {
        const auto name = "i" + std::to_string(next_++);
        text += std::string(separator) + R"({"@Skill.S7.Item": {"name": ")" + name +
                R"(", "address": ")" + std::string(address.text) + R"(", "command": ")" +
                std::string(command.text) + "\"}}";
        if (!address.problem.empty())
            problems.push_back({path + "/" + name, "Address", std::string(address.problem)});
        if (!command.problem.empty())
            problems.push_back({path + "/" + name, "Command", std::string(command.problem)});
    }

    int next_ = 0;
};

constexpr std::string_view kSmallProject = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "children": [
    {"@Skill.S7.Command": {"name": "c"}},
    {"@Skill.S7.Item": {"name": "DB/item", "address": "DB12.MW8"}}]}}]})";

} // namespace

TEST(Check, FindsEveryProblemWhereItBelongs) {
    const Sandbox place;
    LargeProject project;
    project.write();
    place.write("P.json", project.text);
    const auto result = place.run({"check", "P.json", "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    const auto problems = problemsIn(result.out);
    ASSERT_EQ(problems.size(), project.problems.size());
    EXPECT_GT(problems.size(), 4'000U);
    for (std::size_t i = 0; i != problems.size(); ++i)
        ASSERT_EQ(problems[i], project.problems[i]);
}

TEST(Check, PrintsAProblemOnALine) {
    const Sandbox place;
    place.write("P.json", kSmallProject);
    EXPECT_EQ(place.run({"check", "P.json"}),
              (Result{.exitCode = 1,
                      .out = R"(/PLC: Address: Please enter the network address of the target PLC
/PLC/DB~1item: Address: inconsistent address, while a DB number is set, the memory area marker is not "DB"
/PLC/DB~1item: Command: please specify the command used to read and write the data item
3 problems found.
)",
                      .err = {}}));
    EXPECT_EQ(place.run({"check", "P.json", "--json"}), (Result{.exitCode = 1,
                                                                .out = R"([
  {"element": "/PLC", "field": "Address", "message": "Please enter the network address of the target PLC"},
  {"element": "/PLC/DB~1item", "field": "Address", "message": "inconsistent address, while a DB number is set, the memory area marker is not \"DB\""},
  {"element": "/PLC/DB~1item", "field": "Command", "message": "please specify the command used to read and write the data item"}
]
)",
                                                                .err = {}}));
}

// Who reads from a pipe gets names as they are.
TEST(Check, KeepsControlCharacters) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "P\u001b\u007f\u0080", "address": "a", "children": [
    {"@Skill.S7.Item": {"name": "\u009f\u00a0", "address": "MB0",
                        "command": "/\n\u0085\u009b"}}]}}]})");
    const std::string command = "/\n\u0085\u009b";
    const std::string message = "the referenced element “" + command + "” does not exist";
    EXPECT_EQ(place.run({"check", "P.json"}),
              (Result{.exitCode = 1,
                      .out = "/P\x1b\x7f\u0080/\u009f\u00a0: Command: " + message +
                             "\n1 problem found.\n",
                      .err = {}}));
    EXPECT_EQ(place.run({"form", "P.json", "/P\x1b\x7f\u0080/\u009f\u00a0"}),
              done("Data type  Byte\n"
                   "Address    MB0\n"
                   "Writable   false (Read only)\n"
                   "Command    " +
                   command + "  [error: " + message + "]\n"));
}

TEST(Check, CountsASingleProblem) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "PLC"}}]})");
    EXPECT_EQ(place.run({"check", "P.json"}),
              (Result{.exitCode = 1,
                      .out = "/PLC: Address: Please enter the network address of the target PLC\n"
                             "1 problem found.\n",
                      .err = {}}));
}

TEST(Check, OfAGoodProject) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "rack": 255, "children": [
    {"@Skill.S7.Command": {"name": "c"}},
    {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 0, "children": [
      {"@Skill.S7.Item": {"name": "m", "address": "DB0.7", "command": "/PLC/c"}}]}},
    {"@Skill.S7.Item": {"name": "i", "address": "DI4", "command": "/PLC/c"}}]}}]})");
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
    EXPECT_EQ(place.run({"check", "P.json", "--json"}), done("[]\n"));
}

} // namespace corvane::test
