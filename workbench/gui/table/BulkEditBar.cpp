#include "workbench/gui/table/BulkEditBar.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::BulkEditBar";

} // namespace

BulkEditBar::BulkEditBar(ProjectSession& session, QWidget* parent)
    : QWidget(parent),
      session_(&session),
      count_(plainLabel(this)),
      which_(new QComboBox(this)),
      place_(new QHBoxLayout),
      apply_(new QPushButton(translated(kContext, "Apply"), this)) {
    setObjectName(QStringLiteral("bulkEditBar"));
    setAccessibleName(translated(kContext, "Change the selected rows"));
    which_->setObjectName(QStringLiteral("bulkField"));
    which_->setAccessibleName(translated(kContext, "Field to change"));
    auto* const to = plainLabel(this, translated(kContext, "to"));
    apply_->setObjectName(QStringLiteral("bulkApply"));
    auto* const closeButton = new QPushButton(translated(kContext, "Close"), this);
    closeButton->setObjectName(QStringLiteral("bulkClose"));
    for (auto* const button : {apply_, closeButton})
        button->setAutoDefault(true); // Enter presses it

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(count_);
    layout->addWidget(which_);
    layout->addWidget(to);
    // The buttons stay where they are, however wide the field is.
    layout->addLayout(place_, 1);
    layout->addWidget(apply_);
    layout->addWidget(closeButton);
    connect(which_, &QComboBox::currentIndexChanged, this, &BulkEditBar::showField);
    connect(apply_, &QPushButton::clicked, this, &BulkEditBar::apply);
    connect(closeButton, &QPushButton::clicked, this, &BulkEditBar::closed);
    connect(session_, &ProjectSession::resetBegins, this, &BulkEditBar::drop);
    connect(session_, &ProjectSession::removalBegins, this, &BulkEditBar::drop);
}

void BulkEditBar::setElements(std::vector<model::Element*> elements) {
    if (elements.empty()) {
        drop();
        return;
    }
    const auto chosen = which_->currentData();
    showField(-1);
    elements_ = std::move(elements);
    form_ = std::make_unique<core::OpenForm>(*elements_.front());
    count_->setText(
        counted(kContext, "Change, in 1 row,", "Change, in {} rows,", elements_.size()));
    offerFields();
    if (const int index = which_->findData(chosen); index >= 0)
        which_->setCurrentIndex(index);
    showField(which_->currentIndex());
}

void BulkEditBar::offerFields() {
    const QSignalBlocker quiet(which_);
    which_->clear();
    for (auto* const control : cellControls(*form_))
        if (readCell(*control).editable)
            which_->addItem(toQt(control->texts().label), toQt(control->key()));
}

void BulkEditBar::showField(int index) {
    if (field_ != nullptr) {
        delete &field_->widget(); // takes the field along
        field_ = nullptr;
    }
    if (index < 0 || !form_)
        return;
    field_ = makeField(*form_->find(toUtf8(which_->itemData(index).toString())), this);
    field_->widget().setMinimumWidth(180);
    place_->addWidget(&field_->widget(), 0, Qt::AlignLeft);
    setTabOrder(which_, &field_->widget());
    setTabOrder(&field_->widget(), apply_);
    field_->widget().show();
    if (isVisible())
        emit fieldChosen(std::string(field_->control().key()));
}

void BulkEditBar::begin() {
    which_->setFocus(Qt::ShortcutFocusReason);
    if (field_ != nullptr)
        emit fieldChosen(std::string(field_->control().key()));
}

// What none of its fields has a use for.
void BulkEditBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        emit closed();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        apply();
    else
        QWidget::keyPressEvent(event);
}

void BulkEditBar::apply() {
    if (field_ == nullptr || session_->isBusy())
        return;
    field_->commit();
    if (const auto value = field_->entered())
        session_->setFieldOfAll(elements_, field_->control(), *value);
}

void BulkEditBar::drop() {
    showField(-1);
    form_.reset();
    elements_.clear();
    hide();
}

} // namespace corvane::workbench::gui
