#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/config/UnknownParameterError.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <string_view>

namespace corvane::workbench::host {
class ReferenceTable;
}

namespace corvane::workbench::config {

/// What an element's `load` may ask of the document that it is part of. It lives for one load; an
/// element keeps what it was given and not the context.
///
///     if (member->name.view() == "command")
///         command = context.reference(member->value.asString());
class CORVANE_EXPORT Context {
public:
    /// `references` is the document's table and must outlive the context.
    explicit Context(host::ReferenceTable& references) : references_(&references) {}

    /// The reference that `text` stands for in a document. The element that it names may come later
    /// in the document, or never: then the reference keeps the text. An empty text gives the empty
    /// reference; no text is refused.
    [[nodiscard]] model::ElementReference reference(std::string_view text);

private:
    host::ReferenceTable* references_;
};

} // namespace corvane::workbench::config
