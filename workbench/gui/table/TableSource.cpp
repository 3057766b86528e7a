#include "workbench/gui/table/TableSource.hpp"

#include <algorithm>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr int kStepElements = 64;

} // namespace

TableSource::TableSource(ProjectSession& session, QObject* parent)
    : QObject(parent), session_(&session), slicer_(session.runner(), this) {
    restart_.setSingleShot(true);
    restart_.setInterval(0);
    connect(&restart_, &QTimer::timeout, this, &TableSource::restart);
    connect(session_, &ProjectSession::projectDropped, this, [this] { scope_ = nullptr; });
    connect(session_, &ProjectSession::resetBegins, this, &TableSource::drop);
    connect(session_, &ProjectSession::removalBegins, this, &TableSource::drop);
    connect(session_, &ProjectSession::insertionBegins, &slicer_, &Slicer::stop);
    connect(session_, &ProjectSession::structureChanged, this, [this] {
        stale_ = true;
        restart_.start();
    });
}

void TableSource::setScope(model::Element* scope) {
    if (scope_ == scope)
        return;
    scope_ = scope;
    stale_ = true;
    restart_.start();
}

void TableSource::setActive(bool active) {
    active_ = active;
    if (active_ && stale_)
        restart_.start();
}

void TableSource::drop() {
    slicer_.stop();
    groups_.clear();
    stale_ = true;
    emit dropped();
}

void TableSource::restart() {
    slicer_.stop();
    if (!active_ || session_->isBusy())
        return;
    next_.clear();
    stale_ = false;
    const bool stands = scope_ == &session_->root() ||
                        (scope_ != nullptr && scope_->tree() == &session_->project().model());
    if (!stands)
        scope_ = &session_->root();
    slicer_.start([this, walk = TreeWalk(*scope_)]() mutable { return collect(walk); });
}

bool TableSource::collect(TreeWalk& walk) {
    for (int i = 0; i != kStepElements; ++i) {
        auto* const element = walk.next();
        if (element == nullptr) {
            groups_ = std::exchange(next_, {});
            emit collected();
            return true;
        }
        const auto* const elementClass = &element->elementClass();
        auto group = std::ranges::find(next_, elementClass, &Group::elementClass);
        if (group == next_.end())
            group = next_.insert(group, {elementClass, {}});
        group->elements.push_back(element);
    }
    return false;
}

} // namespace corvane::workbench::gui
