#include "TestSkill.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/workbench/host/Model.hpp>

#include <gtest/gtest.h>

namespace corvane::workbench::testing {
namespace {

using model::ImportReference;

std::string saved(const ImportReference& reference) {
    utils::io::StringOutputStream stream;
    {
        utils::json::encoder::Document document(stream, utils::json::encoder::Format::compact);
        auto members = document.object();
        reference.saveTo(members, "feeder");
    }
    return stream.take();
}

TEST(ImportReference, IsNotSetByDefault) {
    const ImportReference none;
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_EQ(none.text(), "");
    EXPECT_EQ(saved(none), R"({"feeder":""})");
}

TEST(ImportReference, ToAnElementThatExistsIsItsPath) {
    host::Model model;
    auto& pump = add<Machine>(add<Station>(model.root(), "line"), "pump");
    const ImportReference reference(pump.makeReference());
    EXPECT_TRUE(static_cast<bool>(reference));
    EXPECT_EQ(reference.text(), "/line/pump");
    EXPECT_EQ(saved(reference), R"({"feeder":"/line/pump"})");
}

TEST(ImportReference, ToAMissingElementIsTheTextThatIsKept) {
    host::ReferenceTable table;
    EXPECT_EQ(ImportReference(table.reference("/gone")).text(), "/gone");
    EXPECT_FALSE(static_cast<bool>(ImportReference(model::ElementReference())));
}

TEST(ImportReference, ToAnElementOfTheDocumentIsItsEscapedName) {
    EXPECT_EQ(ImportReference::makeInternalReference("Default Command").text(), "Default Command");
    // A name that begins with "/" must not be taken for a path.
    EXPECT_EQ(ImportReference::makeInternalReference("/a~").text(), "~1a~0");
    EXPECT_TRUE(static_cast<bool>(ImportReference::makeInternalReference("x")));
}

} // namespace
} // namespace corvane::workbench::testing
