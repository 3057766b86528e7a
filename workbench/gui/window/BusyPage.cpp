#include "workbench/gui/window/BusyPage.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::BusyPage";
constexpr int kPatience = 1000; // milliseconds
constexpr int kProgressInterval = 100;

} // namespace

BusyPage::BusyPage(BusyRunner& runner, QWidget* parent) : QWidget(parent), runner_(&runner) {
    setObjectName(QStringLiteral("busyPage"));
    auto* const frame = new QFrame(this);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setAutoFillBackground(true);
    frame->setFixedWidth(420);
    box_ = frame;
    title_ = plainLabel(frame);
    bar_ = new QProgressBar(frame);
    bar_->setTextVisible(false);
    bar_->setAccessibleName(translated(kContext, "Progress"));
    auto* const inner = new QVBoxLayout(frame);
    inner->setContentsMargins(20, 16, 20, 16);
    inner->addWidget(title_);
    stop_ = new QPushButton(translated(kContext, "Stop"), frame);
    stop_->setObjectName(QStringLiteral("stopJob"));
    stop_->setShortcut(Qt::Key_Escape);
    connect(stop_, &QPushButton::clicked, this, &BusyPage::stop);
    inner->addWidget(bar_);
    inner->addWidget(stop_, 0, Qt::AlignRight);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(frame, 0, Qt::AlignCenter);
    patience_.setSingleShot(true);
    patience_.setInterval(kPatience);
    connect(&patience_, &QTimer::timeout, this, &BusyPage::showProgress);
    progress_.setInterval(kProgressInterval);
    connect(&progress_, &QTimer::timeout, this, &BusyPage::showPercent);
    connect(runner_, &BusyRunner::ended, &progress_, &QTimer::stop);
}

void BusyPage::begin(const QPixmap& before, const QString& title) {
    title_->setText(title + QStringLiteral("…"));
    stop_->setVisible(runner_->canBeStopped());
    stop_->setEnabled(true);
    bar_->setRange(0, 0); // how far it has come nobody knows yet
    progress_.start();
    // One job may follow another: what is shown stays.
    if (isVisible())
        return;
    before_ = before;
    box_->hide();
    patience_.start();
}

void BusyPage::showProgress() {
    box_->show();
    showPercent();
    update();
}

void BusyPage::showPercent() {
    const int percent = runner_->percent();
    if (percent < 0)
        return;
    bar_->setRange(0, 100);
    bar_->setValue(percent);
}

// What was done until now is taken back first.
void BusyPage::stop() {
    stop_->setEnabled(false);
    title_->setText(translated(kContext, "Stopping…"));
    runner_->stop();
}

void BusyPage::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, before_);
    if (box_->isHidden())
        return;
    auto veil = palette().color(QPalette::Window);
    veil.setAlpha(150);
    painter.fillRect(rect(), veil);
}

} // namespace corvane::workbench::gui
