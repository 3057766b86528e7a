#include "workbench/gui/preview/ImportPreviewDialog.hpp"

#include "workbench/gui/look/FilterLine.hpp"
#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ImportPreviewDialog";
constexpr QSize kSize(860, 620);
constexpr int kMargin = 16;
constexpr int kPicture = 20;
constexpr int kWarningLines = 4;
constexpr int kFrame = 14; // around lines of text
constexpr int kElementWidth = 270;
constexpr int kValueWidth = 125;
constexpr int kTypingPause = 150;        // milliseconds
constexpr int kCorrectingPause = 400;    // milliseconds
constexpr int kPercentInterval = 100;    // milliseconds
constexpr std::size_t kFewChanges = 300; // of which all is shown at once

using Kind = core::MergeWarning::Kind;

const core::MergeWarning* misleadingOf(const core::ImportPreview& preview) {
    const auto found =
        std::ranges::find(preview.warnings, Kind::misleadingNames, &core::MergeWarning::kind);
    return found == preview.warnings.end() ? nullptr : &*found;
}

} // namespace

ImportPreviewDialog::ImportPreviewDialog(std::shared_ptr<ImportDraft> draft,
                                         ProjectSession& session, QWidget* parent)
    : QDialog(parent),
      draft_(std::move(draft)),
      session_(&session),
      content_(new QWidget(this)),
      summary_(plainLabel(content_)),
      misleading_(new QFrame(content_)),
      warnings_(new QPlainTextEdit(content_)),
      byIdentity_(new QRadioButton(translated(kContext, "Match by &address"), content_)),
      byPath_(new QRadioButton(translated(kContext, "Match by &name"), content_)),
      removeMissing_(
          new QCheckBox(translated(kContext, "&Remove what the file no longer has"), content_)),
      filter_(new FilterLine(translated(kContext, "Filter by path"),
                             translated(kContext, "Filter the changes by path"), content_)),
      model_(new ChangesModel(this)),
      view_(new QTreeView(content_)),
      form_(new NewElementForm(draft_, session, content_)),
      status_(plainLabel(this)),
      progress_(new QProgressBar(this)),
      state_(buildStatus()) {
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("importPreview"));
    setWindowTitle(withoutModifiedMark(translated(
        kContext, "Import {} into {}",
        {QFileInfo(draft_->file()).fileName(), toQt(std::string_view(draft_->target().path()))})));
    auto* const inner = new QVBoxLayout(content_);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(buildMisleading());
    inner->addWidget(warnings_);
    inner->addWidget(buildOptions());
    inner->addWidget(summary_);
    inner->addWidget(filter_);
    inner->addWidget(buildChanges(), 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(content_, 1);
    layout->addWidget(state_);
    buildButtons(*layout);
    connectParts();
    resize(kSize.boundedTo(parent->size() * 0.95));
    showPreview();
    view_->setFocus();
}

QWidget* ImportPreviewDialog::buildMisleading() {
    misleading_->setFrameShape(QFrame::StyledPanel);
    misleading_->setObjectName(QStringLiteral("misleadingNames"));
    auto* const picture = new QLabel(misleading_);
    picture->setPixmap(icon("problem").pixmap(kPicture));
    misleadingText_ = plainLabel(misleading_);
    misleadingText_->setWordWrap(true);
    auto* const byName =
        new QPushButton(translated(kContext, "Match by Name Instead"), misleading_);
    byName->setObjectName(QStringLiteral("matchByName"));
    byName->setAutoDefault(false);
    connect(byName, &QPushButton::clicked, byPath_, &QAbstractButton::click);
    auto* const row = new QHBoxLayout(misleading_);
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addWidget(misleadingText_, 1);
    row->addWidget(byName);
    warnings_->setObjectName(QStringLiteral("importWarnings"));
    warnings_->setAccessibleName(translated(kContext, "Warnings"));
    warnings_->setReadOnly(true);
    warnings_->setTabChangesFocus(true);
    return misleading_;
}

QWidget* ImportPreviewDialog::buildOptions() {
    byIdentity_->setObjectName(QStringLiteral("byAddress"));
    byPath_->setObjectName(QStringLiteral("byName"));
    removeMissing_->setObjectName(QStringLiteral("removeMissing"));
    byIdentity_->setToolTip(translated(
        kContext, "An element is the same where its address is, whatever the file calls it."));
    byPath_->setToolTip(
        translated(kContext, "An element is the same where its name is, wherever it has moved."));
    const auto& options = draft_->plan().options;
    byIdentity_->setChecked(options.match == core::Match::identity);
    byPath_->setChecked(options.match == core::Match::path);
    removeMissing_->setChecked(options.removeMissing);
    auto* const box = new QWidget(content_);
    auto* const row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(18);
    row->addWidget(byIdentity_);
    row->addWidget(byPath_);
    row->addWidget(removeMissing_);
    row->addStretch(1);
    return box;
}

