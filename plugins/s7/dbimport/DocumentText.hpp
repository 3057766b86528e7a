#pragma once

#include <corvane/utils/string/Utf.hpp>

#include <string>

namespace corvane::workbench::plugins::s7Driver {

/// Makes of a file's name the name that the project will know: documents are UTF-8, old exports are
/// not always. Without this an element would not be recognised when its file is imported again.
inline void makeDocumentText(std::string& name) {
    if (!utils::string::detail::isValidUtf8(name))
        name = utils::string::detail::replaceMalformedUtf8(name);
}

} // namespace corvane::workbench::plugins::s7Driver
