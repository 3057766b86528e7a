#pragma once

#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/ui/Control.hpp>

#include <vector>

namespace corvane::workbench::ui {

/// A choice of another element of the project.
class CORVANE_EXPORT ReferenceChooser final : public Control {
public:
    /// What can be chosen: the elements below one, at any depth, that are accepted. Stated in two
    /// parts so that one element can be judged without a look at all the others.
    struct Candidates {
        /// The element below which the candidates stand, which is none itself; never null. Asked
        /// at each look: what it throws, as where the element stands in no such place, reaches
        /// whoever looks.
        ControlFunction<model::Element*()> scope;
        ControlFunction<bool(const model::Element&)> accepts;
    };

    ReferenceChooser(std::string_view key, Texts texts, bindings::PropertyHandle property,
                     Accessor<model::ElementReference> accessor, Candidates candidates)
        : Control(key, std::move(texts), property),
          accessor_(std::move(accessor)),
          candidates_(std::move(candidates)) {}

    /// The elements that can be chosen, in the order of the tree, which is looked through at each
    /// call.
    [[nodiscard]] std::vector<model::Element*> candidates() const;

    /// The reference's text in documents; "" for the empty reference.
    [[nodiscard]] ControlValue value() const override;
    /// Takes the path of a candidate, or "" for the empty reference.
    SetResult setValue(const ControlValue& value) override;
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
    [[nodiscard]] StoredValue storedValue() const override { return accessor_.get(); }
    void restoreValue(const StoredValue& value) override;

private:
    [[nodiscard]] model::Element* candidateAt(std::string_view path) const;

    Accessor<model::ElementReference> accessor_;
    Candidates candidates_;
};

} // namespace corvane::workbench::ui
