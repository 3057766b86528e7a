#include "ElementTree.hpp"

#include <corvane/workbench/host/Tree.hpp>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

TEST(Struct, HasNoMembersInDocuments) {
    ElementTree tree;
    EXPECT_EQ(saved(tree.load<Struct>(nullptr, "Motor", "{}")), "{}");
    for (const Refusal& one : {Refusal{R"({"address":"DBB0"})", "unknown member “address”"},
                               Refusal{R"({"DBNumber":1})", "unknown member “DBNumber”"}})
        expectRefusal<Struct>(one);
}

TEST(Struct, IsIdentifiedByItsName) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"Motor", "603a1cb8-d40f-5273-b7e1-59c681477117"},
        {"motor", "da22f3a3-f534-5e8f-ab21-bdfd5e3e60cd"},
        {"Größe", "ea9e587b-e1e2-5307-9bcb-4ebeadc5af57"},
    };
    for (const auto& [name, uuid] : cases) {
        ElementTree tree;
        const auto& structure = tree.load<Struct>(nullptr, name);
        ASSERT_TRUE(structure.importId());
        EXPECT_EQ(structure.importId()->toString(), uuid);
        EXPECT_FALSE(structure.preserveExistingNameOnImport());
    }
}

TEST(Struct, IsAnotherOneUnderAnotherName) {
    ElementTree tree;
    const auto& structure = tree.load<Struct>(nullptr, "Motor");
    const auto& nested = tree.load<Struct>(&tree.load<Struct>(nullptr, "Line"), "Motor");
    EXPECT_EQ(nested.importId(), structure.importId());
    host::rename(*tree.model().findElement("/Motor"), "motor");
    EXPECT_EQ(structure.importId()->toString(), "da22f3a3-f534-5e8f-ab21-bdfd5e3e60cd");
}

TEST(Struct, PublishesNoMembers) {
    const Struct structure;
    expectAttributes(structure, {});
    expectEvents(structure, {});
    expectTasks(structure, {});
}

TEST(Struct, HasNoErrors) {
    ElementTree tree;
    EXPECT_EQ(tree.add<Struct>(nullptr, "Motor").localPropertyErrorCount(), 0U);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
