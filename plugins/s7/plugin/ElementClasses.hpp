#pragma once

#include <corvane/workbench/skill/ElementClass.hpp>

/// The class objects of the five element classes, which are statics of plugin/Statics.cpp.
namespace corvane::workbench::plugins::s7Driver {

[[nodiscard]] const skill::Element::Class& plcClass();
[[nodiscard]] const skill::Element::Class& commandClass();
[[nodiscard]] const skill::Element::Class& dataBlockClass();
[[nodiscard]] const skill::Element::Class& itemClass();
[[nodiscard]] const skill::Element::Class& structClass();

} // namespace corvane::workbench::plugins::s7Driver
