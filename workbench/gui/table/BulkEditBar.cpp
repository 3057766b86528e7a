#include "workbench/gui/table/BulkEditBar.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QComboBox>
#include <QHBoxLayout>
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
      place_(new QHBoxLayout) {
    setObjectName(QStringLiteral("bulkEditBar"));
    setAccessibleName(translated(kContext, "Change the selected rows"));
    which_->setObjectName(QStringLiteral("bulkField"));
    which_->setAccessibleName(translated(kContext, "Field to change"));
    auto* const to = plainLabel(this, translated(kContext, "to"));
    auto* const applyButton = new QPushButton(translated(kContext, "Apply"), this);
    applyButton->setObjectName(QStringLiteral("bulkApply"));
    auto* const closeButton = new QPushButton(translated(kContext, "Close"), this);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(count_);
    layout->addWidget(which_);
    layout->addWidget(to);
    layout->addLayout(place_);
    layout->addWidget(applyButton);
    layout->addWidget(closeButton);
    layout->addStretch(1);
    connect(which_, &QComboBox::currentIndexChanged, this, &BulkEditBar::showField);
    connect(applyButton, &QPushButton::clicked, this, &BulkEditBar::apply);
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
    place_->addWidget(&field_->widget());
}

void BulkEditBar::begin() { which_->setFocus(Qt::ShortcutFocusReason); }

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
