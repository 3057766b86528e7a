#pragma once

#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/skill/Element.hpp>

namespace corvane::workbench::plugins::s7Driver {

/// Groups items and other structures. It has no fields of its own.
class Struct final : public skill::Element {
public:
    class Binding;

    std::unique_ptr<skill::Binding> createBinding() override; // forms/EmptyBindings.cpp

    /// Made from the name: a structure that is renamed is another one.
    [[nodiscard]] std::optional<utils::core::Uuid> importId() const override;
};

} // namespace corvane::workbench::plugins::s7Driver
