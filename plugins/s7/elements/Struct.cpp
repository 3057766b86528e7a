#include "elements/Struct.hpp"

#include "elements/ImportNamespaces.hpp"

namespace corvane::workbench::plugins::s7Driver {

std::optional<utils::core::Uuid> Struct::importId() const {
    return utils::core::Uuid::createVersion5(kElementNamespace, name());
}

} // namespace corvane::workbench::plugins::s7Driver
