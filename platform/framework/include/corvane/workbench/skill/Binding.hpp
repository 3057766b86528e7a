#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/ui/Form.hpp>

namespace corvane::workbench::skill {

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
    [[nodiscard]] T& element() const { return *element_; }

private:
    T* element_;
};

} // namespace corvane::workbench::skill
