#pragma once

#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// An S7 compatible PLC that is reached over the network. It holds data blocks, structures, items
/// and commands.
class Plc final : public skill::Element {
public:
    class Binding;

    /// The translation context of its form and messages.
    static constexpr std::string_view kTextContext = "corvane::workbench::plugins::s7Driver::Plc";

    std::string address; // network address, UTF-8
    std::uint8_t rack = 0;
    std::uint8_t slot = 0;

    void configureProperties(bindings::PropertyConfigurationContext& context) override;
    void load(utils::json::decoder::Object& members, config::Context& context) override;
    void save(utils::json::encoder::Object& members) const override;
    bool forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const override;
    bool forEachEvent(function_ref<bool(const process::Event&)> visit) const override;
    bool forEachTask(function_ref<bool(const process::Task&)> visit) const override;
    std::unique_ptr<skill::Binding> createBinding() override; // forms/PlcBinding.cpp
    [[nodiscard]] data::MemoryUse memoryUse() const override { return data::MemoryDevice{}; }

    /// What is to be said of an address that is valid only since a document must not be without
    /// one; empty for any other.
    [[nodiscard]] std::u16string addressRemark() const;

private:
    bindings::Validation validateAddress();
};

} // namespace corvane::workbench::plugins::s7Driver
