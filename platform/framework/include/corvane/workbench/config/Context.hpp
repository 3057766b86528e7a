#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/config/UnknownParameterError.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <string_view>

namespace corvane::workbench::config {

/// What an element's `load` may ask of the document that it is part of.
class CORVANE_EXPORT Context {
public:
    explicit Context(model::ReferenceTable& references) : references_(&references) {}

    /// The reference that `text` stands for in a document. The element that it names may come later
    /// in the document, or never: then the reference keeps the text.
    [[nodiscard]] model::ElementReference reference(std::string_view text);

private:
    model::ReferenceTable* references_;
};

} // namespace corvane::workbench::config
