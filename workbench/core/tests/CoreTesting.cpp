#include "CoreTesting.hpp"

#include "workbench/core/project/DocumentWriter.hpp"
#include "workbench/core/project/PropertyErrors.hpp"

#include <corvane/utils/io/FileOutputStream.hpp>
#include <corvane/utils/string/Utf.hpp>

namespace corvane::workbench::core::test {

namespace fs = std::filesystem;
using utils::string::detail::utf16ToUtf8;

fs::path testPlugin(std::string_view name) {
    return fs::path(CORVANE_TEST_PLUGINS) / (std::string(name) + ".so");
}

ProjectTest::ProjectTest() {
    plugins.load(testPlugin("Wiring"));
    plugins.load(CORVANE_OWN_PLUGIN);
}

Project ProjectTest::load(std::string_view elements) const {
    const auto file = folder.write("loaded.json", R"({"corvane": 1, "elements": [)" +
                                                      std::string(elements) + "]}");
    return {plugins, file};
}

std::string ProjectTest::elementsOf(const Project& project) const {
    const auto file = folder.path() / "written.json";
    auto stream = utils::io::FileOutputStream::create(file);
    writeProject(stream, plugins, project.model().root());
    stream.close();
    std::string text = contentOf(file);
    fs::remove(file);

    std::string elements; // no text of these tests has a blank behind a line end or a comma
    for (std::size_t i = 0; i != text.size(); ++i) {
        if (text[i] == '\n')
            continue;
        if (text[i] == ' ' && i != 0 && (text[i - 1] == '\n' || text[i - 1] == ' '))
            continue;
        elements += text[i];
    }
    constexpr std::string_view kHead = R"({"corvane": 1, "elements": [)";
    EXPECT_TRUE(elements.starts_with(kHead));
    return elements.substr(kHead.size(), elements.size() - kHead.size() - 2);
}

std::vector<std::string> ProjectTest::errorsOf(const Project& project) {
    std::vector<std::string> errors;
    for (const auto& error : propertyErrors(project.model().root().childElements()))
        errors.push_back(error.element->path() + ": " + utf16ToUtf8(error.field) + ": " +
                         utf16ToUtf8(error.message));
    return errors;
}

Project ProjectTest::reloaded(const Project& project) const { return load(elementsOf(project)); }

} // namespace corvane::workbench::core::test
