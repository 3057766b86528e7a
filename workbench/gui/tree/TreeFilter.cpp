#include "workbench/gui/tree/TreeFilter.hpp"

#include "workbench/gui/look/Text.hpp"

namespace corvane::workbench::gui {

namespace {

constexpr int kStepElements = 64;

} // namespace

TreeFilter::TreeFilter(ProjectSession& session, TreeModel& model, QObject* parent)
    : QObject(parent), session_(&session), model_(&model), slicer_(session.runner(), this) {
    restart_.setSingleShot(true);
    restart_.setInterval(0);
    connect(&restart_, &QTimer::timeout, this, &TreeFilter::restart);
    connect(session_, &ProjectSession::resetBegins, &slicer_, &Slicer::stop);
    connect(session_, &ProjectSession::structureChanged, this, [this] {
        slicer_.stop();
        if (!text_.isEmpty())
            restart_.start();
    });
}

void TreeFilter::setText(const QString& text) {
    text_ = text;
    restart();
}

void TreeFilter::restart() {
    slicer_.stop();
    found_.clear();
    count_ = 0;
    first_ = nullptr;
    if (session_->isBusy())
        return; // a change of structure follows
    if (text_.isEmpty()) {
        model_->setFilter(std::nullopt);
        emit cleared();
        return;
    }
    match_ = TextMatch(text_);
    slicer_.start([this, walk = TreeWalk(session_->root())]() mutable { return look(walk); });
}

bool TreeFilter::look(TreeWalk& walk) {
    for (int i = 0; i != kStepElements; ++i) {
        auto* const element = walk.next();
        if (element == nullptr) {
            publish();
            return true;
        }
        if (!matches(*element))
            continue;
        if (first_ == nullptr)
            first_ = element;
        if (++count_ <= kMaxShown)
            show(*element);
    }
    return false;
}

bool TreeFilter::matches(const model::Element& element) const {
    return match_.isIn(element.name()) ||
           match_.isIn(toQt(element.getSkillElement()->summary().address));
}

// The walk meets elements in their order: whatever is not there yet comes behind what is.
void TreeFilter::show(model::Element& match) {
    for (auto* element = &match;;) {
        auto* const above = element->parentElement();
        auto& siblings = found_[above != nullptr ? above : &session_->root()];
        if (!siblings.empty() && siblings.back() == element)
            return;
        siblings.push_back(element);
        if (above == nullptr)
            return;
        element = above;
    }
}

void TreeFilter::publish() {
    model_->setFilter(std::move(found_));
    found_.clear();
    emit found(count_);
}

} // namespace corvane::workbench::gui
