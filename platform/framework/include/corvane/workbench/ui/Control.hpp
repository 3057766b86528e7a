#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/thread/Owner.hpp>
#include <corvane/workbench/bindings/PropertyHandle.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <concepts>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

/// The forms model: what a form shows, without a word of how it is drawn. Command line and desktop
/// show the same controls and know no more of them than what stands here.
namespace corvane::workbench::ui {

class TextField;
class SpinBoxControl;
class InfoField;
class ChoiceList;
class FlagChoice;
class ReferenceChooser;
class PushButton;

/// The texts of a control, translated.
struct Texts {
    std::u16string label;
    std::u16string description; // one line, a tooltip as a rule
    std::u16string help;        // longer; may be empty
};

/// The value of a control: nothing, a boolean, an unsigned number or a text.
using ControlValue = std::variant<std::monostate, bool, std::uint64_t, std::u16string>;

/// What the field behind a control holds, to be put back as it was: a reference is one itself and
/// not its text, which may come to stand for another element.
using StoredValue =
    std::variant<std::monostate, bool, std::uint64_t, std::u16string, model::ElementReference>;

/// Success, or the translated reason why a value was refused.
using SetResult = std::expected<void, std::u16string>;

/// A function that a plug-in gives to a control: a call across the boundary, so for the owner of
/// the model alone. An empty one may only be asked whether it is there; calling it throws
/// std::bad_function_call.
template <class Signature>
class ControlFunction;

template <class Result, class... Arguments>
class ControlFunction<Result(Arguments...)> {
public:
    ControlFunction() = default;
    template <class Callable>
        requires(!std::same_as<std::remove_cvref_t<Callable>, ControlFunction> &&
                 std::is_invocable_r_v<Result, Callable&, Arguments...>)
    ControlFunction(Callable&& callable) : function_(std::forward<Callable>(callable)) {}

    [[nodiscard]] explicit operator bool() const { return function_ != nullptr; }

    Result operator()(Arguments... arguments) const {
        utils::thread::expectOwner();
        return function_(std::forward<Arguments>(arguments)...);
    }

private:
    std::function<Result(Arguments...)> function_;
};

/// Reads and writes the field behind a control. The setter stores and publishes only a value that
/// differs from the current one, as `PropertyController::assign` does:
///
///     {.get = [this] { return pointer()->unit; },
///      .set = [this](std::u16string unit) { pointer()->assign(pointer()->unit, unit); }}
///
/// Both go through the binding's pointer and not to a field that they have kept the address of: a
/// binding may move to another element.
template <class T>
struct Accessor {
    ControlFunction<T()> get;
    ControlFunction<void(T)> set;
};

/// Dispatch over the kinds of controls. There is no operation for "any other": who draws or prints
/// forms says for each kind what he does, and the compiler finds who does not know a new one.
class CORVANE_EXPORT ControlVisitor {
public:
    virtual ~ControlVisitor();
    virtual void visit(TextField& control) = 0;
    virtual void visit(SpinBoxControl& control) = 0;
    virtual void visit(InfoField& control) = 0;
    virtual void visit(ChoiceList& control) = 0;
    virtual void visit(FlagChoice& control) = 0;
    virtual void visit(ReferenceChooser& control) = 0;
    virtual void visit(PushButton& control) = 0;

protected:
    ControlVisitor() = default;
    ControlVisitor(const ControlVisitor&) = default;
    ControlVisitor& operator=(const ControlVisitor&) = default;
};

/// One control of a form. Controls belong to the element's binding.
class CORVANE_EXPORT Control {
public:
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    /// Names the control among those of its form: the same in every language and in each form of
    /// the class, and no two controls of a form have the same.
    [[nodiscard]] std::string_view key() const { return key_; }

    /// What the user reads, of which nothing need be unique.
    [[nodiscard]] const Texts& texts() const { return texts_; }

    /// The property that the control shows; empty for a control without one.
    [[nodiscard]] const std::optional<bindings::PropertyHandle>& property() const {
        return property_;
    }
    [[nodiscard]] bool isVisible() const { return !property_ || property_->isVisible(); }

    /// The property's error text; null where there is none.
    [[nodiscard]] const std::u16string* error() const {
        return property_ ? property_->error() : nullptr;
    }

    /// The current value, read from the element at each call.
    [[nodiscard]] virtual ControlValue value() const = 0;

    /// Sets the value as a user's input: what the editor does not offer is refused, and nothing
    /// changes.
    virtual SetResult setValue(const ControlValue& value) = 0;

    virtual void accept(ControlVisitor& visitor) = 0;

    /// Shows the same property of another element of the same class from now on: for a binding that
    /// moves there, and has its accessors read that element.
    void moveTo(bindings::PropertyController& element) {
        if (property_)
            property_ = property_->of(element);
    }

    /// What the field holds now; nothing where the control has no field to be set.
    [[nodiscard]] virtual StoredValue storedValue() const { return std::monostate(); }

    /// Puts back what a control of this kind and element gave as its stored value, without the
    /// editor's limits and corrections: what a document brought in need not be what a user could
    /// enter. Publishes as `setValue` does.
    virtual void restoreValue(const StoredValue& value);

protected:
    /// `key` is not copied: it is a literal as a rule.
    Control(std::string_view key, Texts texts, std::optional<bindings::PropertyHandle> property)
        : key_(key), texts_(std::move(texts)), property_(property) {}

    /// The refusal of a value of a type that the control does not take.
    [[nodiscard]] static SetResult refuseType();

private:
    std::string_view key_;
    Texts texts_;
    std::optional<bindings::PropertyHandle> property_;
};

} // namespace corvane::workbench::ui
