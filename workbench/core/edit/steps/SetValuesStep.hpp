#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Fields.hpp"

#include <span>
#include <vector>

namespace corvane::workbench::core {

/// Fields of elements, set through their forms. What is kept is what the fields stored, not what
/// was typed, so that undo and redo cannot be refused.
class SetValuesStep final : public Step {
public:
    /// The values shall be set on each of the elements; there is at least one of either.
    SetValuesStep(std::span<model::Element* const> elements, std::span<const FieldValue> values);

    /// Sets all of them or, where a field refuses its own, none. There is nothing to do where the
    /// fields have the values already.
    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    struct Change {
        model::Element* element;
        std::size_t control; // its index in the form
        ui::StoredValue before;
        ui::StoredValue after;
    };

    /// Sets the values on one of `elements` elements, which has this form.
    void setOne(model::Element& element, const OpenForm& form, std::size_t elements,
                std::span<const FieldValue> values);
    void tellAll(Workspace& workspace) const;

    std::vector<model::Element*> elements_; // until the step is performed
    std::vector<FieldValue> values_;        // likewise
    std::vector<Change> changes_;           // those of one element stand together
};

} // namespace corvane::workbench::core
