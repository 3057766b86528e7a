#include <corvane/workbench/skill/ElementClass.hpp>

#include <corvane/workbench/skill/ElementFactory.hpp>

namespace corvane::workbench::skill {

Element::Class::~Class() = default;

AbstractElementFactory::~AbstractElementFactory() = default;

} // namespace corvane::workbench::skill
