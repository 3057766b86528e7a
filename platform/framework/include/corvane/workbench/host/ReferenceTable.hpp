#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane::workbench::host {

class ReferenceLog;

/// The references of a document or a project that still wait for their elements, by their texts.
///
/// All references with the same text share one data object, so a reference costs one look-up, and
/// resolving costs one step per distinct text however many elements refer to it.
class CORVANE_EXPORT ReferenceTable final : public model::ReferenceKeeper {
public:
    ReferenceTable() = default;
    ReferenceTable(const ReferenceTable&) = delete;
    ReferenceTable& operator=(const ReferenceTable&) = delete;
    /// References that are left keep their texts and are not waiting any more.
    ~ReferenceTable() override;

    /// The reference with this text; the empty reference for an empty text.
    [[nodiscard]] model::ElementReference reference(std::string_view text);

    /// Gives each waiting reference its element where `find` has one for its text; true if any
    /// reference was resolved. Those that were are noted in `log` where there is one.
    bool resolve(function_ref<model::Element*(std::string_view text)> find,
                 ReferenceLog* log = nullptr);

    /// Takes over what waits in another table.
    void takeOver(ReferenceTable& other);

    /// How many distinct references wait.
    [[nodiscard]] std::size_t size() const { return waiting_.size(); }

    /// Lets a reference wait that has lost its element; it waits nowhere yet.
    void add(model::ElementReferenceData& data);

    void forget(model::ElementReferenceData& data) override;

private:
    // Keys are views of the data objects' own texts. A text can wait twice, once removed from the
    // tree and once read from a document.
    std::unordered_multimap<std::string_view, model::ElementReferenceData*> waiting_;
    model::ElementReferenceData* last_ =
        nullptr; // neighbours in a document tend to refer to the same
};

} // namespace corvane::workbench::host
