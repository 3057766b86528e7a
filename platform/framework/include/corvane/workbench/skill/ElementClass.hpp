#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/core/Uuid.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <string>
#include <string_view>

namespace corvane::workbench::skill {

class AbstractElementFactory;

/// What the host knows of a kind of element. Class objects are statics of their plug-in and told
/// apart by their address. The order of the virtual operations is part of the plug-in boundary; all
/// may be asked at any time between loading and unloading and always answer the same, apart from
/// the language of the texts. What they return by view lives as long as the plug-in.
class CORVANE_EXPORT Element::Class {
public:
    Class(const Class&) = delete;
    Class& operator=(const Class&) = delete;
    virtual ~Class();

    /// The name in documents ("@Skill." + skill + "." + name); unique within the skill.
    [[nodiscard]] virtual std::string_view name() const = 0;
    /// Unique within the skill, like the name.
    [[nodiscard]] virtual utils::core::Uuid uuid() const = 0;
    /// Translated, like `displayName`.
    [[nodiscard]] virtual std::u16string description() const = 0;
    [[nodiscard]] virtual std::u16string displayName() const = 0;
    /// For narrow places; not translated.
    [[nodiscard]] virtual std::string_view shortName() const = 0;
    /// A small number by which the runtime tells the classes of a skill apart.
    [[nodiscard]] virtual int classCode() const = 0;

    /// Whether an element of this class may hold one of class `child` directly. The host asks at
    /// every load, import and edit, and refuses what is not accepted.
    [[nodiscard]] virtual bool acceptsChild(const Class& child) const = 0;

    /// What makes the elements of this class.
    [[nodiscard]] virtual const AbstractElementFactory& factory() const = 0;

protected:
    constexpr Class() = default;
};

} // namespace corvane::workbench::skill
