#include <corvane/workbench/skill/Skill.hpp>

namespace corvane::workbench::skill {

namespace {

// The registered class objects form a list through the objects themselves: registering cannot fail.
constinit Skill::Class* first = nullptr;
constinit Skill::Class* last = nullptr;

} // namespace

Skill::~Skill() = default;

Skill::Class::Class() noexcept : previous_(last) {
    (last == nullptr ? first : last->next_) = this;
    last = this;
}

Skill::Class::~Class() {
    if (previous_ == nullptr)
        first = next_;
    else
        previous_->next_ = next_;
    if (next_ == nullptr)
        last = previous_;
    else
        next_->previous_ = previous_;
}

void Skill::Class::forEachRegistered(FunctionRef<void(const Class&)> visit) {
    for (const auto* entry = first; entry != nullptr; entry = entry->next_)
        visit(*entry);
}

} // namespace corvane::workbench::skill
