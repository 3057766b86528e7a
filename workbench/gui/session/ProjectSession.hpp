#pragma once

#include "workbench/core/edit/Editor.hpp"
#include "workbench/gui/session/BusyRunner.hpp"

#include <QObject>

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::workbench::gui {

/// The project that the window shows, and the only way by which the window changes it.
///
/// Edits of a large project may take long (a new number can reach a million elements), so they run
/// beside the window: between `resetBegins` and `resetEnds` the tree may not be looked at, and as
/// long as the runner is busy the values may not be either. An edit that is asked for while another
/// one runs is dropped. What is refused is told by `refused`, and nothing has changed then.
class ProjectSession : public QObject, private core::EditObserver {
    Q_OBJECT

public:
    /// Holds an empty project at first. Both must outlive the session.
    ProjectSession(const core::PluginHost& plugins, BusyRunner& runner);
    ~ProjectSession() override;

    [[nodiscard]] core::Project& project() const { return *project_; }
    [[nodiscard]] const core::PluginHost& plugins() const { return project_->plugins(); }
    [[nodiscard]] model::Element& root() const { return project_->model().root(); }
    [[nodiscard]] const core::Editor& editor() const { return *editor_; }
    [[nodiscard]] BusyRunner& runner() const { return *runner_; }
    [[nodiscard]] bool isBusy() const { return runner_->isBusy(); }
    [[nodiscard]] bool isEmpty() const { return root().childElements().empty(); }

    /// Whether something would be lost if the project were dropped now.
    [[nodiscard]] bool isModified() const { return unsaved_ || editor_->isModified(); }

    /// Shows another project; `unsaved` if its content is in no file of the user's yet. `then` is
    /// called when it is there and the old one is gone.
    void replaceProject(std::unique_ptr<core::Project> project, bool unsaved = false,
                        std::function<void()> then = {});
    void markSaved();

    /// Lets every part of the window enter what is being typed in it. True when that is done;
    /// false when it was refused, and the user is to read why, or when it goes on beside the
    /// window: `then` is called when it has come to a good end.
    bool commitPending(std::function<void()> then = {});
    /// Calls `then` once nothing that was typed waits to be entered; not at all if it is refused.
    /// Whatever looks at the project as a whole, changes it or leaves it begins here.
    void whenCommitted(const std::function<void()>& then);

    /// One visit to a field: what is typed during it is one step of history. 0 belongs to none.
    using Visit = std::uint64_t;
    [[nodiscard]] static Visit newVisit();

    /// Sets what `control`, one of any form of the element, stands for.
    void setField(model::Element& element, const ui::Control& control, ui::ControlValue value,
                  Visit visit = 0);
    /// As `setField`, on each of the elements; all have the field.
    void setFieldOfAll(std::vector<model::Element*> elements, const ui::Control& control,
                       ui::ControlValue value);

    /// What an edit changes: values only, or also names and places.
    enum class Effect : std::uint8_t { values, structure };
    /// Makes all edits that `edits` makes one step of history, which is called `title`. It is
    /// called with the model in its hands, perhaps beside the window, and may throw to take back
    /// what it has done.
    void change(const QString& title, Effect effect,
                std::move_only_function<void(core::Editor&)> edits);

    /// The new element; null if it was refused. A reference of it that can lead to a single element
    /// leads there, which belongs to the same step.
    model::Element* add(model::Element& parent, const core::LoadedClass& elementClass);
    void rename(model::Element& element, const QString& name);
    /// The copies are told by `arrived`.
    void duplicate(std::vector<model::Element*> elements);
    void remove(std::vector<model::Element*> elements);
    void move(const std::vector<model::Element*>& elements, model::Element& parent,
              std::size_t position);
    void undo();
    void redo();

    /// What is imported, and how the user wants it.
    struct ImportPlan {
        std::shared_ptr<const std::string> document; // not null; as long as the file is
        core::ImportOptions options = {};
        std::vector<core::ImportCorrection> corrections;
    };

    /// Imports a document and tells how it went: what came in, or why nothing did.
    using ImportResult = std::expected<core::ImportResult, QString>;
    void import(model::Element& target, ImportPlan plan,
                std::move_only_function<void(const ImportResult&)> then);

    /// Why something was not found out: for what reason, or since the user did not want to wait.
    struct Obstacle {
        QString reason;
        bool stopped;
    };
    /// Tells what `import` would do. The project is as it was then.
    using PreviewResult = std::expected<core::ImportPreview, Obstacle>;
    void previewImport(model::Element& target, ImportPlan plan,
                       std::move_only_function<void(PreviewResult)> then);

    /// How a step of the history is taken: for the first time, taken back, or made again.
    enum class Way : std::uint8_t { forth, back, again };

signals:
    /// A step of the history is about to be taken, perhaps one of the tree.
    void stepBegins(corvane::workbench::gui::ProjectSession::Way way, bool ofTree);
    /// It has been taken, and everything shows it; or it was refused.
    void stepEnded(corvane::workbench::gui::ProjectSession::Way way, bool good);

    /// Whoever holds back what is being typed enters it now.
    void commitWanted();

    /// `resetBegins` follows: whoever wants to remember what it shows looks now.
    void resetComes();
    /// The whole tree is about to change or has changed; another project may be there now.
    void resetBegins();
    void resetEnds();
    /// Between those two: the elements of the project shown so far are about to be destroyed.
    void projectDropped();

    // Single changes of the tree; none comes between the two above.
    void insertionBegins(model::Element* parent, std::size_t position, std::size_t count);
    void insertionEnds();
    void removalBegins(model::Element* parent, std::size_t position, std::size_t count);
    void removalEnds();
    void elementRenamed(model::Element* element);

    /// After any of those.
    void structureChanged();
    /// Values, errors or visibility of any elements may have changed.
    void valuesUpdated();
    void historyUpdated();

    /// An edit was not made; translated.
    void refused(const QString& reason);
    /// Elements stand at another place now, or are copies: the user wants to see them there.
    void arrived(const std::vector<model::Element*>& elements);
    /// Something that the user should know about an edit that was made; translated.
    void remarked(const QString& remark);

private:
    using Work = std::move_only_function<void()>;
    using Then = std::move_only_function<void(const std::exception_ptr&)>;

    /// What a step of the history does to the project.
    struct Doing {
        Effect effect;
        QString title;
        Way way = Way::forth;
        BusyRunner::Stoppable stoppable = BusyRunner::Stoppable::no;
    };

    void perform(const Doing& doing, Work work, Then then = nullptr);
    /// Takes a step that is done within a blink.
    void performNow(const Doing& doing, const std::function<void()>& work, Then then = nullptr);
    void endStep(Way way, const std::exception_ptr& failure, Then& then);
    void performBeside(const Doing& doing, Work work, Then then);
    void observeEditor();
    void report(const std::exception_ptr& failure);
    void endCommit(bool good);
    void setValuesInVisit(model::Element& element, const core::FieldValue& value, bool continues);
    /// Does something to the history without telling the views.
    void silently(const std::function<void()>& action);
    void remarkLost(const std::vector<core::LostReference>& lost);
    void enterReset();
    void leaveReset();
    void changeOfStructure();
    void recount();
    void count();

    // core::EditObserver
    void aboutToInsert(model::Element& parent, std::size_t position, std::size_t count) override;
    void inserted() override;
    void aboutToRemove(model::Element& parent, std::size_t position, std::size_t count) override;
    void removed() override;
    void renamed(model::Element& element) override;
    void aboutToReset(model::Element& element) override;
    void reset(model::Element& element) override;
    void valuesChanged(model::Element& element) override;
    void historyChanged() override;

    struct Typing {
        const model::Element* element;
        std::string key;
        Visit visit;
        friend bool operator==(const Typing&, const Typing&) = default;
    };

    BusyRunner* runner_;
    std::unique_ptr<core::Project> project_;
    std::unique_ptr<core::Editor> editor_;
    std::optional<Typing> typing_; // whose step is the last of the history
    std::size_t elementCount_ = 0; // the most that the project has had
    int resetDepth_ = 0;
    bool unsaved_ = false;
    bool valueStepMade_ = false;
    bool stepUnderWay_ = false;         // the tree is between two states
    bool commitRefused_ = false;        // since the last `commitWanted`
    std::function<void()> afterCommit_; // waits for an edit beside the window
};

} // namespace corvane::workbench::gui
