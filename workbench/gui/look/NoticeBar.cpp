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

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::NoticeBar";
constexpr int kPictureSize = 18;
constexpr int kRadius = 4;
constexpr int kMargin = 8; // between the bar and the edges of what it lies upon

QColor tinted(const QColor& base, const QColor& tint) {
    constexpr int kShare = 15; // percent
    const auto mixed = [](int a, int b) { return (a * (100 - kShare) + b * kShare) / 100; };
    return {mixed(base.red(), tint.red()), mixed(base.green(), tint.green()),
            mixed(base.blue(), tint.blue())};
}

QColor tintOf(NoticeBar::Kind kind, const QPalette& palette) {
    switch (kind) {
    case NoticeBar::Kind::refusal:
    case NoticeBar::Kind::error:
        return palette.color(kErrorRole);
    case NoticeBar::Kind::warning:
    case NoticeBar::Kind::question:
        return {0xe0, 0xa0, 0x20};
    default:
        return palette.color(QPalette::Highlight);
    }
}

const char* pictureOf(NoticeBar::Kind kind) {
    switch (kind) {
    case NoticeBar::Kind::refusal:
    case NoticeBar::Kind::error:
        return "error";
    case NoticeBar::Kind::warning:
    case NoticeBar::Kind::question:
        return "problem";
    default:
        return "info";
    }
}

} // namespace

NoticeBar::NoticeBar(QWidget& place, QWidget* parent)
    : QFrame(parent),
      place_(&place),
      picture_(new QLabel(this)),
      text_(plainLabel(this)),
      buttons_(new QHBoxLayout),
      close_(new QToolButton(this)) {
    setObjectName(QStringLiteral("noticeBar"));
    setAccessibleName(translated(kContext, "Notice"));
    text_->setWordWrap(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    close_->setIcon(icon("close"));
    close_->setAutoRaise(true);
    close_->setToolTip(translated(kContext, "Close"));
    close_->setAccessibleName(translated(kContext, "Close the notice"));
    connect(close_, &QToolButton::clicked, this, &NoticeBar::dismiss);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 6, 6);
    layout->addWidget(picture_);
    layout->addWidget(text_, 1);
    layout->addLayout(buttons_);
    layout->addWidget(close_);
    place.installEventFilter(this);
    hide();
}

void NoticeBar::showNotice(Kind kind, const QString& text) {
    present({kind, text, {}});
    if (kind == Kind::question)
        question_ = shown_;
}

void NoticeBar::addChoice(const QString& text, std::function<void()> chosen, AfterChoice after) {
    shown_.choices.push_back({text, std::move(chosen), after});
    if (shown_.kind == Kind::question)
        question_ = shown_;
    addButton(shown_.choices.back());
    takePlace();
}

void NoticeBar::addButton(const Choice& choice) {
    auto* const button = new QPushButton(withoutMnemonic(choice.text), this);
    buttons_->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, choice] {
        const auto call = choice.chosen; // the button goes with the notice
        if (choice.after == AfterChoice::close)
            dismiss();
        call();
    });
}

void NoticeBar::dropButtons() {
    while (auto* const item = buttons_->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
}

void NoticeBar::present(const Notice& notice) {
    dropButtons();
    shown_ = notice;
    text_->setText(shown_.text);
    text_->setAccessibleName(shown_.text);
    for (const auto& choice : shown_.choices)
        addButton(choice);
    showPicture();
    setVisible(!shown_.text.isEmpty());
    takePlace();
}

void NoticeBar::clear() {
    question_ = {};
    present({});
}

// What was told later gives way to the question.
void NoticeBar::dismiss() {
    if (shown_.kind == Kind::question)
        clear();
    else
        present(question_);
}

void NoticeBar::clearLastStep() {
    if (shown_.kind == Kind::information || shown_.kind == Kind::refusal)
        present(question_);
}

void NoticeBar::clearLastStepAndWarning() {
    clearLastStep();
    if (shown_.kind == Kind::warning)
        present(question_);
}

QString NoticeBar::text() const { return shown_.text; }

void NoticeBar::showPicture() {
    picture_->setPixmap(icon(pictureOf(shown_.kind)).pixmap(kPictureSize));
    update();
}

void NoticeBar::takePlace() {
    if (isHidden())
        return;
    const auto upon = QRect(place_->mapTo(parentWidget(), QPoint()), place_->size())
                          .marginsRemoved({kMargin, kMargin, kMargin, kMargin});
    const int height = std::min(layout()->totalHeightForWidth(upon.width()), upon.height());
    setGeometry(upon.left(), upon.bottom() + 1 - height, upon.width(), height);
    raise();
}

bool NoticeBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == place_ && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        takePlace();
    return QFrame::eventFilter(watched, event);
}

// A style sheet would hide what the palette says of the background.
void NoticeBar::paintEvent(QPaintEvent*) {
    const auto tint = tintOf(shown_.kind, palette());
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