QSplitter* ImportPreviewDialog::buildChanges() {
    filter_->setObjectName(QStringLiteral("changesFilter"));
    filter_->installEventFilter(this);
    summary_->setObjectName(QStringLiteral("importSummary"));
    summary_->setWordWrap(true);
    view_->setObjectName(QStringLiteral("importChanges"));
    view_->setAccessibleName(translated(kContext, "Changes"));
    view_->setModel(model_);
    view_->setUniformRowHeights(true);
    view_->setTextElideMode(Qt::ElideMiddle);
    view_->setAlternatingRowColors(true);
    view_->header()->resizeSection(ChangesModel::kElement, kElementWidth);
    view_->header()->resizeSection(ChangesModel::kBefore, kValueWidth);
    auto* const area = new QScrollArea(content_);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(form_);
    auto* const split = new QSplitter(Qt::Horizontal, content_);
    split->setChildrenCollapsible(false);
    split->addWidget(view_);
    split->addWidget(area);
    split->setStretchFactor(0, 1);
    split->setSizes({kSize.width() * 2 / 3, kSize.width() / 3});
    return split;
}

// The two lie upon each other, so that nothing moves when one takes the other's place.
QStackedWidget* ImportPreviewDialog::buildStatus() {
    status_->setObjectName(QStringLiteral("previewStatus"));
    status_->setWordWrap(true);
    progress_->setTextVisible(false);
    progress_->setAccessibleName(translated(kContext, "Progress"));
    auto* const stop = new QPushButton(translated(kContext, "Stop"), this);
    stop->setObjectName(QStringLiteral("stopComparing"));
    stop->setAutoDefault(false);
    connect(stop, &QPushButton::clicked, this, [this] { session_->runner().stop(); });
    auto* const busy = new QWidget(this);
    auto* const row = new QHBoxLayout(busy);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(progress_, 1);
    row->addWidget(stop);
    auto* const state = new QStackedWidget(this);
    state->addWidget(status_);
    state->addWidget(busy);
    state->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return state;
}

void ImportPreviewDialog::buildButtons(QVBoxLayout& layout) {
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    import_ = buttons->addButton(translated(kContext, "Import"), QDialogButtonBox::AcceptRole);
    import_->setObjectName(QStringLiteral("importNow"));
    import_->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout.addWidget(buttons);
}

void ImportPreviewDialog::connectParts() {
    filterLater_.setSingleShot(true);
    filterLater_.setInterval(kTypingPause);
    compareLater_.setSingleShot(true);
    compareLater_.setInterval(kCorrectingPause);
    percentLater_.setInterval(kPercentInterval);
    connect(draft_.get(), &ImportDraft::compared, this, &ImportPreviewDialog::showPreview);
    connect(draft_.get(), &ImportDraft::failed, this, &ImportPreviewDialog::showFailure);
    connect(byPath_, &QRadioButton::toggled, this, &ImportPreviewDialog::takeOptions);
    connect(removeMissing_, &QCheckBox::toggled, this, &ImportPreviewDialog::takeOptions);
    connect(filter_, &QLineEdit::textChanged, &filterLater_, qOverload<>(&QTimer::start));
    connect(filter_, &FilterLine::left, view_, qOverload<>(&QWidget::setFocus));
    connect(&filterLater_, &QTimer::timeout, this, [this] {
        model_->setFilter(filter_->text());
        showChanges();
    });
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ImportPreviewDialog::showNewElement);
    connect(form_, &NewElementForm::corrected, &compareLater_, qOverload<>(&QTimer::start));
    connect(&compareLater_, &QTimer::timeout, this, &ImportPreviewDialog::compare);
    connect(&percentLater_, &QTimer::timeout, this, [this] {
        const int percent = session_->runner().percent();
        progress_->setRange(0, percent < 0 ? 0 : 100);
        progress_->setValue(percent);
    });
    connect(&session_->runner(), &BusyRunner::began, this, [this] { setBusy(true); });
    connect(&session_->runner(), &BusyRunner::ended, this, [this] { setBusy(false); });
    connect(session_, &ProjectSession::projectDropped, this, [this] {
        leave();
        draft_->drop();
        QDialog::reject();
    });
}

void ImportPreviewDialog::showPreview() {
    showWarnings();
    summary_->setText(summary());
    model_->setChanges(draft_->preview());
    showChanges();
    view_->setEnabled(true);
    status_->clear();
}

void ImportPreviewDialog::showWarnings() {
    const auto& preview = *draft_->preview();
    const auto* const misleading = misleadingOf(preview);
    misleading_->setVisible(misleading != nullptr);
    if (misleading != nullptr)
        misleadingText_->setText(toQt(core::textOf(*misleading)));
    const auto file = toUtf8(QFileInfo(draft_->file()).fileName());
    QStringList lines;
    for (const auto& warning : draft_->warnings())
        lines += toQt(core::textOf(warning, file));
    for (const auto& warning : preview.warnings)
        if (&warning != misleading)
            lines += toQt(core::textOf(warning));
    warnings_->setPlainText(lines.join(QLatin1Char('\n')));
    warnings_->setVisible(!lines.isEmpty());
    warnings_->setFixedHeight(
        warnings_->fontMetrics().lineSpacing() *
            static_cast<int>(std::clamp<qsizetype>(lines.size(), 1, kWarningLines)) +
        kFrame);
}

