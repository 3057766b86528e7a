#include "TestSkill.hpp"

#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/ReferenceTable.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace corvane::workbench::testing {
namespace {

using host::ReferenceTable;
using model::ElementReference;

TEST(ReferenceTable, AnEmptyTextIsTheEmptyReference) {
    ReferenceTable table;
    EXPECT_TRUE(table.reference("").empty());
    EXPECT_EQ(table.size(), 0u);
}

TEST(ReferenceTable, ReferencesOfOneTextWaitAsOne) {
    ReferenceTable table;
    const auto a = table.reference("/a");
    const auto b = table.reference("/b");
    const auto again = table.reference("/a");
    EXPECT_EQ(table.size(), 2u);
    EXPECT_EQ(a, again);
    EXPECT_NE(a, b);
    EXPECT_EQ(again.text(), "/a");
}

TEST(ReferenceTable, KeepsAnyText) {
    ReferenceTable table;
    for (const std::string_view text : {"no path", "/~9", "//", "\u00e4", "/a/b/c/d/e/f/g/h/i/j/k"})
        EXPECT_EQ(table.reference(text).text(), text);
}

TEST(ReferenceTable, AReferenceThatGoesWaitsNoMore) {
    ReferenceTable table;
    {
        const auto a = table.reference("/a");
        EXPECT_EQ(table.size(), 1u);
    }
    EXPECT_EQ(table.size(), 0u);
    // The last text asked for is remembered, but not beyond the life of its references.
    EXPECT_EQ(table.reference("/a").text(), "/a");
}

TEST(ReferenceTable, ResolvesOnceForEachText) {
    host::Model model;
    auto& pump = add<Machine>(model.root(), "pump");
    ReferenceTable table;
    std::vector<ElementReference> references;
    for (int i = 0; i != 100; ++i) {
        references.push_back(table.reference("pump"));
        references.push_back(table.reference("missing"));
    }
    int asked = 0;
    EXPECT_TRUE(table.resolve([&](std::string_view text) {
        ++asked;
        return text == "pump" ? &pump : nullptr;
    }));
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(table.size(), 1u);
    EXPECT_EQ(references[0].element(), &pump);
    EXPECT_EQ(references[0].text(), "/pump");
    EXPECT_EQ(references[1].text(), "missing");
}

TEST(ReferenceTable, ManyDifferentTextsResolveTogether) {
    host::Model model;
    ReferenceTable table;
    std::vector<ElementReference> references;
    for (int i = 0; i != 500; ++i) {
        const auto name = "m" + std::to_string(i);
        add<Machine>(model.root(), name);
        references.push_back(table.reference("/" + name));
        references.push_back(table.reference("/no " + name));
    }
    EXPECT_TRUE(table.resolve([&](std::string_view text) { return model.findElement(text); }));
    EXPECT_EQ(table.size(), 500u);
    for (std::size_t i = 0; i != 500; ++i) {
        EXPECT_EQ(references[2 * i].element(), model.root().childElements()[i].get());
        EXPECT_FALSE(references[2 * i + 1].element().has_value());
    }
}

TEST(ReferenceTable, TwoTextsMayMeanOneElement) {
    host::Model model;
    auto& pump = add<Machine>(model.root(), "pump");
    ReferenceTable table;
    const auto path = table.reference("/pump");
    auto internal = table.reference("pump");
    table.resolve([&](std::string_view) { return &pump; });
    EXPECT_EQ(path, internal);
    internal = ElementReference();
    EXPECT_EQ(path.element(), &pump);
}

TEST(ReferenceTable, ResolvedTextsStartAnew) {
    host::Model model;
    auto& pump = add<Machine>(model.root(), "pump");
    ReferenceTable table;
    const auto first = table.reference("/pump");
    table.resolve([&](std::string_view) { return &pump; });
    const auto second = table.reference("/pump");
    EXPECT_FALSE(second.element().has_value());
    EXPECT_EQ(first.element(), &pump);
}

TEST(ReferenceTable, TakesOverWhatWaits) {
    host::Model model;
    ReferenceTable document;
    const auto ours = model.references().reference("/pump");
    const auto theirs = document.reference("/pump");
    auto brief = document.reference("/brief");
    model.references().takeOver(document);
    EXPECT_EQ(document.size(), 0u);
    EXPECT_EQ(model.references().size(), 3u);
    brief = ElementReference();
    EXPECT_EQ(model.references().size(), 2u);

    auto& pump = add<Machine>(model.root(), "pump");
    EXPECT_TRUE(model.resolveReferences());
    EXPECT_EQ(ours.element(), &pump);
    EXPECT_EQ(theirs.element(), &pump);
    EXPECT_NE(document.reference("/pump"), theirs);
}

TEST(ReferenceTable, ReferencesOutliveIt) {
    std::optional<ReferenceTable> table(std::in_place);
    auto reference = table->reference("/pump");
    const auto copy = reference;
    table.reset();
    EXPECT_EQ(reference.text(), "/pump");
    reference = ElementReference();
    EXPECT_EQ(copy.text(), "/pump");
}

TEST(Context, GivesTheReferencesOfItsDocument) {
    ReferenceTable table;
    config::Context context(table);
    EXPECT_TRUE(context.reference("").empty());
    EXPECT_EQ(table.size(), 0u);
    const auto reference = context.reference("/pump");
    EXPECT_EQ(reference.text(), "/pump");
    EXPECT_EQ(reference, table.reference("/pump"));
}

} // namespace
} // namespace corvane::workbench::testing
