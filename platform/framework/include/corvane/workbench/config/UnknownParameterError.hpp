#pragma once

#include <corvane/utils/Export.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::workbench::config {

/// A document has a member that its element does not know. An element's `load` ends so for each
/// name that it has no use for: one that was passed over would be lost in the next save. The host
/// adds the element's path to the text.
class CORVANE_EXPORT UnknownParameterError : public std::runtime_error {
public:
    explicit UnknownParameterError(std::string_view name);
    ~UnknownParameterError() override;

    /// The member's name.
    [[nodiscard]] const std::string& name() const { return name_; }

private:
    std::string name_;
};

/// Throws UnknownParameterError: `unknown member “NAME”`, translated.
[[noreturn]] CORVANE_EXPORT void throwUnknownParameterError(std::string_view name);

} // namespace corvane::workbench::config
