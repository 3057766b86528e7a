#include "plugin/Skill.hpp"

#include "plugin/ElementClasses.hpp"

namespace corvane::workbench::plugins::s7Driver {

Skill::~Skill() = default;

std::string_view SkillClass::name() const { return "S7"; }

utils::core::Uuid SkillClass::uuid() const {
    // 0f149f70-c1fe-4a32-a3d2-0ed86370f99a
    return utils::core::Uuid::fromRawData({0x0f, 0x14, 0x9f, 0x70, 0xc1, 0xfe, 0x4a, 0x32, 0xa3,
                                           0xd2, 0x0e, 0xd8, 0x63, 0x70, 0xf9, 0x9a});
}

void SkillClass::registerElementClasses(skill::ElementClassRegistrar& registrar) const {
    registrar.add(plcClass());
    registrar.add(commandClass());
    registrar.add(dataBlockClass());
    registrar.add(itemClass());
    registrar.add(structClass());
}

std::unique_ptr<skill::Skill> SkillClass::createSkill() const { return std::make_unique<Skill>(); }

bool SkillClass::isTopLevelElementClass(const skill::Element::Class& elementClass) const {
    return &elementClass == &plcClass();
}

} // namespace corvane::workbench::plugins::s7Driver
