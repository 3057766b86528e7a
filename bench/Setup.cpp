#include "bench/Setup.hpp"

#include "workbench/core/project/DocumentWriter.hpp"

#include <corvane/utils/core/Uuid.hpp>
#include <corvane/utils/io/FileOutputStream.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <fstream>
#include <stdexcept>

namespace corvane::bench {

namespace core = workbench::core;

Setup::Setup()
    : folder_(std::filesystem::temp_directory_path() /
              ("corvane-roads-" + utils::core::Uuid::createVersion4().toString())) {
    plugins_.load(CORVANE_PLUGIN);
    if (plugins_.skills().empty())
        throw std::runtime_error("the plug-in was not loaded: " +
                                 plugins_.failures().front().reason);
    std::filesystem::create_directory(folder_);
}

Setup::~Setup() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path Setup::write(const std::string& name, std::string_view content) const {
    std::ofstream(path(name), std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return path(name);
}

Setup::Target Setup::newTarget() const {
    Target target{core::Project(plugins_), nullptr};
    target.element = core::addImportTarget(target.project, ".db");
    return target;
}

void Setup::save(const core::Project& project, const std::filesystem::path& file) const {
    auto stream = utils::io::FileOutputStream::create(file);
    core::writeProject(stream, plugins_, project.model().root());
    stream.flush();
}

std::string Setup::documentOf(workbench::model::Element& element,
                              const std::filesystem::path& file) {
    const core::OpenForm form(element);
    auto document = form.importButton(".db")->press(file);
    if (!document)
        throw std::runtime_error(utils::string::detail::utf16ToUtf8(document.error().text));
    return std::move(document->text);
}

} // namespace corvane::bench
