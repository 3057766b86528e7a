#pragma once

#include "workbench/core/plugins/PluginHost.hpp"

#include <corvane/utils/json/Decoder.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/host/ReferenceTable.hpp>
#include <corvane/workbench/host/Staging.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <stdexcept>

namespace corvane::workbench::core {

/// A document cannot be loaded. The text names the element, where the fault belongs to one, and the
/// member and the place in the text, where they are known.
class DocumentError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Makes elements of element documents: each is created, attached to its parent and loaded, then
/// its children in document order. Configuring and publishing come when the whole document stands.
class DocumentReader {
public:
    /// References of the document wait in `references` until its owner resolves them. What stands
    /// below the elements at the top is left out on demand.
    DocumentReader(const PluginHost& plugins, host::ReferenceTable& references,
                   bool readsChildren = true)
        : plugins_(&plugins), context_(references), readsChildren_(readsChildren) {}

    /// Reads an array of element documents to the top of a project. Throws DocumentError or
    /// json::decoder::DecodeError; what was read until then stays.
    void readProject(utils::json::decoder::Array documents, model::Element& root);

    /// Reads an array of element documents below the staging's target; throws likewise. Here names
    /// may be empty, as variables may be that a file declares: such an element is called "Unnamed".
    void readStaged(utils::json::decoder::Array documents, host::Staging& staging);

private:
    template <class Append>
    void readDocument(utils::json::decoder::Value document, const model::Element& parent,
                      const Append& append);
    void readBelow(utils::json::decoder::Array documents, model::Element& parent);
    const LoadedClass& classOf(std::string_view documentKey);

    const PluginHost* plugins_;
    config::Context context_;
    bool mayBeNameless_ = false;
    bool readsChildren_;
    const LoadedClass* lastClass_ = nullptr; // neighbours tend to be of one class
};

} // namespace corvane::workbench::core
