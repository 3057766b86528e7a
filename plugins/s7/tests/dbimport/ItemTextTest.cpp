#include "ImportTesting.hpp"

#include "dbimport/DataBlockWriting.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/ScalarNode.hpp"
#include "dbimport/tree/TreeMemory.hpp"

#include <corvane/utils/json/Encoder.hpp>
#include <corvane/utils/json/PlainText.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// An item is written in two ways, of which one is made for speed. What they write is the same.
namespace corvane::workbench::plugins::s7Driver {
namespace {

namespace encoder = utils::json::encoder;

constexpr std::array<std::string_view, 4> kPlainNames = {
    "", "x", "sixteen bytes 16", "a name of more than sixteen bytes, in one block and in others"};
constexpr std::array<std::string_view, 3> kIndices = {"", "[3]", "[-2147483648,0,17]"};

/// Both sides of every change of the number of digits, and of a hundred.
constexpr std::array<std::uint64_t, 16> kOffsets = {0,
                                                    1,
                                                    9,
                                                    10,
                                                    11,
                                                    99,
                                                    100,
                                                    101,
                                                    199,
                                                    1'000,
                                                    65'534,
                                                    65'536,
                                                    99'999'998,
                                                    4'294'967'296,
                                                    4'294'967'299,
                                                    9'999'999'999'999};

constexpr std::array<std::optional<std::uint64_t>, 6> kLengths = {std::nullopt, 0, 1, 9, 254,
                                                                  2'147'483'647};

/// What an item is made of, its name apart.
struct Values {
    std::string_view index;
    const TypeFacts* type;
    std::optional<std::uint64_t> length;
    bool writable;
    MemoryPosition place;
};

std::vector<Values> valuesOf(const TypeFacts& type, std::optional<std::uint64_t> length) {
    std::vector<Values> all;
    for (const std::string_view index : kIndices)
        for (const bool writable : {true, false})
            for (const std::uint64_t offset : kOffsets)
                for (const std::uint64_t bit : {0U, 3U, 7U})
                    all.push_back({index, &type, length, writable, {offset, bit}});
    return all;
}

std::vector<Values> everyValue() {
    std::vector<Values> all;
    for (const TypeFacts& type : kTypes)
        for (const auto& length : kLengths)
            if (!length || type.isText())
                std::ranges::copy(valuesOf(type, length), std::back_inserter(all));
    return all;
}

/// The array of the items that all values give with one name, in one walk.
template <class Name>
std::string itemsOf(Name name, const ImportContext& context) {
    StringOutputStream text;
    {
        encoder::Document document(text, encoder::Format::compact);
        auto items = document.array();
        ElementBudget budget(1'000'000);
        ElementPath path("Data", false, budget);
        for (const Values& one : everyValue()) {
            MemoryPosition position = one.place;
            path.setIndexSuffix(one.index);
            ScalarNode(name, ExternalAccess{true, one.writable}, *one.type, one.length, context)
                .writeElements(items, position, path);
        }
    }
    return text.take();
}

void expectTheSame(std::string_view name, const ImportContext& context) {
    TreeMemory memory;
    ASSERT_TRUE(encoder::isPlain(name));
    EXPECT_EQ(itemsOf(PlainName{memory.keep(name)}, context), itemsOf(name, context)) << name;
}

TEST(ItemText, BothWaysWriteTheSameBytes) {
    for (const std::string_view name : kPlainNames)
        expectTheSame(name, ImportContext());
}

// A command that is not plain, and one that is too long to be copied, are encoded in either way.
TEST(ItemText, BothWaysWriteTheSameBytesWhateverTheCommand) {
    testing::PlcProject project;
    for (const std::string& name :
         {std::string("K\xC3\xBChlung"), std::string("a \"b\""), std::string(4000, 'c')}) {
        ImportContext context;
        context.useDefaultCommand(project.addCommand(name).makeReference());
        expectTheSame("x", context);
    }
}

/// The items that a file gets for one variable, with the members of the data block around them.
std::string itemOf(std::string_view declaration) {
    const std::string text = testing::import(testing::dataBlock(declaration)).text;
    const std::size_t begin = text.find("{\"@Skill.S7.Item\"");
    return text.substr(begin, text.rfind("]}}]") - begin);
}

// Names that are not plain reach the encoder, plain ones do not: a document does not show which.
TEST(ItemText, NamesDoNotTellTheWay) {
    const auto item = [](std::string_view name) {
        return R"({"@Skill.S7.Item":{"name":")" + std::string(name) +
               R"(","dataType":"WString","stringSize":7,"address":"DB0","writable":true,)"
               R"("command":"Default Command"}})";
    };
    EXPECT_EQ(itemOf("x : WString[7];"), item("x"));
    EXPECT_EQ(itemOf("\"a b\" : WString[7];"), item("a b"));
    EXPECT_EQ(itemOf("\"a\\b\" : WString[7];"), item("a\\\\b"));
    EXPECT_EQ(itemOf("K\xC3\xBChlung : WString[7];"), item("K\xC3\xBChlung"));
    EXPECT_EQ(itemOf("\"K\xC3\xBChlung\" : Array[0..0] of WString[7];"), item("K\xC3\xBChlung[0]"));
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
