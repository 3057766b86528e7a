#include "workbench/gui/form/FormPanel.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QEvent>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::FormPanel";
constexpr int kPictureSize = 32;
constexpr int kMargin = 16;

} // namespace

FormPanel::FormPanel(ProjectSession& session, ClassIcons& icons, QWidget* parent)
    : QWidget(parent),
      session_(&session),
      icons_(&icons),
      picture_(new QLabel(this)),
      title_(plainLabel(this)),
      subtitle_(plainLabel(this)),
      help_(plainLabel(this)),
      area_(new QScrollArea(this)) {
    setObjectName(QStringLiteral("formPanel"));
    setAccessibleName(translated(kContext, "Properties"));
    buildHeader();
    connect(session_, &ProjectSession::resetBegins, this, [this] {
        const auto row = std::ranges::find_if(
            rows_, [](FormRow* one) { return one->field().widget().hasFocus(); });
        focusAfterReset_.reset();
        if (row != rows_.end())
            focusAfterReset_ = (*row)->field().control().key();
        closeForm();
    });
    connect(session_, &ProjectSession::projectDropped, this, [this] { element_ = nullptr; });
    connect(session_, &ProjectSession::resetEnds, this, [this] {
        const bool stands = element_ != nullptr && element_->tree() == &session_->project().model();
        showElement(stands ? element_ : nullptr);
        if (focusAfterReset_)
            focusField(*focusAfterReset_);
    });
    connect(session_, &ProjectSession::commitWanted, this, [this] {
        for (const FormRow* const row : rows_)
            row->field().commit();
    });
    connect(session_, &ProjectSession::elementRenamed, this, &FormPanel::showHeader);
    connect(session_, &ProjectSession::valuesUpdated, this, &FormPanel::refresh);
    showElement(nullptr);
}

FormPanel::~FormPanel() { closeForm(); }

