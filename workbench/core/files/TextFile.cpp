#include "workbench/core/files/TextFile.hpp"

#include "workbench/core/files/FileIdentity.hpp"

#include <corvane/utils/io/FileInputStream.hpp>
#include <corvane/utils/memory/LargePages.hpp>

#include <system_error>

namespace corvane::workbench::core {

std::string readTextFile(const std::filesystem::path& file) try {
    utils::io::FileInputStream stream(file);
    std::string text;
    text.reserve(identityOf(file).size);
    utils::memory::preferLargePages(text.data(), text.capacity());
    while (stream.ensureBuffer()) {
        text.append(stream.cursor(), stream.bufferEnd());
        stream.advanceTo(stream.bufferEnd());
    }
    return text;
} catch (const std::system_error& error) {
    throw std::system_error(error.code(), file.string());
}

} // namespace corvane::workbench::core
