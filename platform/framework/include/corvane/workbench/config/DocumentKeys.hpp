#pragma once

#include <corvane/utils/json/Encoder.hpp>

#include <string_view>

/// The words of element documents that are the host's:
///
///     { "@Skill.S7.Item": { "name": "speed", ...the element's own members..., "children": [...] }
///     }
namespace corvane::workbench::config {

/// Begins the only key of an element document; the skill's name, "." and the class's name follow.
inline constexpr std::string_view kElementKeyPrefix = "@Skill.";

inline constexpr utils::json::encoder::Key kNameKey{"name"};
inline constexpr utils::json::encoder::Key kChildrenKey{"children"};

} // namespace corvane::workbench::config
