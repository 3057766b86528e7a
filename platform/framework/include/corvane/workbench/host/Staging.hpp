#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <memory>
#include <string_view>
#include <vector>

namespace corvane::workbench::host {

/// Elements that are about to be imported below an existing one: they see it as their parent, and
/// through it everything above, while it does not know them yet. Dropping the staging drops them.
class CORVANE_EXPORT Staging {
public:
    /// `target` must outlive the staging.
    explicit Staging(model::Element& target);
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;
    ~Staging();

    [[nodiscard]] model::Element& target() const { return *target_; }

    /// Appends an element under `name`, or under the next free name among what is staged. Throws
    /// std::runtime_error where something would stand deeper than Element::kMaxDepth.
    model::Element& append(std::unique_ptr<model::Element> element, std::string_view name);

    [[nodiscard]] std::span<const std::unique_ptr<model::Element>> elements() const;
    [[nodiscard]] model::Element* find(std::string_view name) const {
        return holder_.findChild(name);
    }

    /// The staged elements; the staging is empty afterwards.
    [[nodiscard]] std::vector<std::unique_ptr<model::Element>> release();

    /// The children of a staged element, which has none afterwards.
    [[nodiscard]] static std::vector<std::unique_ptr<model::Element>>
    releaseChildren(model::Element& element);

    /// Calls a released element by a name that it may get, so that it can be asked for its identity
    /// under that name.
    static void tryName(model::Element& released, std::string_view name);

    /// Whether an existing element has met the staged one that replaces it. A note that the merge
    /// keeps while it runs; it is false before and afterwards.
    [[nodiscard]] static bool isPaired(const model::Element& existing);
    static void setPaired(model::Element& existing, bool paired);

private:
    model::Element* target_;
    model::Element holder_;
};

} // namespace corvane::workbench::host
