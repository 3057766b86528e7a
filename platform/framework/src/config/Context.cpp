#include <corvane/workbench/config/Context.hpp>

#include <corvane/workbench/host/ReferenceTable.hpp>

namespace corvane::workbench::config {

model::ElementReference Context::reference(std::string_view text) {
    return references_->reference(text);
}

} // namespace corvane::workbench::config