QString ImportPreviewDialog::summary() const {
    const auto& counts = draft_->preview()->counts;
    const std::array<std::pair<std::size_t, std::string_view>, 7> all{
        {{counts.added, "{} added"},
         {counts.changed, "{} updated"},
         {counts.moved, "{} moved"},
         {counts.renamed, "{} renamed"},
         {counts.removed, "{} removed"},
         {counts.missing, "{} no longer in the file"},
         {counts.unchanged, "{} unchanged"}}};
    QStringList texts;
    for (const auto& [count, text] : all)
        if (count != 0)
            texts += translated(kContext, text, {formatted(count)});
    return texts.join(QStringLiteral(", "));
}

// What the user has looked at stays in sight, and in the hand: a form that is corrected.
void ImportPreviewDialog::showChanges() {
    const auto position = form_->position();
    if (draft_->preview()->changes.size() <= kFewChanges)
        view_->expandAll();
    else
        for (int row = 0; row != model_->rowCount(); ++row)
            view_->expand(model_->index(row, 0));
    const auto shown = position ? model_->indexOfTop(*position) : firstOfInterest();
    if (shown.isValid()) {
        view_->setCurrentIndex(shown);
        showNewElement();
    } else if (position) {
        form_->showElement(position); // what was entered has made it one that does not change
    }
}

QModelIndex ImportPreviewDialog::firstOfInterest() const {
    const auto top = draft_->target().path() + "/";
    const auto isWarnedOf = [&](const core::PreviewedChange& change) {
        const auto& inFile = change.from.value_or(change.path);
        return std::ranges::any_of(draft_->warnings(), [&](const ui::ImportWarning& warning) {
            return inFile == top + warning.element;
        });
    };
    const core::PreviewedChange* first = nullptr;
    for (const auto& change : draft_->preview()->changes) {
        if (!change.position || change.change != core::ImportedElement::Change::added)
            continue;
        if (isWarnedOf(change))
            return model_->indexOfTop(*change.position);
        if (first == nullptr)
            first = &change;
    }
    return first == nullptr ? QModelIndex() : model_->indexOfTop(*first->position);
}

void ImportPreviewDialog::showNewElement() {
    const auto* const change = model_->changeAt(view_->currentIndex());
    form_->showElement(change == nullptr ? std::nullopt : change->position);
}

void ImportPreviewDialog::takeOptions() {
    draft_->setOptions({.match = byPath_->isChecked() ? core::Match::path : core::Match::identity,
                        .removeMissing = removeMissing_->isChecked()});
    compare();
}

void ImportPreviewDialog::compare() {
    compareLater_.stop();
    draft_->compare();
}

// What is listed is not what the import would do: it is shown no more than as the last answer.
void ImportPreviewDialog::showFailure(const QString& reason) {
    view_->setEnabled(false);
    status_->setText(reason);
}

void ImportPreviewDialog::setBusy(bool busy) {
    if (busy)
        focusBeforeBusy_ = focusWidget();
    content_->setEnabled(!busy);
    import_->setEnabled(!busy);
    state_->setCurrentIndex(busy ? 1 : 0);
    if (busy) {
        progress_->setRange(0, 0); // how far it is nobody knows yet
        percentLater_.start();
        return;
    }
    percentLater_.stop();
    if (closeWanted_)
        reject();
    else if (focusBeforeBusy_ != nullptr)
        focusBeforeBusy_->setFocus(Qt::OtherFocusReason);
}

// From the filter, Enter leads to the list; the dialog would take it for a yes.
bool ImportPreviewDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == filter_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            view_->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void ImportPreviewDialog::accept() {
    form_->commit();
    if (session_->isBusy())
        return;
    if (!draft_->isCurrent()) {
        compare();
        if (!session_->isBusy() && draft_->isCurrent())
            status_->setText(translated(
                kContext, "This is what the import changes with what you have entered."));
        return;
    }
    leave();
    QDialog::accept();
    draft_->confirm();
}

void ImportPreviewDialog::reject() {
    if (session_->isBusy()) {
        closeWanted_ = true;
        session_->runner().stop();
        return;
    }
    leave();
    QDialog::reject();
    draft_->cancel();
}

// The draft lets go of the elements that the form shows.
void ImportPreviewDialog::leave() {
    compareLater_.stop();
    disconnect(draft_.get(), nullptr, this, nullptr);
    disconnect(&session_->runner(), nullptr, this, nullptr);
    form_->showElement(std::nullopt);
}

} // namespace corvane::workbench::gui
