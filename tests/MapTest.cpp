#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace corvane::test {

namespace {

// Bits, a gap, an overlap, texts longer than some rows, and names that a picture must escape.
constexpr std::string_view kProject = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "children": [
    {"@Skill.S7.Command": {"name": "c"}},
    {"@Skill.S7.DataBlock": {"name": "Data", "DBNumber": 5, "children": [
      {"@Skill.S7.Item": {"name": "Ready", "dataType": "Bool", "address": "DB0.0", "command": "/PLC/c"}},
      {"@Skill.S7.Item": {"name": "Fault", "dataType": "Bool", "address": "DB0.7", "command": "/PLC/c"}},
      {"@Skill.S7.Item": {"name": "Ready too", "dataType": "Bool", "address": "DB0.0", "command": "/PLC/c"}},
      {"@Skill.S7.Item": {"name": "Speed", "dataType": "DInt", "address": "DB2", "command": "/PLC/c"}},
      {"@Skill.S7.Struct": {"name": "Axis/1", "children": [
        {"@Skill.S7.Item": {"name": "Long name", "dataType": "Byte", "address": "DB6", "command": "/PLC/c"}},
        {"@Skill.S7.Item": {"name": "größe <&> \"x\"", "dataType": "Int", "address": "DB4", "command": "/PLC/c"}}]}},
      {"@Skill.S7.Item": {"name": "Text", "dataType": "String", "stringSize": 40, "address": "DB10", "command": "/PLC/c"}},
      {"@Skill.S7.Item": {"name": "Last", "dataType": "Word", "address": "DB100", "command": "/PLC/c"}},
      {"@Skill.S7.Item": {"name": "Nowhere", "dataType": "Word", "address": "", "command": "/PLC/c"}}]}},
    {"@Skill.S7.DataBlock": {"name": "Empty", "DBNumber": 6}},
    {"@Skill.S7.Item": {"name": "lamp", "dataType": "Bool", "address": "Q1.2", "command": "/PLC/c"}},
    {"@Skill.S7.Item": {"name": "key", "dataType": "Bool", "address": "I1.2", "command": "/PLC/c"}}]}}]})";

constexpr std::string_view kDrawing = R"(/PLC/Data (DB5): 102 bytes, 8 elements, 4 gaps, 2 overlaps
        +0       +1       +2       +3       +4       +5       +6       +7
     0 |!......7|........|Speed-------------!!!!!!!!-!!!!!!!!|Long na…|........|
         0.0  Ready  Bool
         0.0  Ready too  Bool
         ! Ready too shares bit 0.0 with Ready
         0.7  Fault  Bool
         4  Axis~11/größe <&> "x"  Int
         ! Axis~11/größe <&> "x" shares bytes 4 to 5 with Speed
         6  Axis~11/Long name  Byte
     8 |........|........|Text-------------------------------------------------|
    16 |…Text------------------------------------------------------------------|
       ⋮ 3 more rows of Text
    48 |…Text------------------------------|........|........|........|........|
    56 |........|........|........|........|........|........|........|........|
       ⋮ 4 more rows of a gap
    96 |........|........|........|........|Last-------------|
)";

class MapTest : public testing::Test {
public:
    MapTest() { place.write("P.json", kProject); }

    Sandbox place;
};

/// How often a text stands in another one.
std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// Whether every tag is closed in its order and every "&" and "<" of a text is escaped.
bool isWellFormed(std::string_view xml) {
    std::vector<std::string_view> open;
    while (!xml.empty()) {
        const auto tag = xml.find('<');
        const auto text = xml.substr(0, tag);
        for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1))
            if (!text.substr(at).starts_with("&amp;") && !text.substr(at).starts_with("&lt;") &&
                !text.substr(at).starts_with("&gt;"))
                return false;
        for (const char c : text)
            if (static_cast<unsigned char>(c) < 0x20 && c != '\n')
                return false;
        if (tag == std::string_view::npos)
            return open.empty();
        const auto end = xml.find('>', tag);
        if (end == std::string_view::npos)
            return false;
        const auto inside = xml.substr(tag + 1, end - tag - 1);
        if (inside.contains('<') || countOf(inside, "\"") % 2 != 0)
            return false;
        const auto name = inside.substr(0, inside.find_first_of(" /"));
        if (inside.starts_with('/')) {
            if (open.empty() || open.back() != inside.substr(1))
                return false;
            open.pop_back();
        } else if (!inside.ends_with('/')) {
            open.push_back(name);
        }
        xml.remove_prefix(end + 1);
    }
    return open.empty();
}

} // namespace

