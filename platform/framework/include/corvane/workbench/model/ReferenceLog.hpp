#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::model {

class Model;

/// References that a change of the tree takes from their elements, or gives them, noted one by one
/// so that the change can be taken back and made again. The log keeps the references alive, even
/// where nothing else holds them any more.
class CORVANE_EXPORT ReferenceLog {
public:
    /// Notes every reference to `element` and to what is below it, with its present text.
    void collect(Element& element);

    /// Notes a reference that is about to be given to `element`.
    void add(const ElementReference& reference, Element& element);

    /// Takes the references from their elements: they keep the noted texts and wait in `model`.
    void detach(Model& model) const;

    /// Gives the references their noted elements.
    void attach() const;

    [[nodiscard]] bool empty() const { return entries_.empty(); }
    void clear() { entries_.clear(); }

    /// The elements that the references noted refer to, each once, ordered by address.
    [[nodiscard]] std::vector<const Element*> elements() const;

private:
    struct Entry {
        ElementReference reference;
        Element* element;
        std::string text;
    };
    std::vector<Entry> entries_;
};

} // namespace corvane::workbench::model
