#pragma once

#include "workbench/core/plugins/PluginHost.hpp"

#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/utils/json/Encoder.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <span>

namespace corvane::workbench::core {

/// Writes the project file: the format's number and the elements at the top, one line for each
/// element. What the stream or an element throws passes through, here and below; what was written
/// until then is no document.
void writeProject(utils::io::OutputStream& stream, const PluginHost& plugins,
                  const model::Element& root);

/// Writes one element's document, as it stands in the project file, with a line end behind it.
void writeElement(utils::io::OutputStream& stream, const PluginHost& plugins,
                  const model::Element& element);

/// Writes the documents of several elements, an array that a reader can stage, in one line.
void writeElements(utils::io::OutputStream& stream, const PluginHost& plugins,
                   std::span<const model::Element* const> elements);

/// The members of a project file.
inline constexpr utils::json::encoder::Key kFormatKey{"corvane"};
inline constexpr utils::json::encoder::Key kElementsKey{"elements"};

/// The number of the project file's format; others are refused.
inline constexpr std::string_view kFormatNumber = "1";

} // namespace corvane::workbench::core
