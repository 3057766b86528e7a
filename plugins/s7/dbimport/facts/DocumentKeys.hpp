#pragma once

#include <corvane/utils/json/Encoder.hpp>

/// The classes of the elements of an import document. Their members stand in
/// elements/DocumentKeys.hpp, those that the host reads in the framework.
namespace corvane::workbench::plugins::s7Driver::documentKeys {

using utils::json::encoder::Key;

inline constexpr Key kCommand{"@Skill.S7.Command"};
inline constexpr Key kDataBlock{"@Skill.S7.DataBlock"};
inline constexpr Key kStruct{"@Skill.S7.Struct"};
inline constexpr Key kItem{"@Skill.S7.Item"};

} // namespace corvane::workbench::plugins::s7Driver::documentKeys
