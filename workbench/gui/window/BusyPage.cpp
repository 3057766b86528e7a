#include "workbench/gui/window/BusyPage.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::BusyPage";
constexpr int kPatience = 1000; // milliseconds

} // namespace

BusyPage::BusyPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("busyPage"));
    auto* const frame = new QFrame(this);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setAutoFillBackground(true);
    frame->setFixedWidth(420);
    box_ = frame;
    title_ = plainLabel(frame);
    bar_ = new QProgressBar(frame);
    bar_->setRange(0, 0); // how far a job has come nobody knows
    bar_->setTextVisible(false);
    bar_->setAccessibleName(translated(kContext, "Progress"));
    auto* const inner = new QVBoxLayout(frame);
    inner->setContentsMargins(20, 16, 20, 16);
    inner->addWidget(title_);
    inner->addWidget(bar_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(frame, 0, Qt::AlignCenter);
    patience_.setSingleShot(true);
    patience_.setInterval(kPatience);
    connect(&patience_, &QTimer::timeout, this, &BusyPage::showProgress);
}

void BusyPage::begin(const QPixmap& before, const QString& title) {
    title_->setText(title + QStringLiteral("…"));
    // One job may follow another: what is shown stays.
    if (isVisible())
        return;
    before_ = before;
    box_->hide();
    patience_.start();
}

void BusyPage::showProgress() {
    box_->show();
    update();
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
