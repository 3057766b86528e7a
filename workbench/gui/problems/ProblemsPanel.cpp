#include "workbench/gui/problems/ProblemsPanel.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ProblemsPanel";

} // namespace

ProblemsPanel::ProblemsPanel(ProjectSession& session, QWidget* parent)
    : QWidget(parent),
      model_(new ProblemsModel(session, this)),
      view_(new QTableView(this)),
      title_(plainLabel(this)) {
    view_->setObjectName(QStringLiteral("problemList"));
    view_->setAccessibleName(translated(kContext, "Problems"));
    view_->setModel(model_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setShowGrid(false);
    view_->setWordWrap(false);
    view_->setTabKeyNavigation(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 8);
    view_->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    view_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    view_->horizontalHeader()->resizeSection(1, 160);
    view_->horizontalHeader()->resizeSection(2, 90);
    view_->horizontalHeader()->setHighlightSections(false);
    view_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->addWidget(title_);
    layout->addWidget(view_, 1);
    connect(view_, &QTableView::clicked, this, &ProblemsPanel::activate);
    connect(view_, &QTableView::activated, this, &ProblemsPanel::activate);
    connect(model_, &ProblemsModel::counted, this, &ProblemsPanel::showCounts);
    connect(model_, &ProblemsModel::warningsCounted, this, &ProblemsPanel::showCounts);
    showCounts();
}

void ProblemsPanel::offer(const QList<QAction*>& actions) {
    auto* const goThere = new QAction(translated(kContext, "Go to the Field"), view_);
    connect(goThere, &QAction::triggered, this, [this] {
        if (const auto index = view_->currentIndex(); index.isValid())
            activate(index);
    });
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
    view_->addAction(goThere);
    view_->addActions(actions);
}

void ProblemsPanel::focusList() {
    view_->setFocus(Qt::ShortcutFocusReason);
    if (!view_->currentIndex().isValid() && model_->rowCount() > 0)
        view_->selectRow(0);
}

void ProblemsPanel::activateNext() {
    const int count = model_->rowCount();
    if (count == 0)
        return;
    if (next_ >= count)
        next_ = 0;
    view_->selectRow(next_);
    activate(model_->index(next_, 0));
}

void ProblemsPanel::activate(const QModelIndex& index) {
    const auto problem = model_->at(index.row());
    next_ = index.row() + 1;
    emit activated(problem.element, problem.key);
}

bool ProblemsPanel::isOpen() const { return !view_->isHidden(); }

void ProblemsPanel::setOpen(bool open) {
    view_->setVisible(open);
    setSizePolicy(QSizePolicy::Preferred, open ? QSizePolicy::Preferred : QSizePolicy::Fixed);
    setMaximumHeight(open ? QWIDGETSIZE_MAX : sizeHint().height());
}

void ProblemsPanel::showCounts() {
    const auto errors = model_->total(Severity::error);
    const auto warnings = model_->total(Severity::warning);
    auto text = errors == 0 ? translated(kContext, "No problems")
                            : counted(kContext, "1 problem", "{} problems", errors);
    if (warnings != 0)
        text = translated(kContext, "{}, {}",
                          {text, counted(kContext, "1 warning", "{} warnings", warnings)});
    if (std::max(errors, warnings) > kMaxListedProblems)
        text = translated(kContext, "{}, the first {} are listed",
                          {text, formatted(kMaxListedProblems)});
    title_->setText(text);
}

} // namespace corvane::workbench::gui
