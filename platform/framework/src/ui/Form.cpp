#include <corvane/workbench/ui/Form.hpp>

#include <corvane/workbench/ui/Control.hpp>
#include <corvane/workbench/ui/Preparer.hpp>

#include <stdexcept>
#include <string>

namespace corvane::workbench::ui {

Preparer::~Preparer() = default;

std::vector<Control*> FormContents::controls() const {
    std::vector<Control*> all(grouped_);
    all.insert(all.end(), direct_.begin(), direct_.end());
    return all;
}

Control* FormContents::find(std::string_view key) const {
    for (const auto* const part : {&grouped_, &direct_})
        for (Control* const control : *part)
            if (control->key() == key)
                return control;
    return nullptr;
}

void FormContents::add(std::vector<Control*>& part, Control& control) {
    if (find(control.key()) != nullptr)
        throw std::logic_error("internal error: two controls of a form have the key " +
                               std::string(control.key()));
    part.push_back(&control);
}

void Group::add(Control& control) const {
    if (contents_ == nullptr)
        throw std::logic_error("internal error: attempt to access default constructed "
                               "corvane::workbench::ui::Group object");
    contents_->add(contents_->grouped_, control);
}

Group Form::group() const { return Group(contents()); }

void Form::add(Control& control) const {
    auto& into = contents();
    into.add(into.direct_, control);
}

FormContents& Form::contents() const {
    if (contents_ == nullptr)
        throw std::logic_error("internal error: attempt to access default constructed "
                               "corvane::workbench::ui::Form object");
    return *contents_;
}

} // namespace corvane::workbench::ui
