#pragma once

#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/project/ElementWalk.hpp"

namespace corvane::workbench::cli {

/// Prints elements and what is below them, a line each, indented by their depth: the name, the
/// class's short name, and what the element's form says of it: choices, the derived texts that it
/// shows or else the texts that a user entered, and numbers with their labels.
void printTree(TextOutput& output, core::ElementList elements);

/// As `printTree`, for one element of a project.
void printTree(TextOutput& output, const model::Element& element);

} // namespace corvane::workbench::cli
