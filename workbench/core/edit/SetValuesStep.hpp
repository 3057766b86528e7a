#pragma once

#include "workbench/core/edit/Step.hpp"

#include <memory>
#include <span>
#include <vector>

namespace corvane::workbench::core {

/// Fields of elements, set through their forms.
class SetValuesStep final : public Step {
public:
    /// Sets the values on each of the elements, all or none, and returns the step, or null where
    /// the fields had the values already. Throws EditError.
    [[nodiscard]] static std::unique_ptr<SetValuesStep>
    make(Workspace& workspace, std::span<model::Element* const> elements,
         std::span<const FieldValue> values);

    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    struct Change {
        model::Element* element;
        std::size_t control; // its index in the form
        ui::StoredValue before;
        ui::StoredValue after;
    };

    explicit SetValuesStep(std::u16string text) : Step(std::move(text)) {}
    void setOne(model::Element& element, std::span<const FieldValue> values);
    void tellAll(Workspace& workspace) const;

    std::vector<Change> changes_; // those of one element stand together
};

} // namespace corvane::workbench::core
