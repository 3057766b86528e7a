#pragma once

#include <corvane/workbench/ui/Control.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <filesystem>

namespace corvane::workbench::ui {

/// A button that lets the user choose a file and makes an import document of it. The host imports
/// the document below the element of the form.
class CORVANE_EXPORT PushButton final : public Control {
public:
    /// Makes a document of a file, or says why not; changes nothing. It may take its time: in the
    /// desktop it runs beside the window, on a thread that owns the model meanwhile. What it throws
    /// is told to the user like a failure that has no place and no hint.
    using Action = ControlFunction<std::expected<ImportedDocument, ImportFailure>(
        const std::filesystem::path&)>;

    /// `extension` begins with a dot and is in lower case: the host compares it with what a file's
    /// name has from its last dot on, in the lower case of ASCII.
    PushButton(std::string_view key, Texts texts, std::string extension, Action action)
        : Control(key, std::move(texts), std::nullopt),
          extension_(std::move(extension)),
          action_(std::move(action)) {}

    /// The extension of the files that the button offers.
    [[nodiscard]] const std::string& extension() const { return extension_; }

    /// Runs the action to its end, on the calling thread, which owns the model.
    [[nodiscard]] std::expected<ImportedDocument, ImportFailure>
    press(const std::filesystem::path& file) {
        return action_(file);
    }

    [[nodiscard]] ControlValue value() const override { return std::monostate(); }
    /// Refuses every value.
    SetResult setValue(const ControlValue& value) override;
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

private:
    std::string extension_;
    Action action_;
};

} // namespace corvane::workbench::ui
