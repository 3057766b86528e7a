#include "CoreTesting.hpp"

#include "workbench/core/project/DocumentReader.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <optional>

#include <corvane/workbench/host/Tree.hpp>

namespace corvane::workbench::core::test {

namespace {

class DocumentReaderTest : public ProjectTest {
protected:
    /// The error of a project file with this content, without the file's name in front.
    std::string errorOf(std::string_view content) const {
        const auto file = folder.write("bad.json", content);
        const auto head = file.string() + ": ";
        try {
            const Project project(plugins, file);
        } catch (const DocumentError& error) {
            const std::string text = error.what();
            EXPECT_TRUE(text.starts_with(head)) << text;
            return text.substr(head.size());
        }
        ADD_FAILURE() << "it was loaded: " << content;
        return {};
    }
};

} // namespace

TEST_F(DocumentReaderTest, SaysWhatIsWrongWithAProject) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", "malformed JSON: there is no value (line 1, column 1)"},
        {"[]", "expected an object, found an array (line 1, column 1)"},
        {"{}", R"(member "corvane": this is no corvane project (line 1, column 1))"},
        {R"({"corvane": "1", "elements": []})",
         R"(member "corvane": this is no corvane project (line 1, column 1))"},
        {R"({"corvane": 2, "elements": []})",
         R"(member "corvane": the project is of format 2, which is not known (line 1, column 1))"},
        {R"({"corvane": 1.0, "elements": []})",
         R"(member "corvane": the project is of format 1.0, which is not known )"
         "(line 1, column 1)"},
        {R"({"corvane": 1})",
         R"(member "elements": the project has no elements (line 1, column 1))"},
        {R"({"corvane": 1, "elements": {}})",
         R"(member "elements": expected an array, found an object (line 1, column 28))"},
        {R"({"corvane": 1, "elements": [], "colour": 3})", R"(unknown member “colour”)"},
        {R"({"corvane": 1, "elements": [], "elements": []})",
         R"(member "elements": duplicate member (line 1, column 32))"},
        {"{\"corvane\": 1,\n \"elements\": []} x",
         "malformed JSON: unexpected text behind the outermost value (line 2, column 18)"},
        {R"({"corvane": 1, "elements": [)",
         "malformed JSON: unexpected end of the text (line 1, column 29)"},
    };
    for (const auto& [content, message] : cases)
        EXPECT_EQ(errorOf(content), message) << content;
}

TEST_F(DocumentReaderTest, SaysWhatIsWrongWithAnElement) {
    // Each document stands at line 2, column 1.
    const std::vector<std::pair<std::string, std::string>> cases{
        {"7", "expected an object, found a number (line 2, column 1)"},
        {"{}", "an element document has one member, its class and content (line 2, column 1)"},
        {R"({"@Skill.Wiring.Shelf": {"name": "a"}})",
         R"(no loaded plug-in has the element class “@Skill.Wiring.Shelf”)"},
        {R"({"Rack": {"name": "a"}})", R"(no loaded plug-in has the element class “Rack”)"},
        {R"({"@Skill.Wiring.Pin": {"name": "a"}})",
         R"(member "@Skill.Wiring.Pin": an element of this class cannot stand here )"
         "(line 2, column 1)"},
        {R"({"@Skill.Wiring.Rack": 5})",
         R"(member "@Skill.Wiring.Rack": expected an object, found a number (line 2, column 24))"},
        {R"({"@Skill.Wiring.Rack": {}})",
         R"(member "name": the element has no name (line 2, column 24))"},
        {R"({"@Skill.Wiring.Rack": {"name": ""}})",
         R"(member "name": an element's name must not be empty (line 2, column 24))"},
        {R"({"@Skill.Wiring.Rack": {"name": 1}})",
         R"(member "name": expected a string, found a number (line 2, column 33))"},
        {R"({"@Skill.Wiring.Rack": {"name": "a", "name": "b"}})",
         R"(element “/a”: member "name": duplicate member (line 2, column 38))"},
        {R"({"@Skill.Wiring.Rack": {"name": "a"}, "@Skill.Wiring.Rack": {"name": "b"}})",
         "an element document has only one member (line 2, column 1)"},
        {R"({"@Skill.Wiring.Rack": {"name": "a", "height": 3}})",
         R"(element “/a”: unknown member “height”)"},
        {R"({"@Skill.Wiring.Rack": {"name": "a", "id": 3}})",
         R"(element “/a”: member "id": expected a string, found a number (line 2, column 44))"},
        {R"({"@Skill.Wiring.Rack": {"name": "a", "children": 3}})",
         R"(member "children": expected an array, found a number (line 2, column 50))"},
        {R"({"@Skill.Wiring.Rack": {"name": "a/b", "children": [
           {"@Skill.Wiring.Note": {"name": "n~", "text": "unreadable"}}]}})",
         R"(element “/a~1b/n~0”: the note cannot be read)"},
        {R"({"@Skill.Wiring.Rack": {"name": "a", "children": [
           {"@Skill.Wiring.Note": {"name": "n", "last": 1, "text": "lost"}}]}})",
         R"(element “/a/n”: unknown member “text”)"},
        {R"({"@Skill.Wiring.Rack": {"name": "a", "children": [
{"@Skill.Wiring.Rack": {"name": "b"}}]}})",
         R"(member "@Skill.Wiring.Rack": an element of this class cannot stand here )"
         "(line 3, column 1)"},
    };
    for (const auto& [element, message] : cases)
        EXPECT_EQ(errorOf("{\"corvane\": 1, \"elements\": [\n" + element + "]}"), message)
            << element;
}

