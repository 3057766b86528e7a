#include "workbench/gui/look/NoticeBar.hpp"

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::NoticeBar";
constexpr int kPictureSize = 18;
constexpr int kRadius = 4;

QColor tinted(const QColor& base, const QColor& tint) {
    constexpr int kShare = 15; // percent
    const auto mixed = [](int a, int b) { return (a * (100 - kShare) + b * kShare) / 100; };
    return {mixed(base.red(), tint.red()), mixed(base.green(), tint.green()),
            mixed(base.blue(), tint.blue())};
}

QColor tintOf(NoticeBar::Kind kind, const QPalette& palette) {
    switch (kind) {
    case NoticeBar::Kind::error:
        return palette.color(kErrorRole);
    case NoticeBar::Kind::question:
        return {0xe0, 0xa0, 0x20};
    default:
        return palette.color(QPalette::Highlight);
    }
}

const char* pictureOf(NoticeBar::Kind kind) {
    switch (kind) {
    case NoticeBar::Kind::error:
        return "error";
    case NoticeBar::Kind::question:
        return "problem";
    default:
        return "info";
    }
}

} // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent),
      picture_(new QLabel(this)),
      text_(plainLabel(this)),
      choices_(new QHBoxLayout),
      close_(new QToolButton(this)) {
    setObjectName(QStringLiteral("noticeBar"));
    setAccessibleName(translated(kContext, "Notice"));
    text_->setWordWrap(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    close_->setIcon(icon("close"));
    close_->setAutoRaise(true);
    close_->setToolTip(translated(kContext, "Close"));
    close_->setAccessibleName(translated(kContext, "Close the notice"));
    connect(close_, &QToolButton::clicked, this, &NoticeBar::clear);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 6, 6);
    layout->addWidget(picture_);
    layout->addWidget(text_, 1);
    layout->addLayout(choices_);
    layout->addWidget(close_);
    hide();
}

void NoticeBar::showNotice(Kind kind, const QString& text) {
    dropChoices();
    kind_ = kind;
    text_->setText(text);
    text_->setAccessibleName(text);
    showPicture();
    show();
}

void NoticeBar::addChoice(const QString& text, std::function<void()> chosen) {
    auto* const button = new QPushButton(withoutMnemonic(text), this);
    choices_->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, chosen = std::move(chosen)] {
        const auto call = chosen; // the button goes with the notice
        clear();
        call();
    });
}

void NoticeBar::dropChoices() {
    while (auto* const item = choices_->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
}

void NoticeBar::clear() {
    dropChoices();
    text_->clear();
    hide();
}

void NoticeBar::clearInformation() {
    if (kind_ == Kind::information)
        clear();
}

QString NoticeBar::text() const { return text_->text(); }

void NoticeBar::showPicture() {
    picture_->setPixmap(icon(pictureOf(kind_)).pixmap(kPictureSize));
    update();
}

// A style sheet would hide what the palette says of the background.
void NoticeBar::paintEvent(QPaintEvent*) {
    const auto tint = tintOf(kind_, palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(tint);
    painter.setBrush(tinted(palette().color(QPalette::Base), tint));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

void NoticeBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        showPicture();
}

} // namespace corvane::workbench::gui
