#include "workbench/core/project/DocumentWriter.hpp"

#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/workbench/config/DocumentKeys.hpp>

namespace corvane::workbench::core {

namespace {

namespace encoder = utils::json::encoder;

// As deep as elements nest, which the tree bounds.
void write(encoder::Object document, const PluginHost& plugins, const model::Element& element) {
    auto members =
        document.addObject(encoder::Key::of(plugins.entryOf(element.elementClass()).documentKey));
    members.addStringView(config::kNameKey, element.name());
    element.getSkillElement()->save(members);
    const auto children = element.childElements();
    if (children.empty())
        return;
    auto entries = members.addArray(config::kChildrenKey);
    for (std::size_t index = 0; index != children.size(); ++index) {
        fetchAhead(children, index);
        write(entries.addObject(), plugins, *children[index]);
    }
}

} // namespace

void writeProject(utils::io::OutputStream& stream, const PluginHost& plugins,
                  const model::Element& root) {
    encoder::Document document(stream, encoder::Format::lines);
    {
        auto project = document.object();
        project.addPreformattedNumber(kFormatKey, kFormatNumber);
        auto elements = project.addArray(kElementsKey);
        for (const auto& element : root.childElements())
            write(elements.addObject(), plugins, *element);
    }
    stream.put('\n');
}

void writeElement(utils::io::OutputStream& stream, const PluginHost& plugins,
                  const model::Element& element) {
    encoder::Document document(stream, encoder::Format::lines);
    write(document.object(), plugins, element);
    stream.put('\n');
}

void writeElements(utils::io::OutputStream& stream, const PluginHost& plugins,
                   std::span<const model::Element* const> elements) {
    encoder::Document document(stream, encoder::Format::compact);
    auto array = document.array();
    for (const auto* const element : elements)
        write(array.addObject(), plugins, *element);
}

} // namespace corvane::workbench::core
