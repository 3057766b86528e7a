#pragma once

#include <corvane/utils/string/Utf.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// The text that `bytes` are in Windows-1252, in UTF-8. The five bytes to which that gives no
/// character become the control characters of their codes: so different bytes are different texts.
[[nodiscard]] std::string windows1252ToUtf8(std::string_view bytes);

/// The names of a data block that the project cannot know as they stand in the file: documents are
/// UTF-8, old exports are not. What is not is read as Windows-1252, in which they were written: two
/// names stay two, and are recognised when their file is imported again.
class ForeignNames {
public:
    /// Makes of a name of the file the name that the project will know.
    void makeDocumentText(std::string& name) {
        if (!utils::string::detail::isValidUtf8(name))
            readAsWindows1252(name);
    }

    /// How many names were read as Windows-1252.
    [[nodiscard]] std::size_t count() const { return count_; }

    /// The first of them, in UTF-8; empty where there is none.
    [[nodiscard]] const std::string& first() const { return first_; }

private:
    void readAsWindows1252(std::string& name);

    std::size_t count_ = 0;
    std::string first_;
};

} // namespace corvane::workbench::plugins::s7Driver
