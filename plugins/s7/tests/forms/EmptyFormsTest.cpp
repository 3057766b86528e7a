#include "FormTesting.hpp"

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

TEST(EmptyForms, HaveNoControls) {
    ElementTree tree;
    EXPECT_TRUE(ShownForm(tree.add<Struct>(nullptr, "structure")).rows().empty());
    EXPECT_TRUE(ShownForm(tree.add<Command>(nullptr, "command")).rows().empty());
}

TEST(EmptyForms, NeedAForm) {
    ElementTree tree;
    expectFormNeeded(tree.add<Struct>(nullptr, "structure"));
    expectFormNeeded(tree.add<Command>(nullptr, "command"));
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
