#include "workbench/gui/memory/MemoryPanel.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/memory/MemoryText.hpp"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::MemoryPanel";
constexpr int kStepElements = 64;

} // namespace

MemoryPanel::MemoryPanel(ProjectSession& session, const ElementPart& selection, QWidget* parent)
    : QWidget(parent),
      session_(&session),
      selection_(&selection),
      view_(new MemoryView(this)),
      title_(plainLabel(this)),
      width_(new QComboBox(this)),
      slicer_(session.runner(), this) {
    refresh_.setSingleShot(true);
    refresh_.setInterval(0);
    connect(&refresh_, &QTimer::timeout, this, &MemoryPanel::refresh);
    buildLayout();
    connectToSession();
    show(std::nullopt);
}

void MemoryPanel::buildLayout() {
    title_->setObjectName(QStringLiteral("memoryTitle"));
    title_->setWordWrap(true);
    width_->setObjectName(QStringLiteral("memoryWidth"));
    width_->setAccessibleName(translated(kContext, "Bytes in a row"));
    for (const unsigned bytes : {8U, 16U})
        width_->addItem(translated(kContext, "{} bytes in a row", {formatted(bytes)}), bytes);
    connect(width_, &QComboBox::currentIndexChanged, this,
            [this] { view_->setBytesPerRow(width_->currentData().toUInt()); });
    connect(view_, &MemoryView::activated, this, &MemoryPanel::activated);
    auto* const bar = new QHBoxLayout;
    bar->addWidget(title_, 1);
    bar->addWidget(width_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(bar);
    layout->addWidget(view_, 1);
}

void MemoryPanel::connectToSession() {
    connect(session_, &ProjectSession::resetBegins, this, &MemoryPanel::drop);
    connect(session_, &ProjectSession::removalBegins, this, &MemoryPanel::drop);
    connect(session_, &ProjectSession::insertionBegins, &slicer_, &Slicer::stop);
    connect(session_, &ProjectSession::structureChanged, this, &MemoryPanel::changed);
    connect(session_, &ProjectSession::valuesUpdated, this, &MemoryPanel::changed);
}

void MemoryPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refreshSoon();
}

void MemoryPanel::focusMap() { view_->setFocus(Qt::ShortcutFocusReason); }

void MemoryPanel::drop() {
    slicer_.stop();
    show(std::nullopt);
    stale_ = true;
}

void MemoryPanel::changed() {
    stale_ = true;
    refreshSoon();
}

void MemoryPanel::refreshSoon() {
    if (isVisible())
        refresh_.start();
}

// While the window is busy nothing is seen; it is shown again afterwards.
void MemoryPanel::refresh() {
    if (!isVisible() || session_->isBusy())
        return;
    auto* const element = selection_->current();
    auto space = element == nullptr ? std::nullopt : core::memorySpaceOf(*element);
    if (!space) {
        drop();
        return;
    }
    if (!stale_ && view_->map() && view_->map()->space() == *space) {
        slicer_.stop();
        view_->setCurrent(element);
        return;
    }
    TreeWalk start(*space->owner);
    slicer_.start([this, walk = std::move(start),
                   builder = core::MemoryMapBuilder(*std::move(space))]() mutable {
        return collect(walk, builder);
    });
}

bool MemoryPanel::collect(TreeWalk& walk, core::MemoryMapBuilder& builder) {
    for (int i = 0; i != kStepElements; ++i) {
        auto* const element = walk.next();
        if (element == nullptr) {
            stale_ = false;
            show(builder.take());
            view_->setCurrent(selection_->current());
            return true;
        }
        builder.add(*element);
    }
    return false;
}

void MemoryPanel::show(std::optional<core::MemoryMap> map) {
    title_->setText(map ? summaryOf(*map)
                        : translated(kContext, "Select a block, or an element that lies in one, to "
                                               "see the memory."));
    width_->setVisible(map.has_value());
    view_->setMap(std::move(map));
}

} // namespace corvane::workbench::gui
