#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/core/Uuid.hpp>
#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/json/Encoder.hpp>
#include <corvane/utils/memory/Pool.hpp>
#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>
#include <corvane/workbench/bindings/PropertyController.hpp>
#include <corvane/workbench/data/MemoryUse.hpp>
#include <corvane/workbench/function_ref.hpp>

#include <memory>
#include <optional>
#include <string>
#include <typeinfo>

namespace corvane::workbench::config {
class Context;
}
namespace corvane::workbench::model {
class Attribute;
class Element;
class Internals;
} // namespace corvane::workbench::model
namespace corvane::workbench::process {
class Event;
class Task;
} // namespace corvane::workbench::process

namespace corvane::workbench::skill {

class Binding;

/// A plug-in's half of an element of the project: its fields and behaviour. The other half, the
/// place in the project's tree, is its model::Element. The order of the virtual operations is part
/// of the plug-in boundary.
///
/// All are called by the host, on the thread that owns the model (thread/Owner.hpp): calls never
/// overlap, and what one has done the next one sees, whatever thread it comes from. One import runs
/// to its end on the thread that called it.
///
/// An element's life: made by its class's factory (`createElement` or `cloneElement`), given its
/// model element, then either `load` or `makeDefault`, then `configureProperties`, then the first
/// publication of its properties. `save`, the visits and `createBinding` may follow at any time.
///
/// Fields are plain members, and a class that needs no more than to keep them says little:
///
///     class Pump final : public skill::Element {
///     public:
///         void configureProperties(bindings::PropertyConfigurationContext& context) override {
///             context.property(*this, unit).validatedBy<&Pump::validateUnit>();
///         }
///         void load(utils::json::decoder::Object& members, config::Context&) override {
///             while (const auto member = members.next()) {
///                 if (member->name.view() != "unit")
///                     config::throwUnknownParameterError(member->name);
///                 unit = member->value.asString().view();
///             }
///         }
///         void save(utils::json::encoder::Object& members) const override {
///             members.addStringView("unit", unit);
///         }
///         bindings::Validation validateUnit();
///
///         std::string unit;
///     };
class CORVANE_EXPORT Element : public bindings::PropertyController, public utils::memory::Pooled {
public:
    class Class;

    /// Visits the skill elements of the model element's children.
    void forEachSubPropertyContainer(function_ref<void(PropertyContainer&)> visit) override;

    /// Declares validators and change subscriptions. The model element stands in its tree, and the
    /// elements above it and below it are loaded. Nothing is declared by default.
    virtual void configureProperties(bindings::PropertyConfigurationContext& context);

    /// Reads the element's own members; "name" and "children" are the host's and not among them.
    /// The elements above are loaded, those below do not exist yet. What it throws ends the loading
    /// of the whole document. By default every member is unknown.
    virtual void load(utils::json::decoder::Object& members, config::Context& context);

    /// Writes the element's own members; by default none.
    virtual void save(utils::json::encoder::Object& members) const;

    /// Called instead of `load` for an element that a user adds.
    virtual void makeDefault();

    // Each visits the members that the element publishes, in a fixed order, and stops where the
    // callback returns true; the result says whether it did. By default there are none.
    virtual bool forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const;
    virtual bool forEachEvent(function_ref<bool(const process::Event&)> visit) const;
    virtual bool forEachTask(function_ref<bool(const process::Task&)> visit) const;

    /// The builder of the element's property form. It must not outlive the element.
    [[nodiscard]] virtual std::unique_ptr<Binding> createBinding();

    /// What identifies the element among its siblings of the same class when a document is
    /// imported; empty, as by default, where nothing does.
    [[nodiscard]] virtual std::optional<utils::core::Uuid> importId() const;

    /// Called on an imported element that is about to take the place of `existing`, for what it
    /// shall take over from it; nothing by default.
    virtual void importMerge(const Element& existing);

    /// Whether an element that this one replaces in an import leaves it its name; false by default.
    [[nodiscard]] virtual bool preserveExistingNameOnImport() const;

    /// Whether both have an `importId` and it is the same. To be overridden where that can be told
    /// for less than the two identities cost; it must not say anything else than they do.
    [[nodiscard]] virtual bool hasImportIdOf(const Element& other) const;

    /// What tells an element from its neighbours, for lists that have no room for its form.
    struct Summary {
        std::u16string type;    // of its values, as in "Bool"
        std::u16string address; // where it is in what the skill speaks to, as in "DB4.DB0.0"
    };

    /// The element in two words as its fields stand now; both are empty by default. It is asked of
    /// each element that is painted, and of all of them when a user looks for an address, so it
    /// says what is known already and looks for nothing.
    [[nodiscard]] virtual Summary summary() const;

    /// What the element takes of its device's memory, or the memory that it is; nothing by default.
    ///
    /// The host asks a million elements in a row, so that it should cost no more than reading the
    /// fields that it follows from. It must not throw; of an element whose address is wrong it says
    /// nothing, as its validator tells that. What a user reads beside it is `summary`.
    ///
    ///     data::MemoryUse Pump::memoryUse() const {
    ///         return data::MemoryExtent{.area = "M", .offset = 8 * byte, .size = 16};
    ///     }
    [[nodiscard]] virtual data::MemoryUse memoryUse() const;

    /// The place in the tree; null for an element that has none, such as a fresh clone.
    [[nodiscard]] model::Element* modelElement() { return modelElement_; }
    [[nodiscard]] const model::Element* modelElement() const { return modelElement_; }

    /// The name that the host holds for the element; empty without a model element.
    [[nodiscard]] const std::string& name() const;

    /// The names from the skill-level element down to this one, joined by ".".
    [[nodiscard]] std::string primaryKey() const;

    /// This element as a T if that is its very class, else null. Cheaper than a dynamic cast, and
    /// all that is needed where element classes are final.
    template <class T>
    [[nodiscard]] T* as() {
        static_assert(std::is_final_v<T>);
        return typeid(*this) == typeid(T) ? static_cast<T*>(this) : nullptr;
    }
    template <class T>
    [[nodiscard]] const T* as() const {
        return const_cast<Element*>(this)->as<T>();
    }

protected:
    Element() = default;
    /// A copy belongs to no place in the tree.
    Element(const Element& other) : PropertyController(other) {}

    /// Tells the host that the attributes, events or tasks have changed.
    void publishElementMembers();

private:
    friend class model::Internals;
    model::Element* modelElement_ = nullptr;
};

} // namespace corvane::workbench::skill
