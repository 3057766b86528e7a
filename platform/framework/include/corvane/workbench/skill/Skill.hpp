#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/core/Uuid.hpp>
#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/skill/ElementClass.hpp>

#include <memory>
#include <string_view>
#include <vector>

namespace corvane::workbench::ui {
class Preparer;
}

namespace corvane::workbench::skill {

/// What a skill's `registerElementClasses` hands its classes to. The host refuses the plug-in when
/// two classes share a name or a UUID.
class CORVANE_EXPORT ElementClassRegistrar {
public:
    /// `elementClass` stays the plug-in's and lives until the plug-in is unloaded.
    void add(const Element::Class& elementClass) { classes_.push_back(&elementClass); }

    [[nodiscard]] const std::vector<const Element::Class*>& classes() const { return classes_; }

private:
    std::vector<const Element::Class*> classes_;
};

/// A family of element classes that a plug-in brings. The host holds one object per loaded skill
/// and destroys it before the plug-in is unloaded, after its last element.
class CORVANE_EXPORT Skill {
public:
    class Class;

    Skill(const Skill&) = delete;
    Skill& operator=(const Skill&) = delete;
    virtual ~Skill();

protected:
    Skill() = default;
};

/// A skill's class object: one static of its plug-in, and all that the plug-in need do to be found:
///
///     const PumpSkillClass kSkillClass; // beside what it names, in any source of the module
///
/// Its construction while the plug-in loads
/// makes the skill known, its destruction while the plug-in is unloaded takes it back. The order of
/// the virtual operations is part of the plug-in boundary; the host calls them once `dlopen` has
/// returned, never before.
class CORVANE_EXPORT Skill::Class {
public:
    Class(const Class&) = delete;
    Class& operator=(const Class&) = delete;
    virtual ~Class();

    /// The name in documents; unique among the loaded skills.
    [[nodiscard]] virtual std::string_view name() const = 0;
    /// Unique among all skills; a second plug-in with the same one is not loaded.
    [[nodiscard]] virtual utils::core::Uuid uuid() const = 0;

    /// Called once after loading: adds every element class, in a fixed order.
    virtual void registerElementClasses(ElementClassRegistrar& registrar) const = 0;

    /// Called once after `registerElementClasses`. What any of these operations throws ends the
    /// loading of the plug-in.
    [[nodiscard]] virtual std::unique_ptr<Skill> createSkill() const = 0;

    /// Whether elements of a class may stand directly under the skill.
    [[nodiscard]] virtual bool isTopLevelElementClass(const Element::Class& elementClass) const = 0;

    /// What makes importable files of others, which stays the plug-in's and lives until it is
    /// unloaded; null, as by default, where the skill offers nothing of the kind. Called whenever
    /// the host looks for one.
    [[nodiscard]] virtual const ui::Preparer* preparer() const;

    /// Visits the class objects that exist, in the order of their construction. The host's way to
    /// find what a module has brought; `visit` loads and unloads nothing.
    static void forEachRegistered(function_ref<void(const Class&)> visit);

protected:
    /// Registers the object; allocates nothing, calls nothing virtual and cannot fail.
    Class() noexcept;

private:
    Class* previous_;
    Class* next_ = nullptr;
};

} // namespace corvane::workbench::skill
