#include <corvane/utils/memory/Arena.hpp>
#include <corvane/utils/memory/Pool.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace corvane::utils::memory {
namespace {

/// A piece of memory, filled with a byte of its own.
struct Piece {
    void* place;
    std::size_t size;
    unsigned char mark;

    Piece(void* newPlace, std::size_t newSize, unsigned char newMark)
        : place(newPlace), size(newSize), mark(newMark) {
        std::memset(place, mark, size);
    }

    /// Whether nobody else has written into it.
    [[nodiscard]] bool isUntouched() const {
        const auto* const bytes = static_cast<const unsigned char*>(place);
        return std::all_of(bytes, bytes + size,
                           [this](unsigned char byte) { return byte == mark; });
    }
    [[nodiscard]] bool isAlignedTo(std::size_t alignment) const {
        return reinterpret_cast<std::uintptr_t>(place) % alignment == 0;
    }
};

TEST(Pool, ObjectsOfEverySizeHaveAPlaceOfTheirOwn) {
    std::vector<Piece> objects;
    for (std::size_t size = 1; size <= kLargestPooled + 40; ++size)
        for (unsigned char mark = 1; mark != 4; ++mark)
            objects.emplace_back(allocatePooled(size), size, mark);
    for (const Piece& object : objects) {
        EXPECT_TRUE(object.isUntouched()) << object.size;
        EXPECT_TRUE(object.isAlignedTo(alignof(std::max_align_t))) << object.size;
    }
    for (const Piece& object : objects)
        freePooled(object.place, object.size);
}

// As elements come and go while projects are edited.
TEST(Pool, ObjectsComeAndGoInAnyOrder) {
    std::mt19937 random(7); // the same order each time
    std::vector<Piece> objects;
    for (unsigned step = 0; step != 20'000; ++step) {
        const bool grows = objects.empty() || random() % 5 < (step < 15'000 ? 3 : 1);
        if (grows) {
            const std::size_t size = random() % 2 == 0 ? 88 : 192;
            objects.emplace_back(allocatePooled(size), size,
                                 static_cast<unsigned char>(random() % 256));
            continue;
        }
        std::swap(objects[random() % objects.size()], objects.back());
        ASSERT_TRUE(objects.back().isUntouched());
        freePooled(objects.back().place, objects.back().size);
        objects.pop_back();
    }
    for (const Piece& object : objects) {
        ASSERT_TRUE(object.isUntouched());
        freePooled(object.place, object.size);
    }
}

TEST(Pool, ServesAgainAfterTheLastObjectHasGone) {
    for (int round = 0; round != 3; ++round) {
        std::vector<Piece> objects;
        for (int object = 0; object != 50'000; ++object)
            objects.emplace_back(allocatePooled(96), 96, static_cast<unsigned char>(object % 256));
        EXPECT_TRUE(std::ranges::all_of(objects, &Piece::isUntouched));
        for (const Piece& object : objects)
            freePooled(object.place, object.size);
    }
}

TEST(Pool, NothingIsFreedLikeAnyOtherNothing) {
    freePooled(nullptr, 88);
    freePooled(nullptr, kLargestPooled + 1);
    void* const place = allocatePooled(88);
    EXPECT_NE(place, nullptr);
    freePooled(place, 88);
}

TEST(Arena, PiecesOfAnySizeDoNotOverlap) {
    Arena arena;
    for (int round = 0; round != 2; ++round) {
        std::vector<Piece> pieces;
        for (std::size_t size = 1; size != 3'000; ++size)
            pieces.emplace_back(arena.allocate(size), size, static_cast<unsigned char>(size % 256));
        // One that no block has room for, and small ones behind it.
        for (const std::size_t size : {std::size_t{9} << 20U, std::size_t{1}, std::size_t{64}})
            pieces.emplace_back(arena.allocate(size), size, std::uint8_t{0x5A});
        for (const Piece& piece : pieces) {
            EXPECT_TRUE(piece.isUntouched()) << piece.size;
            EXPECT_TRUE(piece.isAlignedTo(Arena::kAlignment)) << piece.size;
        }
        arena.release();
    }
}

} // namespace
} // namespace corvane::utils::memory
