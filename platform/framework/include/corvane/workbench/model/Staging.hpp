#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <memory>
#include <string_view>
#include <vector>

namespace corvane::workbench::model {

/// Elements that are about to be imported below an existing one: they see it as their parent, and
/// through it everything above, while it does not know them yet. Dropping the staging drops them.
class CORVANE_EXPORT Staging {
public:
    /// `target` must outlive the staging.
    explicit Staging(Element& target);
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;
    ~Staging();

    [[nodiscard]] Element& target() const { return *target_; }

    /// Appends an element under `name`, or under the next free name among what is staged. Throws
    /// std::runtime_error where something would stand deeper than Element::kMaxDepth.
    Element& append(std::unique_ptr<Element> element, std::string_view name);

    [[nodiscard]] std::span<const std::unique_ptr<Element>> elements() const;
    [[nodiscard]] Element* find(std::string_view name) const { return holder_.findChild(name); }

    /// The staged elements; the staging is empty afterwards.
    [[nodiscard]] std::vector<std::unique_ptr<Element>> release();

    /// The children of a staged element, which has none afterwards.
    [[nodiscard]] static std::vector<std::unique_ptr<Element>> releaseChildren(Element& element);

    /// Calls a released element by a name that it may get, so that it can be asked for its identity
    /// under that name.
    static void tryName(Element& released, std::string_view name);

    // Which existing elements have met the staged element that replaces them, while they are
    // paired.
    [[nodiscard]] static bool isPaired(const Element& existing) { return existing.paired_; }
    static void setPaired(Element& existing, bool paired) { existing.paired_ = paired; }

private:
    Element* target_;
    Element holder_;
};

} // namespace corvane::workbench::model
