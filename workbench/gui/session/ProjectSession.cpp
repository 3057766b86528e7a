#include "workbench/gui/session/ProjectSession.hpp"

#include "workbench/core/project/ElementWalk.hpp"
#include "workbench/gui/look/Text.hpp"

#include <corvane/workbench/ui/ReferenceChooser.hpp>

#include <algorithm>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ProjectSession";

// Below this number of elements no edit takes as long as a blink.
constexpr std::size_t kLargeProject = 20'000;
constexpr std::size_t kNamedLostReferences = 3;

QString titleOfChange(const ui::Control& control) {
    return translated(kContext, "Changing {}", {toQt(control.texts().label)});
}

/// The fields of a new element that refer to nothing yet, with what they can refer to where that is
/// a single element.
std::vector<core::FieldValue> onlyChoices(model::Element& element) {
    const core::OpenForm form(element);
    std::vector<core::FieldValue> choices;
    for (auto* const control : form.controls()) {
        const auto* const reference = dynamic_cast<const ui::ReferenceChooser*>(control);
        if (reference == nullptr || !reference->isVisible() ||
            reference->value() != ui::ControlValue(std::u16string()))
            continue;
        if (const auto candidates = reference->candidates(); candidates.size() == 1)
            choices.push_back({std::string(control->key()),
                               toUtf16(toQt(std::string_view(candidates.front()->path())))});
    }
    return choices;
}

