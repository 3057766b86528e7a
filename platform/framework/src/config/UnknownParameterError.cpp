#include <corvane/workbench/config/UnknownParameterError.hpp>

#include <corvane/workbench/i18n/Translate.hpp>

namespace corvane::workbench::config {

UnknownParameterError::UnknownParameterError(std::string_view name)
    : std::runtime_error(i18n::translateToUtf8("corvane::workbench::config::UnknownParameterError",
                                               "unknown member “{}”", {name})),
      name_(name) {}

UnknownParameterError::~UnknownParameterError() = default;

void throwUnknownParameterError(std::string_view name) { throw UnknownParameterError(name); }

} // namespace corvane::workbench::config
