#pragma once

#include <corvane/workbench/function_ref.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// What came of an expression: its value, or the name of the constant that nobody knows; neither,
/// where it is no expression of whole numbers or its value has more than 32 bits.
struct Value {
    std::optional<std::int32_t> number = std::nullopt;
    std::string missing;
};

/// Looks up a constant by its name, in lower case.
using ConstantLookup = function_ref<std::optional<std::int32_t>(std::string_view)>;

/// The value of a bound: numbers and constants, written "N", #N or N, with + and - between them.
[[nodiscard]] Value valueOf(std::string_view expression, ConstantLookup constantNamed);

} // namespace corvane::workbench::plugins::s7Driver::prepare