// What a user reads of a file's faults is in the user's language.
TEST_F(DocumentReaderTest, SaysItInTheUsersLanguage) {
    i18n::setTranslator([](std::string_view context, std::string_view text) {
        std::optional<std::u16string> translation;
        if (context == "corvane::workbench::core::DocumentReader" && text == "element “{}”: {}")
            translation = u"Element „{}“: {}";
        if (context == "corvane::workbench::core::Project" && text == "this is no corvane project")
            translation = u"dies ist kein Projekt";
        return translation;
    });
    EXPECT_EQ(errorOf("{}"), R"(member "corvane": dies ist kein Projekt (line 1, column 1))");
    EXPECT_EQ(errorOf(R"({"corvane": 1, "elements": [{"@Skill.Wiring.Rack":
                          {"name": "ä", "height": 3}}]})"),
              R"(Element „/ä“: unknown member “height”)");
    i18n::setTranslator({});
}

TEST_F(DocumentReaderTest, RefusesElementsThatAreNestedTooDeeply) {
    const auto nested = [](unsigned depth) {
        std::string text = R"({"corvane": 1, "elements": [{"@Skill.Wiring.Rack": {"name": "r")";
        for (unsigned level = 1; level != depth; ++level)
            text += R"(, "children": [{"@Skill.Wiring.Box": {"name": "b")";
        for (unsigned level = 1; level != depth; ++level)
            text += "}}]";
        return text + "}}]}";
    };
    constexpr unsigned kDeepest = model::Element::kMaxDepth;
    const Project project(plugins, folder.write("deep.json", nested(kDeepest)));
    EXPECT_EQ(project.model().root().childElements().size(), 1U);
    EXPECT_EQ(errorOf(nested(kDeepest + 1)), "elements are nested too deeply");
    EXPECT_EQ(errorOf(nested(100'000)).substr(0, 14), "malformed JSON");
}

TEST_F(DocumentReaderTest, MakesNamesUnique) {
    const auto project = load(R"({"@Skill.Wiring.Rack": {"name": "a"}},
                                 {"@Skill.Wiring.Rack": {"name": "a"}},
                                 {"@Skill.Wiring.Rack": {"name": "a 2"}})");
    EXPECT_EQ(elementsOf(project), R"({"@Skill.Wiring.Rack": {"name": "a", "id": ""}},)"
                                   R"({"@Skill.Wiring.Rack": {"name": "a 2", "id": ""}},)"
                                   R"({"@Skill.Wiring.Rack": {"name": "a 2 2", "id": ""}})");
}

TEST_F(DocumentReaderTest, ReadsMembersInAnyOrder) {
    const auto project = load(R"({"@Skill.Wiring.Rack": {"children": [
        {"@Skill.Wiring.Pin": {"value": "v", "id": "p", "name": "pin"}}], "id": "r", "name": "a"}})");
    EXPECT_EQ(elementsOf(project),
              R"({"@Skill.Wiring.Rack": {"name": "a", "id": "r", "children": [)"
              R"({"@Skill.Wiring.Pin": {"name": "pin", "id": "p", "value": "v", "peer": ""}}]}})");
}

TEST_F(DocumentReaderTest, ResolvesReferencesToWhatComesLater) {
    const auto project = load(R"({"@Skill.Wiring.Rack": {"name": "a", "children": [
        {"@Skill.Wiring.Pin": {"name": "first", "peer": "/a/b~1c"}},
        {"@Skill.Wiring.Pin": {"name": "lost", "peer": "/a/nowhere"}},
        {"@Skill.Wiring.Pin": {"name": "b/c"}}]}})");
    EXPECT_EQ(errorsOf(project),
              std::vector<std::string>{
                  "/a/lost: Peer: the referenced element “/a/nowhere” does not exist"});
    auto& target = project.element("/a/b~1c");
    host::rename(target, "d~");
    EXPECT_NE(elementsOf(project).find(R"("name": "first", "id": "", "value": "", )"
                                       R"("peer": "/a/d~0")"),
              std::string::npos);
    EXPECT_NE(elementsOf(project).find(R"("peer": "/a/nowhere")"), std::string::npos);
}

} // namespace corvane::workbench::core::test
