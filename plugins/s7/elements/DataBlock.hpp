#pragma once

#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <cstdint>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// A data block of a PLC. It hands its DB number down to every item below it, through structures of
/// any depth, so that items state their addresses relative to the block.
class DataBlock final : public skill::Element {
public:
    class Binding;

    /// The translation context of its form and messages.
    static constexpr std::string_view kTextContext =
        "corvane::workbench::plugins::s7Driver::DataBlock";

    std::uint16_t dbNumber = 1;
    /// The number last handed down. No block has number 0 when it is new, so the first load hands
    /// its number down in any case.
    std::uint16_t propagatedDbNumber = 0;
    PropertyController::Subscription dbNumberSubscription;

    void configureProperties(bindings::PropertyConfigurationContext& context) override;
    void load(utils::json::decoder::Object& members, config::Context& context) override;
    void save(utils::json::encoder::Object& members) const override;
    std::unique_ptr<skill::Binding> createBinding() override; // forms/DataBlockBinding.cpp

    /// Made from the DB number: data blocks are the same where their numbers are, whatever their
    /// names.
    [[nodiscard]] std::optional<utils::core::Uuid> importId() const override;
    /// A memory of its own, known by its number: "DB5".
    [[nodiscard]] data::MemoryUse memoryUse() const override;

    /// How the PLC calls the block, which begins the addresses of what is in it.
    [[nodiscard]] Summary summary() const override;

private:
    void handDownDbNumber();
};

} // namespace corvane::workbench::plugins::s7Driver
