#include "workbench/gui/problems/ProblemsModel.hpp"

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <array>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ProblemsModel";
constexpr int kStepElements = 64;
constexpr int kIdleMilliseconds = 250; // nobody types or drags
constexpr std::array<const char*, 3> kHeadings{"Problem", "Element", "Field"};

const ui::Control* controlOf(const core::OpenForm& form, bindings::PropertyId property) {
    for (const auto* const control : form.controls())
        if (control->property() && control->property()->id() == property)
            return control;
    return nullptr;
}

QString messageOf(const Problem& problem) {
    return problem.severity == Severity::error
               ? problem.message
               : translated(kContext, "Warning: {}", {problem.message});
}

QString textOf(const Problem& problem, int column) {
    switch (column) {
    case 0:
        return messageOf(problem);
    case 1:
        return problem.path;
    default:
        return problem.field;
    }
}

} // namespace

ProblemsModel::ProblemsModel(ProjectSession& session, QObject* parent)
    : QAbstractTableModel(parent), session_(&session), slicer_(session.runner(), this) {
    restart_.setSingleShot(true);
    restart_.setInterval(0);
    connect(&restart_, &QTimer::timeout, this, &ProblemsModel::restart);
    idle_.setSingleShot(true);
    idle_.setInterval(kIdleMilliseconds);
    connect(&idle_, &QTimer::timeout, this, qOverload<>(&ProblemsModel::lookForWarnings));
    connect(session_, &ProjectSession::resetBegins, this, &ProblemsModel::drop);
    connect(session_, &ProjectSession::removalBegins, this, &ProblemsModel::drop);
    connect(session_, &ProjectSession::insertionBegins, this, [this] {
        slicer_.stop();
        idle_.stop();
    });
    connect(session_, &ProjectSession::structureChanged, &restart_, qOverload<>(&QTimer::start));
    connect(session_, &ProjectSession::valuesUpdated, &restart_, qOverload<>(&QTimer::start));
}

void ProblemsModel::drop() {
    slicer_.stop();
    idle_.stop();
    show(errors_, {});
    show(warnings_, {});
}

void ProblemsModel::show(std::vector<Problem>& part, std::vector<Problem> found) {
    if (found == part)
        return;
    beginResetModel();
    part = std::move(found);
    endResetModel();
}

void ProblemsModel::restart() {
    if (session_->isBusy())
        return; // told again afterwards
    idle_.stop();
    found_.clear();
    foundTotal_ = 0;
    foundAbove_.clear();
    slicer_.start([this, walk = TreeWalk(session_->root())]() mutable { return look(walk); });
}

bool ProblemsModel::look(TreeWalk& walk) {
    for (int i = 0; i != kStepElements; ++i) {
        auto* const element = walk.next();
        if (element == nullptr) {
            publish();
            return true;
        }
        const auto errors = element->getSkillElement()->localPropertyErrorCount();
        if (errors == 0)
            continue;
        foundTotal_ += errors;
        noteAbove(*element);
        if (found_.size() < kMaxListedProblems) {
            note(*element);
            return false; // a form is more than a step of the walk
        }
    }
    return false;
}

void ProblemsModel::note(model::Element& element) {
    const core::OpenForm form(element);
    element.getSkillElement()->forEachError(
        [&](bindings::PropertyId property, const std::u16string& message) {
            const auto* const control = controlOf(form, property);
            found_.push_back({Severity::error, &element, toQt(std::string_view(element.path())),
                              control == nullptr ? std::string() : std::string(control->key()),
                              control == nullptr ? QString() : toQt(control->texts().label),
                              toQt(message)});
        });
}

void ProblemsModel::noteAbove(const model::Element& element) {
    const auto* above = element.parentElement();
    while (above != nullptr && foundAbove_.insert(above).second)
        above = above->parentElement();
}

// The list keeps its place where nothing has changed in it.
void ProblemsModel::publish() {
    total_ = foundTotal_;
    show(errors_, std::exchange(found_, {}));
    emit counted(total_, foundAbove_);
    idle_.start();
}

void ProblemsModel::lookForWarnings() {
    if (session_->isBusy())
        return; // told again afterwards
    slicer_.start([this, lookup = WarningLookup(session_->root())]() mutable {
        return lookForWarnings(lookup);
    });
}

bool ProblemsModel::lookForWarnings(WarningLookup& lookup) {
    if (!lookup.step())
        return false;
    warningTotal_ = lookup.total();
    show(warnings_, lookup.takeListed());
    emit warningsCounted();
    return true;
}

const Problem& ProblemsModel::at(int row) const {
    const auto index = static_cast<std::size_t>(row);
    return index < errors_.size() ? errors_[index] : warnings_[index - errors_.size()];
}

int ProblemsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(errors_.size() + warnings_.size());
}

int ProblemsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kHeadings.size());
}

QVariant ProblemsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto& problem = at(index.row());
    if (role == Qt::DecorationRole && index.column() == 0)
        return icon(problem.severity == Severity::error ? "error" : "warning");
    if (role == Qt::ToolTipRole)
        return withoutFormat(textOf(problem, index.column()));
    return role == Qt::DisplayRole ? textOf(problem, index.column()) : QVariant();
}

QVariant ProblemsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return translated(kContext, kHeadings[static_cast<std::size_t>(section)]);
}

} // namespace corvane::workbench::gui
