#include <corvane/workbench/bindings/PropertyController.hpp>
#include <corvane/workbench/bindings/PropertyLayout.hpp>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace corvane::workbench::bindings {
namespace {

static_assert(!std::is_copy_constructible_v<SharedLayout>);

Validation accept(PropertyController&) { return {}; }
void ignore(PropertyController&) {}

PropertyLayout layoutOf(std::uint32_t offset) {
    return {.properties = {{.offset = offset,
                            .isReference = false,
                            .validator = &accept,
                            .visibility = nullptr}},
            .subscriptions = {{.offset = offset, .reaction = &ignore}}};
}

TEST(SharedLayout, IsEmptyWhereNothingWasConfigured) {
    const SharedLayout none;
    EXPECT_TRUE(none.get().properties.empty());
    EXPECT_TRUE(none.get().subscriptions.empty());
}

TEST(SharedLayout, EqualLayoutsAreOne) {
    const SharedLayout first(layoutOf(8));
    const SharedLayout other(layoutOf(16));
    const SharedLayout second(layoutOf(8));
    EXPECT_EQ(first.get(), layoutOf(8));
    EXPECT_EQ(&first.get(), &second.get());
    EXPECT_NE(&first.get(), &other.get());
}

TEST(SharedLayout, EveryPartTellsLayoutsApart) {
    const PropertyLayout base = layoutOf(8);
    PropertyLayout variants[6] = {base, base, base, base, base, base};
    variants[0].properties[0].offset = 9;
    variants[1].properties[0].isReference = true;
    variants[2].properties[0].validator = nullptr;
    variants[3].properties[0].visibility = [](const PropertyController&) { return true; };
    variants[4].subscriptions[0].offset = 9;
    variants[5].subscriptions.clear();
    const SharedLayout shared(base);
    for (const auto& variant : variants)
        EXPECT_NE(&SharedLayout(variant).get(), &shared.get());
}

TEST(SharedLayout, LivesAsLongAsItsLastUse) {
    SharedLayout kept(layoutOf(24));
    {
        const SharedLayout brief(layoutOf(24));
        EXPECT_EQ(&brief.get(), &kept.get());
    }
    EXPECT_EQ(kept.get(), layoutOf(24));
    kept = SharedLayout();
    EXPECT_TRUE(kept.get().properties.empty());
    const SharedLayout again(layoutOf(24));
    EXPECT_EQ(again.get(), layoutOf(24));
}

TEST(SharedLayout, MovesItsUse) {
    SharedLayout from(layoutOf(32));
    const PropertyLayout& layout = from.get();
    SharedLayout to(std::move(from));
    EXPECT_EQ(&to.get(), &layout);
    EXPECT_TRUE(from.get().properties.empty()); // NOLINT(bugprone-use-after-move): moved is empty

    SharedLayout assigned(layoutOf(40));
    assigned = std::move(to);
    EXPECT_EQ(&assigned.get(), &layout);
}

} // namespace
} // namespace corvane::workbench::bindings
