#pragma once

#include <corvane/workbench/skill/Skill.hpp>

#include <span>

/// What the plug-ins of the tests are made of.
namespace corvane::workbench::test {

class PlainSkill final : public skill::Skill {};

/// A skill class that says what it was made with.
class GivenSkill : public skill::Skill::Class {
public:
    using Classes = std::span<const skill::Element::Class* const>;

    /// The first class is the one that may stand at the top.
    GivenSkill(std::string_view name, const utils::core::Uuid& uuid, Classes classes = {})
        : name_(name), uuid_(uuid), classes_(classes) {}

    [[nodiscard]] std::string_view name() const override { return name_; }
    [[nodiscard]] utils::core::Uuid uuid() const override { return uuid_; }
    void registerElementClasses(skill::ElementClassRegistrar& registrar) const override {
        for (const auto* const entry : classes_)
            registrar.add(*entry);
    }
    [[nodiscard]] std::unique_ptr<skill::Skill> createSkill() const override {
        return std::make_unique<PlainSkill>();
    }
    [[nodiscard]] bool
    isTopLevelElementClass(const skill::Element::Class& elementClass) const override {
        return &elementClass == classes_.front();
    }

private:
    std::string_view name_;
    utils::core::Uuid uuid_;
    Classes classes_;
};

/// A UUID that ends in this number.
constexpr utils::core::Uuid numberedUuid(std::uint8_t number) {
    return utils::core::Uuid::fromRawData(
        {0x5e, 0x1d, 0, 0, 0, 0, 0x40, 0, 0x80, 0, 0, 0, 0, 0, 0, number});
}

/// Of the good plug-in, which others claim.
inline constexpr std::string_view kWiringName = "Wiring";
inline constexpr utils::core::Uuid kWiringUuid = numberedUuid(1);

} // namespace corvane::workbench::test
