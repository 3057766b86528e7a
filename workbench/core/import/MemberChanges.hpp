#pragma once

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

/// A member of an element's document that differs between two of them: what it holds as JSON;
/// nothing where it is not there.
struct MemberChange {
    std::string name;
    std::optional<std::string> before;
    std::optional<std::string> after;
};

/// Compares what elements save: all that makes an element, but for its name and children. It keeps
/// the room for both texts, since an import compares as many as it meets again.
class ElementComparison {
public:
    [[nodiscard]] bool areEqual(const skill::Element& a, const skill::Element& b) {
        return write(a, first_) == write(b, second_);
    }

    /// The members that differ, in the order of `after`; then those that only `before` has.
    [[nodiscard]] std::vector<MemberChange> changes(const skill::Element& before,
                                                    const skill::Element& after);

private:
    using Text = utils::io::StringOutputStream;
    static std::string_view write(const skill::Element& element, Text& text);

    Text first_;
    Text second_;
};

} // namespace corvane::workbench::core
