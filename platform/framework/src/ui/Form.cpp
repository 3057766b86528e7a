#include <corvane/workbench/ui/Form.hpp>

#include <stdexcept>

namespace corvane::workbench::ui {

std::vector<Control*> FormContents::controls() const {
    std::vector<Control*> all(grouped_);
    all.insert(all.end(), direct_.begin(), direct_.end());
    return all;
}

void Group::add(Control& control) const {
    if (contents_ == nullptr)
        throw std::logic_error("internal error: attempt to access default constructed "
                               "corvane::workbench::ui::Group object");
    contents_->grouped_.push_back(&control);
}

Group Form::group() const { return Group(contents()); }

void Form::add(Control& control) const { contents().direct_.push_back(&control); }

FormContents& Form::contents() const {
    if (contents_ == nullptr)
        throw std::logic_error("internal error: attempt to access default constructed "
                               "corvane::workbench::ui::Form object");
    return *contents_;
}

} // namespace corvane::workbench::ui
