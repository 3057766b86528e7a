#include <corvane/workbench/skill/Skill.hpp>

#include <corvane/utils/thread/Owner.hpp>

namespace corvane::workbench::skill {

namespace {

// The registered class objects form a list through the objects themselves: registering cannot fail.
constinit Skill::Class* first = nullptr;
constinit Skill::Class* last = nullptr;

} // namespace

Skill::~Skill() { utils::thread::expectOwner(); }

Skill::Class::Class() noexcept : previous_(last) {
    utils::thread::expectOwner();
    (last == nullptr ? first : last->next_) = this;
    last = this;
}

Skill::Class::~Class() {
    utils::thread::expectOwner();
    if (previous_ == nullptr)
        first = next_;
    else
        previous_->next_ = next_;
    if (next_ == nullptr)
        last = previous_;
    else
        next_->previous_ = previous_;
}

const ui::Preparer* Skill::Class::preparer() const { return nullptr; }

void Skill::Class::forEachRegistered(function_ref<void(const Class&)> visit) {
    utils::thread::expectOwner();
    for (const auto* entry = first; entry != nullptr; entry = entry->next_)
        visit(*entry);
}

} // namespace corvane::workbench::skill