bool isStop(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const core::EditStopped&) {
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace

ProjectSession::ProjectSession(const core::PluginHost& plugins, BusyRunner& runner)
    : runner_(&runner),
      project_(std::make_unique<core::Project>(plugins)),
      editor_(std::make_unique<core::Editor>(*project_)) {
    observeEditor();
}

void ProjectSession::observeEditor() {
    editor_->setObserver(this);
    editor_->setProgress(
        [this](std::size_t done, std::size_t total) { return runner_->tell(done, total); });
}

ProjectSession::~ProjectSession() { editor_->setObserver(nullptr); }

ProjectSession::Visit ProjectSession::newVisit() {
    static Visit last = 0;
    return ++last;
}

void ProjectSession::replaceProject(std::unique_ptr<core::Project> project, bool unsaved,
                                    std::function<void()> then) {
    runner_->prepare();
    enterReset();
    emit projectDropped();
    auto oldEditor = std::exchange(editor_, nullptr);
    auto oldProject = std::exchange(project_, std::move(project));
    editor_ = std::make_unique<core::Editor>(*project_);
    typing_.reset();
    unsaved_ = unsaved;
    // A large project takes its time to go, and to be counted.
    runner_->run(
        translated(kContext, "Closing the old project"),
        [this, oldEditor = std::move(oldEditor), oldProject = std::move(oldProject)]() mutable {
            oldEditor.reset();
            oldProject.reset();
            elementCount_ = core::countElements(root().childElements());
        },
        [this, then = std::move(then)](const std::exception_ptr&) {
            observeEditor();
            leaveReset();
            emit historyUpdated();
            if (then)
                then();
        });
}

void ProjectSession::markSaved() {
    unsaved_ = false;
    typing_.reset();
    editor_->markSaved();
    emit historyUpdated();
}

bool ProjectSession::commitPending(std::function<void()> then) {
    if (isBusy())
        return false;
    // A view may take leave of an element while a step removes it: no time for another step.
    if (stepUnderWay_ || resetDepth_ != 0)
        return true;
    commitRefused_ = false;
    emit commitWanted();
    if (!isBusy())
        return !commitRefused_;
    afterCommit_ = std::move(then);
    return false;
}

void ProjectSession::whenCommitted(const std::function<void()>& then) {
    if (commitPending(then))
        then();
}

// Whatever waits goes on from the event loop, when the window shows the project again.
void ProjectSession::endCommit(bool good) {
    auto next = std::exchange(afterCommit_, nullptr);
    if (next && good)
        QMetaObject::invokeMethod(this, std::move(next), Qt::QueuedConnection);
}

void ProjectSession::perform(const Doing& doing, Work work, Then then) {
    if (isBusy())
        return;
    if (elementCount_ < kLargeProject) {
        performNow(doing, [&work] { work(); }, std::move(then));
        return;
    }
    emit stepBegins(doing.way, doing.effect == Effect::structure);
    performBeside(doing, std::move(work),
                  [this, way = doing.way, then = std::move(then)](
                      const std::exception_ptr& failure) mutable { endStep(way, failure, then); });
}

void ProjectSession::performNow(const Doing& doing, const std::function<void()>& work, Then then) {
    emit stepBegins(doing.way, doing.effect == Effect::structure);
    std::exception_ptr failure;
    try {
        work();
    } catch (...) {
        failure = std::current_exception();
    }
    endStep(doing.way, failure, then);
}

void ProjectSession::endStep(Way way, const std::exception_ptr& failure, Then& then) {
    emit stepEnded(way, !failure);
    if (failure)
        report(failure);
    if (then)
        then(failure);
}

void ProjectSession::performBeside(const Doing& doing, Work work, Then then) {
    const auto effect = doing.effect;
    // The views are told in one piece afterwards: they must not follow single steps from there.
    runner_->prepare();
    editor_->setObserver(nullptr);
    if (effect == Effect::structure)
        enterReset();
    runner_->run(
        doing.title,
        [this, effect, work = std::move(work)]() mutable {
            work();
            if (effect == Effect::structure)
                count();
        },
        [this, effect, then = std::move(then)](const std::exception_ptr& failure) mutable {
            editor_->setObserver(this);
            if (effect == Effect::structure)
                leaveReset();
            emit valuesUpdated();
            emit historyUpdated();
            then(failure);
            endCommit(!failure);
        },
        doing.stoppable);
}

void ProjectSession::report(const std::exception_ptr& failure) {
    commitRefused_ = true;
    try {
        std::rethrow_exception(failure);
    } catch (const core::EditStopped&) { // as the user wanted
        emit remarked(messageOf(failure));
    } catch (...) {
        emit refused(messageOf(failure));
    }
}

// The control may go with its form while the edit is made.
void ProjectSession::setField(model::Element& element, const ui::Control& control,
                              ui::ControlValue value, Visit visit) {
    const Typing typing{&element, std::string(control.key()), visit};
    // Taking a step back and making it anew would double the work where it is worth a thought.
    const bool canContinue = visit != 0 && elementCount_ < kLargeProject;
    const bool continues = canContinue && typing_ == typing && editor_->canUndo();
    perform(
        {Effect::values, titleOfChange(control)},
        [this, &element, field = core::FieldValue{typing.key, std::move(value)}, continues] {
            setValuesInVisit(element, field, continues);
        },
        [this, typing, canContinue](const std::exception_ptr& failure) {
            if (!failure && canContinue && valueStepMade_)
                typing_ = typing;
        });
}

void ProjectSession::setValuesInVisit(model::Element& element, const core::FieldValue& value,
                                      bool continues) {
    typing_.reset();
    // A field that showed the value before the visit for a moment would lose its cursor.
    if (continues)
        silently([this] { editor_->undo(); });
    valueStepMade_ = false;
    try {
        editor_->setValues(element, {&value, 1});
    } catch (...) {
        if (continues)
            silently([this] { editor_->redo(); });
        throw;
    }
    if (continues && !valueStepMade_) { // typed back to what was there before
        emit valuesUpdated();
        emit historyUpdated();
    }
}

void ProjectSession::silently(const std::function<void()>& action) {
    editor_->setObserver(nullptr);
    try {
        action();
    } catch (...) {
        editor_->setObserver(this);
        throw;
    }
    editor_->setObserver(this);
}

void ProjectSession::setFieldOfAll(std::vector<model::Element*> elements,
                                   const ui::Control& control, ui::ControlValue value) {
    typing_.reset();
    perform({Effect::values, titleOfChange(control), Way::forth, BusyRunner::Stoppable::yes},
            [this, elements = std::move(elements),
             field = core::FieldValue{std::string(control.key()), std::move(value)}] {
                editor_->setValue(elements, field);
            });
}

void ProjectSession::change(const QString& title, Effect effect,
                            std::move_only_function<void(core::Editor&)> edits) {
    typing_.reset();
    perform({effect, title, Way::forth, BusyRunner::Stoppable::yes},
            [this, text = toUtf16(title), edits = std::move(edits)]() mutable {
                editor_->together(text, [&] { edits(*editor_); });
            });
}

model::Element* ProjectSession::add(model::Element& parent, const core::LoadedClass& elementClass) {
    if (isBusy())
        return nullptr;
    typing_.reset();
    model::Element* added = nullptr;
    performNow({Effect::structure, {}}, [&] {
        editor_->together({}, [&] {
            added = &editor_->add(parent, elementClass);
            const auto choices = onlyChoices(*added);
            editor_->setValues(*added, choices);
        });
    });
    return added;
}

void ProjectSession::rename(model::Element& element, const QString& name) {
    if (isBusy())
        return;
    typing_.reset();
    performNow({Effect::values, {}}, [&] { editor_->rename(element, toUtf8(name)); });
}

void ProjectSession::duplicate(std::vector<model::Element*> elements) {
    typing_.reset();
    auto copies = std::make_shared<std::vector<model::Element*>>();
    perform(
        {Effect::structure, translated(kContext, "Duplicating")},
        [this, copies, elements = std::move(elements)] { *copies = editor_->duplicate(elements); },
        [this, copies](const std::exception_ptr& failure) {
            if (!failure)
                emit arrived(*copies);
        });
}

void ProjectSession::remove(std::vector<model::Element*> elements) {
    typing_.reset();
    auto lost = std::make_shared<std::vector<core::LostReference>>();
    perform(
        {Effect::structure, translated(kContext, "Removing")},
        [this, lost, elements = std::move(elements)] { *lost = editor_->remove(elements); },
        [this, lost](const std::exception_ptr&) {
            if (!lost->empty())
                remarkLost(*lost);
        });
}

void ProjectSession::remarkLost(const std::vector<core::LostReference>& lost) {
    QStringList holders;
    for (std::size_t i = 0; i != std::min(lost.size(), kNamedLostReferences); ++i)
        holders += toQt(lost[i].holder->path());
    if (lost.size() > kNamedLostReferences)
        holders += QStringLiteral("…");
    emit remarked(
        translated(kContext, "{}: {}",
                   {counted(kContext, "1 reference to what was removed now refers to nothing",
                            "{} references to what was removed now refer to nothing", lost.size()),
                    holders.join(QStringLiteral(", "))}));
}

void ProjectSession::move(const std::vector<model::Element*>& elements, model::Element& parent,
                          std::size_t position) {
    typing_.reset();
    perform(
        {Effect::structure, translated(kContext, "Moving")},
        [this, elements, &parent, position] { editor_->move(elements, parent, position); },
        [this, elements](const std::exception_ptr& failure) {
            if (!failure)
                emit arrived(elements);
        });
}

void ProjectSession::undo() {
    typing_.reset();
    if (!isBusy() && editor_->canUndo())
        perform({Effect::structure, toQt(editor_->undoText()), Way::back},
                [this] { editor_->undo(); });
}

void ProjectSession::redo() {
    typing_.reset();
    if (!isBusy() && editor_->canRedo())
        perform({Effect::structure, toQt(editor_->redoText()), Way::again},
                [this] { editor_->redo(); });
}

void ProjectSession::import(model::Element& target, ImportPlan plan,
                            std::move_only_function<void(const ImportResult&)> then) {
    if (isBusy())
        return;
    typing_.reset();
    auto result = std::make_shared<core::ImportResult>();
    emit stepBegins(Way::forth, true);
    performBeside(
        {Effect::structure, translated(kContext, "Importing")},
        [this, result, &target, plan = std::move(plan)] {
            *result = editor_->import(target, *plan.document, plan.options, plan.corrections);
        },
        [this, result, then = std::move(then)](const std::exception_ptr& failure) mutable {
            emit stepEnded(Way::forth, !failure);
            then(failure ? ImportResult(std::unexpected(messageOf(failure))) : *result);
        });
}

// The tree is another one for a while, but no step is taken.
void ProjectSession::previewImport(model::Element& target, ImportPlan plan,
                                   std::move_only_function<void(PreviewResult)> then) {
    if (isBusy())
        return;
    auto preview = std::make_shared<core::ImportPreview>();
    performBeside(
        {.effect = Effect::structure,
         .title = translated(kContext, "Finding out what the import changes"),
         .stoppable = BusyRunner::Stoppable::yes},
        [this, preview, &target, plan = std::move(plan)] {
            *preview =
                editor_->previewImport(target, *plan.document, plan.options, plan.corrections);
        },
        [preview, then = std::move(then)](const std::exception_ptr& failure) mutable {
            if (failure)
                then(std::unexpected(Obstacle{messageOf(failure), isStop(failure)}));
            else
                then(std::move(*preview));
        });
}

void ProjectSession::enterReset() {
    if (resetDepth_ != 0) {
        ++resetDepth_;
        return;
    }
    emit resetComes();
    ++resetDepth_;
    emit resetBegins();
}

void ProjectSession::leaveReset() {
    if (--resetDepth_ != 0)
        return;
    emit resetEnds();
    emit structureChanged();
    emit valuesUpdated();
}

void ProjectSession::changeOfStructure() {
    recount();
    emit structureChanged();
}

// A large project stays one: what was removed from it may come back.
void ProjectSession::recount() {
    if (elementCount_ < kLargeProject)
        count();
}

void ProjectSession::count() {
    elementCount_ = std::max(elementCount_, core::countElements(root().childElements()));
}

void ProjectSession::aboutToInsert(model::Element& parent, std::size_t position,
                                   std::size_t count) {
    stepUnderWay_ = true;
    if (resetDepth_ == 0)
        emit insertionBegins(&parent, position, count);
}

void ProjectSession::inserted() {
    stepUnderWay_ = false;
    if (resetDepth_ != 0)
        return;
    emit insertionEnds();
    changeOfStructure();
}

void ProjectSession::aboutToRemove(model::Element& parent, std::size_t position,
                                   std::size_t count) {
    stepUnderWay_ = true;
    if (resetDepth_ == 0)
        emit removalBegins(&parent, position, count);
}

void ProjectSession::removed() {
    stepUnderWay_ = false;
    if (resetDepth_ != 0)
        return;
    emit removalEnds();
    changeOfStructure();
}

void ProjectSession::renamed(model::Element& element) {
    if (resetDepth_ != 0)
        return;
    emit elementRenamed(&element);
    emit structureChanged();
}

void ProjectSession::aboutToReset(model::Element&) { enterReset(); }

void ProjectSession::reset(model::Element&) {
    recount();
    leaveReset();
}

void ProjectSession::valuesChanged(model::Element&) {
    valueStepMade_ = true;
    if (resetDepth_ == 0)
        emit valuesUpdated();
}

void ProjectSession::historyChanged() {
    if (resetDepth_ == 0)
        emit historyUpdated();
}

} // namespace corvane::workbench::gui
