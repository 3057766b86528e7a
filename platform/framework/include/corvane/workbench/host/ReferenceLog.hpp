#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::host {

class Model;

/// References that a change of the tree takes from their elements, or gives them, noted one by one
/// so that the change can be taken back and made again. The log keeps the references alive, even
/// where nothing else holds them any more.
class CORVANE_EXPORT ReferenceLog {
public:
    /// Notes every reference to `element` and to what is below it, with its present text.
    void collect(model::Element& element);

    /// Notes a reference that is about to be given to `element`.
    void add(const model::ElementReference& reference, model::Element& element);

    /// Takes the references from their elements: they keep the noted texts and wait in `model`. One
    /// that has been given to another element since is left alone.
    void detach(Model& model) const;

    /// Gives the references their noted elements, wherever they are or wait now. The elements must
    /// still exist.
    void attach() const;

    [[nodiscard]] bool empty() const { return entries_.empty(); }
    void clear() { entries_.clear(); }

    /// The elements that the references noted refer to, each once, ordered by address.
    [[nodiscard]] std::vector<const model::Element*> elements() const;

private:
    struct Entry {
        model::ElementReference reference;
        model::Element* element;
        std::string text;
    };
    std::vector<Entry> entries_;
};

} // namespace corvane::workbench::host
