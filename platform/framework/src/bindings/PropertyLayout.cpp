#include <corvane/workbench/bindings/PropertyLayout.hpp>

#include <corvane/utils/thread/Owner.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace corvane::workbench::bindings {

/// Every layout in use: one per kind of controller, so a short list.
struct SharedLayout::Pool {
    std::vector<std::unique_ptr<Entry>> entries;
    Entry* latest = nullptr; // controllers of a kind are configured in long runs

    Entry& entryFor(const PropertyLayout& layout) {
        if (latest != nullptr && latest->layout == layout)
            return *latest;
        const auto found =
            std::ranges::find_if(entries, [&](auto& entry) { return entry->layout == layout; });
        latest = found != entries.end()
                     ? found->get()
                     : entries.emplace_back(std::make_unique<Entry>(layout, 0)).get();
        return *latest;
    }

    void drop(Entry& entry) {
        if (latest == &entry)
            latest = nullptr;
        std::erase_if(entries, [&](auto& candidate) { return candidate.get() == &entry; });
    }

    // Never destroyed: controllers may go in any order while the program ends.
    static Pool& instance() {
        utils::thread::expectOwner();
        static Pool& pool = *new Pool;
        return pool;
    }
};

SharedLayout::SharedLayout(const PropertyLayout& layout)
    : entry_(&Pool::instance().entryFor(layout)) {
    ++entry_->uses;
}

SharedLayout& SharedLayout::operator=(SharedLayout&& other) noexcept {
    std::swap(entry_, other.entry_);
    return *this;
}

const PropertyLayout& SharedLayout::none() {
    static const PropertyLayout layout;
    return layout;
}

void SharedLayout::release() {
    if (entry_ == nullptr)
        return;
    utils::thread::expectOwner();
    if (--entry_->uses == 0)
        Pool::instance().drop(*entry_);
    entry_ = nullptr;
}

} // namespace corvane::workbench::bindings
