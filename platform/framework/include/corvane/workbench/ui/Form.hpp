#pragma once

#include <corvane/utils/Export.hpp>

#include <string_view>
#include <vector>

namespace corvane::workbench::ui {

class Control;

/// What a form shows: the controls of its group first, then those added to the form itself. The
/// host makes one for each form that it opens and has the element's binding fill it:
///
///     void buildForm(ui::Form form) override {
///         form.group().add(address_);
///         form.add(import_);
///     }
class CORVANE_EXPORT FormContents {
public:
    FormContents() = default;
    FormContents(const FormContents&) = delete;
    FormContents& operator=(const FormContents&) = delete;

    /// All controls in form order.
    [[nodiscard]] std::vector<Control*> controls() const;

    /// The control with this key; null if there is none.
    [[nodiscard]] Control* find(std::string_view key) const;

private:
    void add(std::vector<Control*>& part, Control& control);

    friend class Form;
    friend class Group;
    std::vector<Control*> grouped_;
    std::vector<Control*> direct_;
};

/// A handle on the group of a form. Adding to a default-constructed one throws std::logic_error, as
/// does adding a second control with the same key to one form.
class CORVANE_EXPORT Group {
public:
    Group() = default;
    void add(Control& control) const;

private:
    friend class Form;
    explicit Group(FormContents& contents) : contents_(&contents) {}
    FormContents* contents_ = nullptr;
};

/// A handle on a form under construction. Using a default-constructed one throws std::logic_error.
/// The form refers to the controls; they must outlive it. No two of them have the same key: adding
/// a second one throws std::logic_error.
class CORVANE_EXPORT Form {
public:
    Form() = default;
    explicit Form(FormContents& contents) : contents_(&contents) {}

    [[nodiscard]] Group group() const;
    void add(Control& control) const;

private:
    [[nodiscard]] FormContents& contents() const;
    FormContents* contents_ = nullptr;
};

} // namespace corvane::workbench::ui