void FormPanel::buildHeader() {
    title_->setObjectName(QStringLiteral("formTitle"));
    subtitle_->setForegroundRole(QPalette::PlaceholderText);
    help_->setObjectName(QStringLiteral("helpArea"));
    help_->setWordWrap(true);
    help_->setMargin(10);
    help_->setForegroundRole(QPalette::PlaceholderText);
    help_->setAccessibleName(translated(kContext, "Help for the field"));
    area_->setWidgetResizable(true);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setFocusPolicy(Qt::NoFocus);

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(title_);
    texts->addWidget(subtitle_);
    auto* const header = new QHBoxLayout;
    header->setContentsMargins(kMargin, kMargin, kMargin, 0);
    header->setSpacing(12);
    header->addWidget(picture_);
    header->addLayout(texts, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addWidget(area_, 1);
    layout->addWidget(help_);
}

void FormPanel::showElement(model::Element* element) {
    closeForm();
    element_ = element;
    showHeader();
    showHelp(nullptr);
    if (element_ != nullptr)
        openForm();
}

void FormPanel::closeForm() {
    observation_.reset();
    // A field that goes loses the keyboard, which is no entry.
    for (const FormRow* const row : rows_)
        row->field().disconnect(this);
    rows_.clear();
    rowLayout_ = nullptr;
    // The fields refer to the controls: they go first.
    delete area_->takeWidget();
    form_.reset();
}

void FormPanel::openForm() {
    auto* const page = new QWidget(area_);
    rowLayout_ = new QFormLayout(page);
    rowLayout_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rowLayout_->setHorizontalSpacing(18);
    rowLayout_->setVerticalSpacing(12);
    rowLayout_->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
    rowLayout_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form_ = std::make_unique<core::OpenForm>(*element_);
    for (ui::Control* const control : form_->controls())
        addRow(*control);
    if (rows_.empty()) {
        auto* const none =
            plainLabel(page, translated(kContext, "This element has no properties of its own."));
        none->setForegroundRole(QPalette::PlaceholderText);
        rowLayout_->addRow(none);
    }
    area_->setWidget(page);
    observation_ = element_->getSkillElement()->observe(
        [this](bindings::PropertyId, bindings::Action) { refreshSoon(); });
    refresh();
}

void FormPanel::addRow(ui::Control& control) {
    auto* const row = new FormRow(control, rowLayout_->parentWidget());
    auto& field = row->field();
    field.widget().installEventFilter(this);
    connect(&field, &Field::edited, this, [this, &field] { take(field); });
    connect(&field, &Field::pressed, this,
            [this, &control] { emit importWanted(element_, toQt(control.key())); });
    if (control.property()) {
        auto* const label =
            plainLabel(rowLayout_->parentWidget(), withoutMnemonic(toQt(control.texts().label)));
        label->setToolTip(withoutFormat(toQt(control.texts().description)));
        label->setBuddy(&field.widget());
        label->setFixedHeight(field.widget().sizeHint().height());
        label->setMinimumWidth(130);
        rowLayout_->addRow(label, row);
    } else {
        rowLayout_->addRow(new QWidget(rowLayout_->parentWidget()), row);
    }
    rows_.push_back(row);
}

void FormPanel::take(Field& field) {
    const auto value = field.entered();
    if (!value || session_->isBusy())
        return;
    const bool typed = std::holds_alternative<std::u16string>(*value) ||
                       std::holds_alternative<std::uint64_t>(*value);
    session_->setField(*element_, field.control(), *value, typed ? visit_ : 0);
    refresh();
}

bool FormPanel::jumpTo(std::string_view key) {
    const auto* const row = focusField(key);
    if (row != nullptr)
        row->field().selectContent();
    return row != nullptr;
}

FormRow* FormPanel::focusField(std::string_view key) {
    const auto found = std::ranges::find_if(rows_, [&](const FormRow* row) {
        return !row->isHidden() && (key.empty() || row->field().control().key() == key);
    });
    if (found == rows_.end())
        return nullptr;
    (*found)->field().widget().setFocus(Qt::OtherFocusReason);
    area_->ensureWidgetVisible(*found);
    return *found;
}

bool FormPanel::eventFilter(QObject* watched, QEvent* event) {
    // A text line has an undo of its own, which knows less than the project's.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        const bool isRedo =
            key->key() == Qt::Key_Y && key->modifiers() == Qt::ControlModifier; // on every desktop
        if (isRedo || key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    // A form that is scrolled must not change the values that pass under the pointer.
    if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::FocusIn) {
        visit_ = ProjectSession::newVisit();
        for (const FormRow* const row : rows_)
            if (&row->field().widget() == watched)
                showHelp(&row->field().control());
    }
    return QWidget::eventFilter(watched, event);
}

void FormPanel::showHeader() {
    if (element_ == nullptr) {
        picture_->clear();
        title_->setText(translated(kContext, "Nothing selected"));
        subtitle_->setText(translated(kContext, "Select an element in the tree."));
        return;
    }
    const auto& elementClass = element_->elementClass();
    picture_->setPixmap(icons_->of(elementClass).pixmap(kPictureSize));
    title_->setText(toQt(element_->name()));
    subtitle_->setText(toQt(elementClass.displayName()));
    subtitle_->setToolTip(withoutFormat(toQt(elementClass.description())));
}

void FormPanel::showHelp(const ui::Control* control) {
    const auto& texts = control != nullptr ? control->texts() : ui::Texts();
    const auto help = toQt(texts.help.empty() ? texts.description : texts.help);
    help_->setText(help);
    help_->setVisible(!help.isEmpty());
}

void FormPanel::refreshSoon() {
    if (refreshPending_.exchange(true))
        return;
    QMetaObject::invokeMethod(this, &FormPanel::refresh, Qt::QueuedConnection);
}

void FormPanel::refresh() {
    if (session_->isBusy())
        return; // told again afterwards
    refreshPending_ = false;
    for (FormRow* const row : rows_) {
        row->refresh();
        rowLayout_->setRowVisible(row, row->field().control().isVisible());
    }
}

} // namespace corvane::workbench::gui
