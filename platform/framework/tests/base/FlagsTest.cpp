#include <corvane/workbench/Flags.hpp>
#include <corvane/workbench/io/Direction.hpp>

#include <gtest/gtest.h>

namespace corvane::workbench {
namespace {

using io::Direction;
using Directions = Flags<Direction>;

static_assert(std::is_same_v<Directions::Bits, std::uint8_t>);
static_assert(Directions().bits() == 0);
static_assert(Directions{Direction::input}.bits() == 1);
static_assert(Directions{Direction::output}.bits() == 2);
static_assert(Directions{Direction::input, Direction::output}.bits() == 3);
static_assert(Directions{Direction::output, Direction::output}.bits() == 2);

TEST(Flags, HasWhatItWasMadeFrom) {
    const Directions none;
    EXPECT_FALSE(none.has(Direction::input));
    EXPECT_FALSE(none.has(Direction::output));

    const Directions input{Direction::input};
    EXPECT_TRUE(input.has(Direction::input));
    EXPECT_FALSE(input.has(Direction::output));
}

TEST(Flags, AreEqualByTheirContents) {
    EXPECT_EQ((Directions{Direction::input, Direction::output}),
              (Directions{Direction::output, Direction::input}));
    EXPECT_NE(Directions{Direction::input}, Directions{Direction::output});
    EXPECT_NE(Directions(), Directions{Direction::output});
}

} // namespace
} // namespace corvane::workbench
