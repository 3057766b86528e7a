#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <cstddef>

namespace corvane::workbench::ui {

/// A text under edit: cursor and selection anchor count UTF-16 code units from its start.
struct TextEdit {
    std::u16string text;
    std::size_t cursor = 0;
    std::size_t anchor = 0;
};

/// Whether `text` may be entered where one line is asked for: it has no control characters. The
/// reason of a refusal begins with `subject`, a translated noun such as "the value".
[[nodiscard]] CORVANE_EXPORT SetResult requireOneLine(std::u16string_view text,
                                                      std::u16string_view subject);

/// A single-line text field.
///
///     host_("host", texts, hostProperty, {.get = ..., .set = ...},
///           {.placeholder = translate(kContext, "Name or address"), .fixUp = withoutBlanks})
///
/// What a text means is for the property's validator to say, which looks at every value, from
/// wherever it came. The fix-up is for what a user types only: it makes what was meant of what was
/// typed, such as upper case of lower case.
class CORVANE_EXPORT TextField final : public Control {
public:
    struct Settings {
        std::u16string placeholder; ///< shown in the empty field; translated, never stored
        int minimumWidth = 0;       // pixels; 0 leaves it to the layout
        int preferredWidth = 0;     // pixels; 0 leaves it to the layout
        /// Corrects what a user typed, after each edit; may be empty. It leaves cursor and anchor
        /// within the text.
        ControlFunction<void(TextEdit&)> fixUp;
        /// What a user should know of a value although it is valid, translated; an empty text where
        /// there is nothing to say. Asked whenever the field is shown, and for every element of a
        /// project that is checked: it looks at the value and no further. May be empty.
        ///
        ///     .remark = [this] { return pointer()->isSample() ? translate(kContext, "...") : u"";
        ///     }
        ControlFunction<std::u16string()> remark;
    };

    TextField(std::string_view key, Texts texts, bindings::PropertyHandle property,
              Accessor<std::u16string> accessor, Settings settings)
        : Control(key, std::move(texts), property),
          accessor_(std::move(accessor)),
          settings_(std::move(settings)) {}

    /// How the field is drawn and what corrects its input; the same as long as the control lives.
    [[nodiscard]] const Settings& settings() const { return settings_; }

    [[nodiscard]] ControlValue value() const override { return accessor_.get(); }

    /// Takes a text, corrected by the fix-up as if it had been typed. One with control characters
    /// is refused, unless it is what the field holds: a document may have brought it.
    SetResult setValue(const ControlValue& value) override;

    /// What a text becomes when it is entered, with the cursor and the anchor moved along: for
    /// editors that show the correction while the user types. Such an editor sets what was typed;
    /// `setValue` corrects it in the same way.
    [[nodiscard]] TextEdit corrected(TextEdit edit) const;

    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
    [[nodiscard]] StoredValue storedValue() const override { return accessor_.get(); }
    void restoreValue(const StoredValue& value) override;

private:
    Accessor<std::u16string> accessor_;
    Settings settings_;
};

} // namespace corvane::workbench::ui
