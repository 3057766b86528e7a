#include "ElementTree.hpp"

#include "elements/Members.hpp"

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

TEST(Command, HasNoMembersInDocuments) {
    ElementTree tree;
    EXPECT_EQ(saved(tree.load<Command>(nullptr, "Fast", "{}")), "{}");
    expectRefusal<Command>({R"({"interval":100})", "unknown member “interval”"});
}

TEST(Command, PublishesItsMembers) {
    const Command command;
    expectAttributes(command, {&model::Attribute::kUpdateTime, &model::Attribute::kQuality,
                               &kReadError, &model::Attribute::kWriteTime, &kWriteError});
    expectEvents(command, {&kReadEvent, &kWrittenEvent, &kWriteFailedEvent});
    expectTasks(command, {&kExecuteTask});
}

TEST(Command, IsTheSameToEveryImport) {
    ElementTree tree;
    const auto& fast = tree.load<Command>(nullptr, "Fast");
    const auto& slow = tree.load<Command>(nullptr, "Slow");
    ASSERT_TRUE(fast.importId().has_value());
    EXPECT_EQ(*fast.importId(), utils::core::Uuid());
    EXPECT_EQ(slow.importId(), fast.importId());
    EXPECT_FALSE(fast.preserveExistingNameOnImport());
}

TEST(Command, HasNoErrors) {
    ElementTree tree;
    EXPECT_EQ(tree.add<Command>(nullptr, "Fast").localPropertyErrorCount(), 0U);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
