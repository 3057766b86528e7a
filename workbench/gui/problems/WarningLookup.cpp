#include "workbench/gui/problems/WarningLookup.hpp"

#include "workbench/gui/look/Text.hpp"

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr int kStepElements = 64;
constexpr std::size_t kStepLines = 16;

} // namespace

bool WarningLookup::step() {
    switch (stage_) {
    case Stage::walking:
        if (!walkOn())
            stage_ = Stage::looking;
        return false;
    case Stage::looking:
        if (search_.lookOnce())
            return false;
        found_ = search_.takeWarnings();
        total_ += found_.size();
        stage_ = Stage::listing;
        return false;
    case Stage::listing:
        return list();
    }
    return true;
}

// False at the end of the project.
bool WarningLookup::walkOn() {
    for (int i = 0; i != kStepElements; ++i) {
        auto* const element = walk_.next();
        if (element == nullptr)
            return false;
        search_.add(*element);
        noteRemarks(*element);
    }
    return true;
}

void WarningLookup::noteRemarks(model::Element& element) {
    remarks_.visit(element, [&](const ui::Control& control, const std::u16string& remark) {
        ++total_;
        if (remarked_.size() < kMaxListedProblems)
            remarked_.push_back({.severity = Severity::warning,
                                 .element = &element,
                                 .path = toQt(std::string_view(element.path())),
                                 .key = std::string(control.key()),
                                 .field = toQt(control.texts().label),
                                 .message = toQt(remark)});
    });
}

// What is remarked on a field comes before what lies where it should not.
std::vector<Problem> WarningLookup::takeListed() {
    const auto room = std::min(kMaxListedProblems - remarked_.size(), listed_.size());
    remarked_.insert(remarked_.end(), listed_.begin(),
                     listed_.begin() + static_cast<std::ptrdiff_t>(room));
    return std::move(remarked_);
}

bool WarningLookup::list() {
    const auto count = std::min(found_.size(), kMaxListedProblems);
    const auto end = std::min(count, listed_.size() + kStepLines);
    listed_.reserve(count);
    for (auto i = listed_.size(); i != end; ++i)
        listed_.push_back({.severity = Severity::warning,
                           .element = found_[i].element,
                           .path = toQt(std::string_view(found_[i].element->path())),
                           .key = {},
                           .field = {},
                           .message = toQt(core::messageOf(found_[i]))});
    return end == count;
}

} // namespace corvane::workbench::gui
