#include "workbench/gui/window/GoToElement.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/ProjectSession.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::GoToElement";
constexpr int kStepElements = 32;
constexpr QSize kSize(520, 360);

} // namespace

GoToElement::GoToElement(ProjectSession& session, QWidget* parent)
    : QDialog(parent),
      session_(&session),
      slicer_(session.runner(), this),
      line_(new QLineEdit(this)),
      list_(new QListWidget(this)) {
    setWindowTitle(translated(kContext, "Go to Element"));
    setObjectName(QStringLiteral("goToElement"));
    line_->setObjectName(QStringLiteral("goToLine"));
    line_->setPlaceholderText(translated(kContext, "A part of the path"));
    line_->setAccessibleName(translated(kContext, "A part of the element's path"));
    line_->installEventFilter(this);
    list_->setObjectName(QStringLiteral("goToList"));
    list_->setAccessibleName(translated(kContext, "Elements"));
    list_->setUniformItemSizes(true);
    list_->setTextElideMode(Qt::ElideLeft);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(line_);
    layout->addWidget(list_, 1);
    resize(kSize);
    connect(line_, &QLineEdit::textChanged, this, &GoToElement::look);
    connect(line_, &QLineEdit::returnPressed, this, &GoToElement::choose);
    connect(list_, &QListWidget::itemActivated, this, &GoToElement::choose);
    connect(session_, &ProjectSession::stepBegins, this, &QDialog::reject);
    connect(session_, &ProjectSession::projectDropped, this, &QDialog::reject);
    connect(this, &QDialog::finished, this, [this] {
        forget();
        parentWidget()->activateWindow(); // not every desktop gives the keyboard back by itself
    });
}

void GoToElement::open() {
    line_->clear();
    line_->setFocus();
    look();
    QDialog::open();
}

void GoToElement::look() {
    forget();
    if (session_->isBusy())
        return;
    match_ = TextMatch(line_->text());
    slicer_.start([this, walk = TreeWalk(session_->root())]() mutable { return lookOn(walk); });
}

bool GoToElement::lookOn(TreeWalk& walk) {
    for (int i = 0; i != kStepElements; ++i) {
        auto* const element = walk.next();
        if (element == nullptr || list_->count() == kMaxListed)
            return true;
        const auto path = element->path();
        if (!match_.isIn(std::string_view(path)))
            continue;
        found_.push_back(element);
        list_->addItem(toQt(std::string_view(path)));
        if (list_->count() == 1)
            list_->setCurrentRow(0);
    }
    return false;
}

void GoToElement::choose() {
    const int row = list_->currentRow();
    if (row < 0)
        return;
    auto* const element = found_[static_cast<std::size_t>(row)];
    accept();
    emit chosen(element);
}

void GoToElement::forget() {
    slicer_.stop();
    found_.clear();
    list_->clear();
}

// From the line, the keys that move in a list move in the list.
bool GoToElement::eventFilter(QObject* watched, QEvent* event) {
    if (watched == line_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown ||
            key == Qt::Key_PageUp)
            return QCoreApplication::sendEvent(list_, event);
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace corvane::workbench::gui
