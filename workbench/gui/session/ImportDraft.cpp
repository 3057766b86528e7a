#include "workbench/gui/session/ImportDraft.hpp"

#include "workbench/gui/look/Text.hpp"

#include <algorithm>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ImportDraft";

} // namespace

ImportDraft::ImportDraft(ProjectSession& session, model::Element& target, QString file,
                         ui::ImportedDocument document)
    : session_(&session),
      target_(&target),
      file_(std::move(file)),
      warnings_(std::move(document.warnings)),
      memory_(std::move(document.memory)),
      plan_{.document = std::make_shared<const std::string>(std::move(document.text)),
            .options = {},
            .corrections = {}} {}

void ImportDraft::setOptions(const core::ImportOptions& options) {
    plan_.options = options;
    current_ = false;
}

void ImportDraft::correct(std::size_t position, ui::Control& control,
                          const ui::ControlValue& value) {
    if (session_->isBusy() || control.value() == value || !control.setValue(value))
        return;
    current_ = false;
    const auto key = control.key();
    const auto found = std::ranges::find_if(plan_.corrections, [&](const auto& correction) {
        return correction.position == position && correction.field.key == key;
    });
    if (found != plan_.corrections.end())
        found->field.value = value;
    else
        plan_.corrections.push_back({position, {std::string(key), value}});
}

void ImportDraft::compare() {
    if (session_->isBusy())
        return;
    session_->previewImport(*target_, plan_, [this](ProjectSession::PreviewResult result) {
        if (result)
            take(*std::move(result));
        else
            emit failed(result.error().reason, result.error().stopped);
    });
}

void ImportDraft::take(core::ImportPreview preview) {
    preview_ = std::make_shared<const core::ImportPreview>(std::move(preview));
    current_ = true;
    if (top_ == nullptr && changesTheTop())
        stageTop();
    else
        emit compared();
}

bool ImportDraft::changesTheTop() const {
    return std::ranges::any_of(preview_->changes, [](const core::PreviewedChange& change) {
        return change.position.has_value();
    });
}

// Made beside the window, since the whole document is read for it. What was corrected before there
// were forms is nothing.
void ImportDraft::stageTop() {
    auto top = std::make_shared<std::unique_ptr<core::StagedImport>>();
    session_->runner().run(
        translated(kContext, "Reading what comes in"),
        [top, &project = session_->project(), target = target_, document = plan_.document] {
            *top = std::make_unique<core::StagedImport>(project, *target, *document,
                                                        core::StagedImport::Depth::top);
        },
        [this, top](const std::exception_ptr& failure) {
            top_ = std::move(*top);
            if (failure)
                emit failed(messageOf(failure), false);
            else
                emit compared();
        });
}

model::Element* ImportDraft::newElement(std::size_t position) const {
    return top_ == nullptr ? nullptr : top_->elements()[position].get();
}

void ImportDraft::confirm() {
    drop();
    emit confirmed();
}

void ImportDraft::cancel() {
    drop();
    emit cancelled();
}

} // namespace corvane::workbench::gui
