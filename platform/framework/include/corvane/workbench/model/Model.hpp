#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/model/ReferenceTable.hpp>

#include <cstdint>
#include <string_view>

namespace corvane::workbench::model {

/// The tree of a project.
class CORVANE_EXPORT Model {
public:
    Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;
    ~Model();

    /// The nameless element above those at the top; it has no skill element.
    [[nodiscard]] Element& root() { return root_; }
    [[nodiscard]] const Element& root() const { return root_; }

    /// The element with this path ("/PLC/Data/speed", names escaped); null if there is none.
    [[nodiscard]] Element* findElement(std::string_view path) const;

    /// The references that wait for elements of this tree.
    [[nodiscard]] ReferenceTable& references() { return references_; }

    /// Gives waiting references their elements; true if any was resolved. Those that were are noted
    /// in `found` where there is one.
    bool resolveReferences(ReferenceLog* found = nullptr);

    /// Grows with every change of a name or a place: what was derived from paths is valid as long
    /// as it stays the same.
    [[nodiscard]] std::uint64_t epoch() const { return epoch_; }

private:
    friend class Element;
    std::uint64_t epoch_ = 1;
    ReferenceTable references_;
    Element root_;
};

} // namespace corvane::workbench::model
