#pragma once

#include "dbimport/diagnosis/SourcePlace.hpp"
#include "dbimport/facts/Messages.hpp"

#include <optional>
#include <string>
#include <system_error>

namespace corvane::workbench::plugins::s7Driver {

/// What a user can do about a fault, translated; empty where nothing is known to help. What the
/// file is counts for more than what the reader stumbled over in it.
[[nodiscard]] std::optional<std::u16string> hintFor(Message message, const SourceView& view);

/// The same for a file that cannot be read.
[[nodiscard]] std::optional<std::u16string> hintFor(const std::error_code& error);

} // namespace corvane::workbench::plugins::s7Driver
