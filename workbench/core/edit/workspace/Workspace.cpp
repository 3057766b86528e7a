#include "workbench/core/edit/workspace/Workspace.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/workbench/host/Tree.hpp>

#include <algorithm>
#include <iterator>
#include <ranges>

namespace corvane::workbench::core {

namespace {

using model::Element;
using Elements = std::vector<std::unique_ptr<Element>>;
using Positions = std::span<const std::size_t>;

// Runs of neighbours that are told one by one: each costs a pass over the siblings.
constexpr std::size_t kMostRuns = 64;

/// The runs of neighbours among positions.
std::vector<Positions> runsOf(Positions positions) {
    std::vector<Positions> runs;
    for (std::size_t begin = 0, end = 0; begin != positions.size(); begin = end) {
        end = begin + 1;
        while (end != positions.size() && positions[end] == positions[end - 1] + 1)
            ++end;
        runs.push_back(positions.subspan(begin, end - begin));
    }
    return runs;
}

} // namespace

void Workspace::tellProgress(std::size_t done, std::size_t total) const {
    if (progress_ && !progress_(done, total))
        throw EditStopped();
}

void Workspace::tellProgressOnly(std::size_t done, std::size_t total) const {
    if (progress_)
        static_cast<void>(progress_(done, total));
}

Elements Workspace::take(Element& parent, Positions positions) {
    Elements taken;
    const auto runs = runsOf(positions);
    if (runs.size() > kMostRuns) {
        reset(parent, [&] { taken = host::takeChildren(parent, positions); });
        return taken;
    }
    for (const auto run : std::views::reverse(runs)) {
        tell([&](auto& observer) { observer.aboutToRemove(parent, run.front(), run.size()); });
        auto part = host::takeChildren(parent, run);
        tell([](auto& observer) { observer.removed(); });
        std::ranges::move(std::views::reverse(part), std::back_inserter(taken));
    }
    std::ranges::reverse(taken);
    return taken;
}

void Workspace::put(Element& parent, Elements children, Positions positions) {
    const auto runs = runsOf(positions);
    if (runs.size() > kMostRuns) {
        reset(parent, [&] { host::putChildren(parent, std::move(children), positions); });
        return;
    }
    auto next = std::make_move_iterator(children.begin());
    for (const auto run : runs) {
        const auto end = next + static_cast<std::ptrdiff_t>(run.size());
        tell([&](auto& observer) { observer.aboutToInsert(parent, run.front(), run.size()); });
        host::putChildren(parent, Elements(next, end), run);
        tell([](auto& observer) { observer.inserted(); });
        next = end;
    }
}

void Workspace::reset(Element& element, function_ref<void()> change) {
    if (resetting_) {
        change();
        return;
    }
    tell([&](auto& observer) { observer.aboutToReset(element); });
    resetting_ = true;
    const auto done = [&] {
        resetting_ = false;
        tell([&](auto& observer) { observer.reset(element); });
    };
    try {
        change();
    } catch (...) {
        done();
        throw;
    }
    done();
}

void Workspace::validateReferences() const {
    core::validateReferences(model().root().childElements());
}

} // namespace corvane::workbench::core
