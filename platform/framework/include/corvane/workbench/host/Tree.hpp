#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What changes the tree of elements: the host's operations, which plug-ins do not see. Each keeps
/// the references and the model's epoch in step, and none runs code of a plug-in apart from the
/// destructors of what it is given.
namespace corvane::workbench::host {

/// Appends `child` under `name`, or under the next free name made from it ("Unnamed" where it is
/// empty). Throws std::runtime_error where it, or something below it, would stand deeper than
/// Element::kMaxDepth.
CORVANE_EXPORT model::Element&
appendChild(model::Element& parent, std::unique_ptr<model::Element> child, std::string_view name);

/// Takes a child out of the tree; references to it and to what is below it keep their paths and
/// wait for an element that stands there again.
[[nodiscard]] CORVANE_EXPORT std::unique_ptr<model::Element>
removeChild(model::Element& parent, const model::Element& child);

/// Takes the children at `positions`, counted from 0 and ascending, out of the tree, in one pass.
/// References to them go on following them: either they come back, or the references were let go
/// before.
[[nodiscard]] CORVANE_EXPORT std::vector<std::unique_ptr<model::Element>>
takeChildren(model::Element& parent, std::span<const std::size_t> positions);

/// Puts elements that stand nowhere among the children, in one pass, so that they stand at
/// `positions`, which ascend, when all are in. Each keeps its name or gets the next free one made
/// from it. Nothing below them may come to stand deeper than Element::kMaxDepth, which is not
/// checked.
CORVANE_EXPORT void putChildren(model::Element& parent,
                                std::vector<std::unique_ptr<model::Element>> added,
                                std::span<const std::size_t> positions);

/// Whether any reference refers to the element.
[[nodiscard]] CORVANE_EXPORT bool isReferenced(const model::Element& element);

/// Gives the element another name, made unique among its siblings if it has any, and returns it.
CORVANE_EXPORT const std::string& rename(model::Element& element, std::string_view name);

/// A name that an element shall get.
struct NewName {
    model::Element* element;
    std::string name;
};

/// As `rename` of each element, all at once: siblings that stand next to each other in the list
/// give up their names before the first takes its new one, so that they may exchange them. The
/// elements stand below others, each is named once. What is thrown leaves the names of one parent's
/// children either all old or all new.
CORVANE_EXPORT void renameAll(std::span<const NewName> names);

/// Lets the skill element of `successor` take the place of the element's own, which is returned;
/// references to `successor` refer to the element from now on.
[[nodiscard]] CORVANE_EXPORT std::unique_ptr<skill::Element>
replaceSkillElement(model::Element& element, model::Element& successor);

/// Exchanges the skill element for another one, made by the same class. Neither may be null.
CORVANE_EXPORT void swapSkillElement(model::Element& element,
                                     std::unique_ptr<skill::Element>& other);

} // namespace corvane::workbench::host
