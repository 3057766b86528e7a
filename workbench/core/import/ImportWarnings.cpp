#include "workbench/core/import/ImportWarnings.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <initializer_list>
#include <string>
#include <string_view>

namespace corvane::workbench::core {

namespace {

using Kind = MergeWarning::Kind;
using utils::string::detail::utf8ToUtf16;

constexpr std::string_view kContext = "corvane::workbench::core::Import";

/// Collects what befell elements, of which the first tells.
class WarningOf {
public:
    explicit WarningOf(Kind kind, std::string_view text) : kind_(kind), text_(text) {}

    void note(const model::Element& element, std::initializer_list<std::string_view> names) {
        if (++count_ == 1) {
            path_ = element.path();
            i18n::fillTranslated(first_, kContext, text_, names);
        }
    }

    void appendTo(std::vector<MergeWarning>& warnings) {
        if (count_ == 0)
            return;
        if (count_ > 1)
            first_ +=
                i18n::fill(i18n::translate(kContext, "; the first of {} such elements"),
                           {utf8ToUtf16(utils::numeric::detail::formatNumber(count_).view())});
        warnings.push_back({kind_, std::move(path_), std::move(first_)});
    }

private:
    Kind kind_;
    std::string_view text_;
    std::size_t count_ = 0;
    std::string path_;
    std::u16string first_;
};

std::u16string textOf(const std::string& element, const std::u16string& text) {
    return element.empty() ? text : utf8ToUtf16(element) + u": " + text;
}

} // namespace

std::vector<MergeWarning> mergeWarnings(const ImportChanges& changes) {
    std::vector<MergeWarning> warnings;
    WarningOf misleading(Kind::misleadingNames,
                         "keeps its name, but the file calls it “{}”, and another one “{}”");
    for (const auto& [element, name] : changes.misleading)
        misleading.note(*element, {name, element->name()});
    misleading.appendTo(warnings);

    WarningOf successors(Kind::successors, "took the place of “{}”, which the file calls “{}”");
    WarningOf taken(Kind::takenNames, "got this name, since “{}” was taken");
    for (const auto& [element, before, after, inDocument] : changes.renamings) {
        if (before != after)
            successors.note(*element, {before, inDocument});
        if (after != inDocument)
            taken.note(*element, {inDocument});
    }
    successors.appendTo(warnings);
    for (const auto& [element, name] : changes.renumbered)
        taken.note(*element, {name});
    taken.appendTo(warnings);
    return warnings;
}

std::u16string textOf(const ui::ImportWarning& warning, std::string_view file) {
    std::string place;
    if (warning.line) {
        place.append(file).append(1, ':').append(std::to_string(*warning.line));
        if (warning.column)
            place.append(1, ':').append(std::to_string(*warning.column));
        place.append(": ");
    }
    return utf8ToUtf16(place) + textOf(warning.element, warning.text);
}

std::u16string textOf(const MergeWarning& warning) { return textOf(warning.element, warning.text); }

} // namespace corvane::workbench::core