TEST_F(MapTest, AsText) {
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data", "--text"}), done(kDrawing));
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data/Axis~11/Long name", "--text", "--width=8"}),
              done(kDrawing))
        << "the block that it stands in";
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data/Nowhere", "--text"}), done(kDrawing));
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Empty", "--text"}),
              done("/PLC/Empty (DB6): no bytes, no elements, no gaps, no overlaps\n"));
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/lamp", "--text"}),
              done("/PLC (Q): 2 bytes, 1 element, 1 gap, no overlaps\n"
                   "        +0       +1       +2       +3       +4       +5       +6       +7\n"
                   "     0 |........|..2.....|\n"
                   "         1.2  lamp  Bool\n"));
}

TEST_F(MapTest, InRowsOfSixteenBytes) {
    const auto text = place.printed({"map", "P.json", "/PLC/Data", "--text", "--width", "16"});
    EXPECT_TRUE(text.contains("      +14      +15\n     0 |!......7|........|Speed")) << text;
    EXPECT_TRUE(
        text.contains("\n    96 |........|........|........|........|Last-------------|\n"));
    EXPECT_FALSE(text.contains("\n     8 |"));
}

TEST_F(MapTest, AsPicture) {
    const auto picture = place.printed({"map", "P.json", "/PLC/Data"});
    EXPECT_TRUE(picture.starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\" "));
    EXPECT_TRUE(picture.ends_with("</svg>\n"));
    EXPECT_TRUE(isWellFormed(picture)) << picture;
    EXPECT_TRUE(picture.contains("<title>/PLC/Data/Speed  DInt  DB5.DB2  bytes 2 to 5\n"
                                 "/PLC/Data/Axis~11/größe &lt;&amp;&gt; \"x\"  Int  DB5.DB4  "
                                 "bytes 4 to 5</title><rect class=\"shared\""))
        << picture;
    EXPECT_TRUE(picture.contains("<title>gap: bits 0.1 to 0.6</title>"));
    EXPECT_EQ(countOf(picture, "class=\"single\""), 1U) << "bit 0.7 alone is one element's";
    EXPECT_EQ(countOf(picture, "<rect class=\"shared\""), 2U);
    EXPECT_EQ(countOf(picture, "⋮ 4 more rows of a gap"), 1U);

    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data", "--output", "m.svg"}), done());
    EXPECT_EQ(place.read("m.svg"), picture);
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data", "--output", "m.txt", "--text"}), done());
    EXPECT_EQ(place.read("m.txt"), kDrawing);
    EXPECT_TRUE(isWellFormed(place.printed({"map", "P.json", "/PLC/Empty"})));
}

TEST_F(MapTest, OnATerminalIsText) {
    EXPECT_TRUE(
        place.runOnTerminal({"map", "P.json", "/PLC/lamp"}).out.contains("1.2  lamp  Bool"));
}

// Names of a document may hold what no one can type and XML has no room for.
TEST_F(MapTest, OfAnyNames) {
    place.write("N.json", R"({"corvane": 1, "elements": [
      {"@Skill.S7.PLC": {"name": "P\u0001", "children": [
        {"@Skill.S7.DataBlock": {"name": "]]>\n\uffff", "children": [
          {"@Skill.S7.Item": {"name": "a\u001bb\tc\ufffe", "dataType": "LReal", "address": "DB0"}},
          {"@Skill.S7.Item": {"name": "<b>\r", "dataType": "Bool", "address": "DB8.1"}}]}}]}}]})");
    const auto picture = place.printed({"map", "N.json", "/P\x01/]]>\n\uffff"});
    EXPECT_TRUE(isWellFormed(picture)) << picture;
    EXPECT_FALSE(picture.contains("\uffff") || picture.contains("\ufffe"));
    const auto text = place.printed({"map", "N.json", "/P\x01/]]>\n\uffff", "--text"});
    EXPECT_TRUE(text.contains("|a?b?c\ufffe-")) << text;
}

TEST_F(MapTest, OfWhatIsNoMemory) {
    for (const std::string path : {"/", "/PLC", "/PLC/c"})
        EXPECT_EQ(place.run({"map", "P.json", path}),
                  failed("“" + path + "” is no memory and lies in none"));
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/x"}),
              failed("the project has no element “/PLC/x”"));
    EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data", "--output", "no/m.svg"}).exitCode, 1);
}

// As many bits as a block can hold: the picture grows with the items, and with nothing else.
TEST_F(MapTest, OfALargeBlock) {
    place.write("big.db", dataBlock("Big", "a : Array[0..65535] of Byte;"));
    EXPECT_EQ(place.run({"import", "big.db", "--project", "B.json"}).exitCode, 0);
    const auto text = place.printed({"map", "B.json", "/PLC/Big", "--text"});
    const auto picture = place.printed({"map", "B.json", "/PLC/Big"});
    EXPECT_TRUE(text.starts_with("/PLC/Big (DB1): 65536 bytes, 65536 elements, no gaps, no over"));
    EXPECT_EQ(countOf(picture, "<rect class="), 65'536U);
    EXPECT_TRUE(isWellFormed(picture));
}

} // namespace corvane::test
