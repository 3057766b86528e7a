#include "DbSource.hpp"

#include <corvane/utils/json/Decoder.hpp>

namespace corvane::test {

namespace decoder = utils::json::decoder;

namespace {

constexpr std::string_view kItem = "@Skill.S7.Item";

class Lister {
public:
    std::vector<std::string> lines;

    void listBlocks(decoder::Array entries) {
        while (auto entry = entries.next()) {
            auto object = entry->asObject();
            if (const auto block = object.find("@Skill.S7.DataBlock")) {
                const auto members = block->asObject();
                list(members, textOf(members, "name") + "\t");
            }
        }
    }

private:
    static std::string textOf(const decoder::Object& members, std::string_view name) {
        return std::string(members.find(name)->asString().view());
    }

    void list(const decoder::Object& parent, const std::string& path) {
        auto children = parent.find("children")->asArray();
        while (auto child = children.next()) {
            const auto member = *child->asObject().next();
            const auto members = member.value.asObject();
            const auto name = path + textOf(members, "name");
            if (member.name.view() == kItem)
                lines.push_back(name + "\t" + textOf(members, "dataType") + "\t" +
                                textOf(members, "address"));
            else
                list(members, name + ".");
        }
    }
};

} // namespace

std::string dataBlock(std::string_view name, std::string_view declarations) {
    return "DATA_BLOCK \"" + std::string(name) +
           "\"\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n" + std::string(declarations) +
           "\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n";
}

std::string guessedNumber(std::string_view file, std::string_view block, int number, int line) {
    return "warning: " + std::string(file) + ":" + std::to_string(line) +
           ":12: a block number is not in the file and was guessed: \u201C" + std::string(block) +
           "\u201D got " + std::to_string(number) + "\n";
}

std::vector<std::string> listingOfProject(std::string project) {
    const decoder::Document decoded(std::move(project));
    auto elements = decoded.root().asObject().find("elements")->asArray();
    const auto first = elements.next()->asObject().find("@Skill.S7.PLC");
    Lister lister;
    lister.listBlocks(first->asObject().find("children")->asArray());
    return std::move(lister.lines);
}

std::vector<std::string> listingOf(std::string document) {
    const decoder::Document decoded(std::move(document));
    Lister lister;
    lister.listBlocks(decoded.root().asArray());
    return std::move(lister.lines);
}

const std::string_view kMixedSource = R"(DATA_BLOCK "Data"
{ S7_Optimized_Access := 'FALSE' }
   STRUCT
      a : Bool;
      b : Bool;
      c : Int;
      d : Byte;
      e : Real;
      s : String[10];
      f : Array[1..3] of Bool;
      st : Struct
         x : Bool;
         y : Int;
      END_STRUCT;
      w : WString;
      t : DTL;
      h { ExternalAccessible := 'False' } : Int;
      z : Char;
   END_STRUCT;
BEGIN
END_DATA_BLOCK
)";

const std::vector<std::string> kMixedListing{
    "Data\ta\tBool\tDB0.0",     "Data\tb\tBool\tDB0.1",     "Data\tc\tInt\tDB2",
    "Data\td\tByte\tDB4",       "Data\te\tReal\tDB6",       "Data\ts\tString\tDB10",
    "Data\tf[1]\tBool\tDB22.0", "Data\tf[2]\tBool\tDB22.1", "Data\tf[3]\tBool\tDB22.2",
    "Data\tst.x\tBool\tDB24.0", "Data\tst.y\tInt\tDB26",    "Data\tw\tWString\tDB28",
    "Data\tz\tUSInt\tDB552",
};

} // namespace corvane::test
