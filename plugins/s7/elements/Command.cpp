#include "elements/Command.hpp"

#include "elements/Members.hpp"

namespace corvane::workbench::plugins::s7Driver {

bool Command::forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const {
    return visit(model::Attribute::kUpdateTime) || visit(model::Attribute::kQuality) ||
           visit(kReadError) || visit(model::Attribute::kWriteTime) || visit(kWriteError);
}

bool Command::forEachEvent(function_ref<bool(const process::Event&)> visit) const {
    return visit(kReadEvent) || visit(kWrittenEvent) || visit(kWriteFailedEvent);
}

bool Command::forEachTask(function_ref<bool(const process::Task&)> visit) const {
    return visit(kExecuteTask);
}

std::optional<utils::core::Uuid> Command::importId() const { return utils::core::Uuid(); }

} // namespace corvane::workbench::plugins::s7Driver
