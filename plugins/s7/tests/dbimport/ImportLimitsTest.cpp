#include "ImportTesting.hpp"

#include "dbimport/DataBlockReading.hpp"
#include "dbimport/DataBlockWriting.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/facts/ImportLimits.hpp"
#include "dbimport/warnings/ImportFindings.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::dataBlock;
using testing::importError;

std::string nested(unsigned levels) {
    std::string text;
    for (unsigned level = 0; level < levels; ++level)
        text += "s : Struct ";
    text += "x : Int; ";
    for (unsigned level = 0; level < levels; ++level)
        text += "END_STRUCT; ";
    return dataBlock(text);
}

TEST(ImportLimits, StructsNestTo256Levels) {
    EXPECT_EQ(importError(nested(256)), "no error");
    const std::string message = "Structs are nested too deep, the maximum number of levels is 256";
    EXPECT_EQ(importError(nested(257)), message);
    std::string arrays;
    for (int level = 0; level < 100'000; ++level)
        arrays += "s : Array[0..0] of Struct ";
    EXPECT_EQ(importError(dataBlock(arrays)), message);
}

TEST(ImportLimits, LevelsAreCountedForEachBranch) {
    std::string members;
    for (int index = 0; index < 300; ++index)
        members += "s" + std::to_string(index) + " : Struct END_STRUCT; ";
    EXPECT_EQ(importError(dataBlock(members)), "no error");
}

TEST(ImportLimits, HugeArraysEndAtOnce) {
    const std::string message = "Too many variables and array elements in one file, the maximum "
                                "number is 16777216";
    for (const char* const type : {"Int", "S5Time", "Struct END_STRUCT", "Bool"})
        EXPECT_EQ(importError(dataBlock("x : Array[0..2147483647] of " + std::string(type) + ";")),
                  message);
    EXPECT_EQ(importError(dataBlock("x : Array[0..2147483647, 0..2147483647, 0..2147483647] of "
                                    "DTL;")),
              message);
    // Whatever is not accessible is passed over, however large.
    EXPECT_EQ(importError(dataBlock("x { ExternalAccessible := 'False' } : Array[0..2147483647] of "
                                    "Int;")),
              "no error");
    EXPECT_EQ(importError(dataBlock("x : Array[0..2147483647, 1..0] of Int;")), "no error");
}

TEST(ImportLimits, ElementsAreCountedThroughTheWholeFile) {
    ImportLimits limits;
    // The body, two scalars, an array and its three elements.
    const std::string source =
        dataBlock("a : Int; b { ExternalAccessible := FALSE } : Int; c : Array[1..3] of S5Time;");
    limits.elements = 7;
    EXPECT_EQ(importError(source, limits), "no error");
    limits.elements = 6;
    EXPECT_EQ(importError(source, limits),
              "Too many variables and array elements in one file, the maximum number is 6");
    const std::string other =
        "DATA_BLOCK b {S7_Optimized_Access := FALSE} STRUCT x : Int; END_STRUCT "
        "END_DATA_BLOCK";
    limits.elements = 8;
    EXPECT_NE(importError(source + other, limits), "no error");
    limits.elements = 9;
    EXPECT_EQ(importError(source + other, limits), "no error");
}

TEST(ImportLimits, SmallArraysInArraysAddUp) {
    std::string members;
    for (int level = 0; level < 40; ++level)
        members += "s : Array[0..1] of Struct ";
    members += "t : S5Time; ";
    for (int level = 0; level < 40; ++level)
        members += "END_STRUCT; ";
    ImportLimits limits;
    limits.elements = 10'000;
    EXPECT_EQ(importError(dataBlock(members), limits),
              "Too many variables and array elements in one file, the maximum number is 10000");
}

TEST(ImportLimits, DocumentsHaveALargestSize) {
    const std::string source = dataBlock("x : Array[0..999] of Int;");
    const std::size_t size = testing::import(source).text.size();
    ImportLimits limits;
    limits.documentBytes = 2 * size;
    EXPECT_EQ(importError(source, limits), "no error");
    limits.documentBytes = size - 1;
    EXPECT_EQ(importError(source, limits), "Import document too large, the maximum number of bytes "
                                           "is " +
                                               std::to_string(size - 1));
    EXPECT_EQ(ImportLimits().documentBytes, 2147483648U);
}

TEST(ImportLimits, DimensionsFit32Bits) {
    EXPECT_EQ(importError(dataBlock("x { ExternalAccessible := FALSE } : "
                                    "Array[-2147483647..2147483647] of Int;")),
              "no error");
    EXPECT_EQ(importError(dataBlock("x : Array[-2147483648..2147483647] of Int;")),
              "Array dimension too large, the maximum size is 4294967295");
}

TEST(ImportLimits, ArraysHaveAtMost64Dimensions) {
    const auto source = [](int dimensions) {
        std::string bounds = "0..0";
        for (int index = 1; index < dimensions; ++index)
            bounds += ",0..0";
        return dataBlock("x : Array[" + bounds + "] of Int;");
    };
    EXPECT_EQ(importError(source(64)), "no error");
    EXPECT_EQ(importError(source(65)), "Array with too many dimensions, the maximum number is 64");
}

/// A member of a data block that is too long for somebody else.
class TooLong final : public DataBlockNode {
public:
    TooLong() : DataBlockNode("x", {}) {}
    void addChild(NodeOwner<DataBlockNode>) override {}
    void writeElements(utils::json::encoder::Array&, MemoryPosition&, ElementPath&) override {
        throw std::length_error("of somebody else");
    }
    [[nodiscard]] double documentSize(std::size_t) const override { return 0; }
};

TEST(ImportLimits, OnlyTheDocumentIsCalledTooLarge) {
    auto memory = std::make_shared<TreeMemory>();
    auto root = memory->make<RootNode>("Data");
    root->addChild(memory->make<TooLong>());
    std::vector<DataBlockRecord> records;
    records.push_back({"Data", 1, {std::move(memory), std::move(root)}});
    ImportFindings findings;
    EXPECT_EQ(testing::errorOf([&] {
                  static_cast<void>(
                      writeDataBlocks(std::move(records), ImportContext(), {}, findings));
              }),
              "of somebody else");
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
