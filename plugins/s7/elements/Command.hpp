#pragma once

#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/skill/Element.hpp>

namespace corvane::workbench::plugins::s7Driver {

/// A command of a PLC, through which items are read and written. It has no fields of its own.
class Command final : public skill::Element {
public:
    class Binding;

    bool forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const override;
    bool forEachEvent(function_ref<bool(const process::Event&)> visit) const override;
    bool forEachTask(function_ref<bool(const process::Task&)> visit) const override;
    std::unique_ptr<skill::Binding> createBinding() override; // forms/EmptyBindings.cpp

    /// The nil UUID: every command is the same to an import, which brings a command only to have
    /// one at all.
    [[nodiscard]] std::optional<utils::core::Uuid> importId() const override;
};

} // namespace corvane::workbench::plugins::s7Driver
