#include <corvane/workbench/config/UnknownParameterError.hpp>

namespace corvane::workbench::config {

UnknownParameterError::UnknownParameterError(std::string_view name)
    : std::runtime_error("unknown member \"" + std::string(name) + "\""), name_(name) {}

UnknownParameterError::~UnknownParameterError() = default;

void throwUnknownParameterError(std::string_view name) { throw UnknownParameterError(name); }

} // namespace corvane::workbench::config
