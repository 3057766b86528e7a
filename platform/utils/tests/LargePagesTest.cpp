#include <corvane/utils/memory/LargePages.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace corvane::utils::memory {
namespace {

constexpr std::size_t kMiB = std::size_t{1} << 20U;

TEST(LargePages, APageHasTwoMebibytes) { EXPECT_EQ(kLargePage, 2 * kMiB); }

bool isAligned(const Block& block, std::size_t alignment) {
    return reinterpret_cast<std::uintptr_t>(block.get()) % alignment == 0;
}

TEST(LargePages, ABlockCanBeWrittenToItsLastByte) {
    constexpr std::byte kMark{0xA5};
    for (const std::size_t size :
         {std::size_t{1}, std::size_t{4096}, 2 * kMiB - 1, 2 * kMiB, 2 * kMiB + 1, 5 * kMiB}) {
        SCOPED_TRACE(size);
        const Block block = allocateBlock(size);
        ASSERT_NE(block, nullptr);
        const std::span bytes(block.get(), size);
        std::ranges::fill(bytes, kMark);
        EXPECT_EQ(std::ranges::count(bytes, kMark), static_cast<std::ptrdiff_t>(size));
    }
}

TEST(LargePages, ABlockIsAlignedForEveryType) {
    for (const std::size_t size :
         {std::size_t{1}, std::size_t{17}, std::size_t{4096}, 2 * kMiB - 1, 2 * kMiB, 5 * kMiB})
        EXPECT_TRUE(isAligned(allocateBlock(size), alignof(std::max_align_t))) << size;
}

TEST(LargePages, ALargeBlockBeginsWithAPage) {
    // Several at once, so that not all of them begin with a page by chance.
    std::vector<Block> blocks;
    for (const std::size_t size : {kLargePage, kLargePage + 1, 5 * kMiB, kLargePage, 5 * kMiB}) {
        blocks.push_back(allocateBlock(size));
        EXPECT_TRUE(isAligned(blocks.back(), kLargePage)) << size;
    }
}

// A hint leaves the bytes as they are, wherever in a block it begins.
TEST(LargePages, PreferringThemChangesNoByte) {
    const std::size_t size = 5 * kMiB;
    std::vector<unsigned char> bytes(size, 0x5A);
    for (const std::size_t begin : {std::size_t{0}, std::size_t{1}, size - 1, size})
        preferLargePages(bytes.data() + begin, size - begin);
    EXPECT_EQ(std::ranges::count(bytes, 0x5A), static_cast<std::ptrdiff_t>(size));
}

TEST(LargePages, ZerosFillTheBlockAndNothingElse) {
    constexpr std::byte kMark{0xA5};
    constexpr std::size_t kAround = 5000; // more than a page
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, kMiB / 8 - 1,
                                   kMiB / 8, kMiB, 3 * kMiB + 17})
        for (const std::size_t offset : {std::size_t{0}, std::size_t{1}, std::size_t{4095}}) {
            SCOPED_TRACE(testing::Message() << size << " bytes at " << offset);
            std::vector<std::byte> bytes(kAround + offset + size + kAround, kMark);
            fillWithZeros(bytes.data() + kAround + offset, size);
            const std::span all(bytes);
            const auto zeros = all.subspan(kAround + offset, size);
            EXPECT_EQ(std::ranges::count(zeros, std::byte{0}), static_cast<std::ptrdiff_t>(size));
            EXPECT_EQ(std::ranges::count(all, kMark),
                      static_cast<std::ptrdiff_t>(bytes.size() - size));
        }
}

} // namespace
} // namespace corvane::utils::memory
