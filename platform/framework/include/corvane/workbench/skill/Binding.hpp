#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/ui/Control.hpp>
#include <corvane/workbench/ui/Form.hpp>

#include <initializer_list>

namespace corvane::workbench::skill {

class Element;

/// Builds an element's property form. It owns the controls, so it lives as long as the form is
/// shown, and no longer than the element. The order of the virtual operations is part of the
/// plug-in boundary.
class CORVANE_EXPORT Binding {
public:
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;
    virtual ~Binding();

    /// Adds the controls to the form, in their order. Throws std::logic_error for a
    /// default-constructed form. By default there are no controls.
    virtual void buildForm(ui::Form form);

    /// Moves the binding, and with it the form that it has built, to another element of the same
    /// class, which must outlive it from then on. False, with nothing changed, where the binding
    /// cannot do this, as by default. A moved form shows what a new one would show: this is only
    /// the fast way for who looks at very many elements. Throws what making a binding for that
    /// element would throw.
    virtual bool moveTo(Element& element);

protected:
    Binding() = default;
};

/// The binding of an element of class T; T's own bindings derive from it and add controls.
template <class T>
class ElementBinding : public Binding {
public:
    /// `element` must outlive the binding.
    explicit ElementBinding(T& element) : element_(&element) {}

protected:
    /// What accessors read the element by: it leads to another one once the binding has moved.
    [[nodiscard]] T* const& pointer() const { return element_; }

    /// What `moveTo` comes to, where all that the binding holds of its element is `pointer()` and
    /// the properties of these controls.
    bool move(T& element, std::initializer_list<ui::Control*> controls) {
        element_ = &element;
        for (ui::Control* const control : controls)
            control->moveTo(element);
        return true;
    }

private:
    T* element_;
};

} // namespace corvane::workbench::skill
