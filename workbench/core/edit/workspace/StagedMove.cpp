#include "workbench/core/edit/workspace/StagedMove.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/project/DocumentReader.hpp"
#include "workbench/core/project/DocumentWriter.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/workbench/host/Tree.hpp>

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;
using model::Element;

std::string documentOf(const Project& project, std::span<Element* const> elements) {
    utils::io::StringOutputStream stream;
    writeElements(stream, project.plugins(), elements);
    return stream.take();
}

void adoptOne(Element& element, Element& staged, StagedMove::Replaced& replaced) {
    const auto children = element.childElements();
    for (std::size_t i = 0; i != children.size(); ++i)
        adoptOne(*children[i], *staged.childElements()[i], replaced);
    replaced.emplace_back(&element, host::replaceSkillElement(element, staged));
}

} // namespace

StagedMove::StagedMove(Project& project, std::span<Element* const> elements, Element& parent) try
    : project_(&project), elements_(elements.begin(), elements.end()), staging_(parent) {
    decoder::Document document(documentOf(project, elements));
    DocumentReader(project.plugins(), references_).readStaged(document.root().asArray(), staging_);
    // Elements keep their identities when they move: what is to move still stands at its old path.
    references_.resolve([&](std::string_view text) { return project.model().findElement(text); });
    configureAndPublish(staging_.elements());
} catch (const std::runtime_error& error) {
    throw EditError(error.what());
}

StagedMove::Replaced StagedMove::adopt() {
    Replaced replaced;
    for (std::size_t i = 0; i != elements_.size(); ++i)
        adoptOne(*elements_[i], *staging_.elements()[i], replaced);
    project_->model().references().takeOver(references_);
    return replaced;
}

} // namespace corvane::workbench::core
