#pragma once

#include "prepare/SourcePreparer.hpp"

#include <corvane/workbench/skill/Skill.hpp>

#include <memory>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// The skill "S7".
class Skill final : public skill::Skill {
public:
    ~Skill() override;
};

/// The skill's class object: one static, through whose construction the host learns of the plug-in.
class SkillClass final : public skill::Skill::Class {
public:
    [[nodiscard]] std::string_view name() const override;
    [[nodiscard]] utils::core::Uuid uuid() const override;
    void registerElementClasses(skill::ElementClassRegistrar& registrar) const override;
    [[nodiscard]] std::unique_ptr<skill::Skill> createSkill() const override;
    /// Only a PLC stands directly under the skill.
    [[nodiscard]] bool
    isTopLevelElementClass(const skill::Element::Class& elementClass) const override;
    /// Makes plain sources of data blocks.
    [[nodiscard]] const ui::Preparer* preparer() const override { return &preparer_; }

private:
    prepare::SourcePreparer preparer_;
};

} // namespace corvane::workbench::plugins::s7Driver
