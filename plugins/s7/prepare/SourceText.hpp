#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// The text of a source in UTF-8, without a byte order mark.
class SourceText {
public:
    /// Looks at the bytes, which must outlive the object. A line that is not UTF-8 is read as
    /// Windows-1252, as the import reads a name that is not.
    explicit SourceText(std::string_view bytes);

    /// Views the bytes themselves wherever they are UTF-8; empty for what is no text at all.
    [[nodiscard]] std::optional<std::string_view> view() const;

private:
    std::string converted_;
    std::string_view text_;
    bool isText_;
};

} // namespace corvane::workbench::plugins::s7Driver::prepare
