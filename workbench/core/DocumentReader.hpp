#pragma once

#include "workbench/core/PluginHost.hpp"

#include <corvane/utils/json/Decoder.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/model/ReferenceTable.hpp>
#include <corvane/workbench/model/Staging.hpp>

namespace corvane::workbench::core {

/// Makes elements of element documents: each is created, attached to its parent and loaded, then
/// its children in document order. Configuring and publishing come when the whole document stands.
class DocumentReader {
public:
    /// References of the document wait in `references` until its owner resolves them.
    DocumentReader(const PluginHost& plugins, model::ReferenceTable& references)
        : plugins_(&plugins), context_(references) {}

    /// Reads an array of element documents to the top of a project. Throws DocumentError or
    /// json::decoder::DecodeError; what was read until then stays.
    void readProject(utils::json::decoder::Array& documents, model::Element& root);

    /// Reads an array of element documents below the staging's target; throws likewise.
    void readStaged(utils::json::decoder::Array& documents, model::Staging& staging);

private:
    template <class Accepts, class Append>
    void readDocument(utils::json::decoder::Value document, const Accepts& accepts,
                      const Append& append);
    void readChildren(utils::json::decoder::Object& members, model::Element& parent);
    const LoadedClass& classOf(std::string_view documentKey);

    const PluginHost* plugins_;
    config::Context context_;
    const LoadedClass* lastClass_ = nullptr; // neighbours tend to be of one class
};

} // namespace corvane::workbench::core
