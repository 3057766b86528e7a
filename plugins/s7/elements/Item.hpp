#pragma once

#include <corvane/workbench/model/ElementReference.hpp>
#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

class Plc;

/// One value in a PLC's memory.
///
/// An item below a data block is a member of it: its address is relative to the block, whose number
/// it is handed down. Any other item is a standalone one, with an address in another memory area.
class Item final : public skill::Element {
public:
    class Binding;

    /// The translation context of its form and messages.
    static constexpr std::string_view kTextContext = "corvane::workbench::plugins::s7Driver::Item";

    std::string dataType = "Byte";  // a name of kDataTypes; any other text is kept as it is
    std::uint64_t stringSize = 254; // characters; of String and WString only
    std::string address;
    std::u16string effectiveAddress;       // as the PLC sees it; of members only
    std::optional<std::uint16_t> dbNumber; // of the block, engaged in members only
    bool dbNumberResolved = false;         // dbNumber has been looked up
    bool writable = false;
    model::ElementReference command; // what reads and writes the item

    void configureProperties(bindings::PropertyConfigurationContext& context) override;
    void load(utils::json::decoder::Object& members, config::Context& context) override;
    void save(utils::json::encoder::Object& members) const override;
    bool forEachAttribute(function_ref<bool(const model::Attribute&)> visit) const override;
    bool forEachEvent(function_ref<bool(const process::Event&)> visit) const override;
    std::unique_ptr<skill::Binding> createBinding() override; // forms/ItemBinding.cpp

    /// Made from the effective address: members of a block are the same where their addresses are,
    /// whatever their names. All standalone items have one identity, that of the empty text.
    [[nodiscard]] std::optional<utils::core::Uuid> importId() const override;
    [[nodiscard]] bool hasImportIdOf(const skill::Element& other) const override;
    /// Takes over the existing item's command.
    void importMerge(const skill::Element& existing) override;
    [[nodiscard]] bool preserveExistingNameOnImport() const override { return true; }
    /// Where its address says, as long as its data type does: in the block that it is a member of,
    /// or in the area that a standalone item names. A member that names another block than its own
    /// in its address lies nowhere.
    [[nodiscard]] data::MemoryUse memoryUse() const override; // ItemMemory.cpp

    /// The data type, with its size where it has one, and the effective address or, of a standalone
    /// item, the address.
    [[nodiscard]] Summary summary() const override;

    /// The nearest PLC above. Throws std::logic_error when there is none.
    [[nodiscard]] Plc& plc() const;

    /// Looks for the data block above, unless that has been done. Where there is none the next call
    /// looks again.
    void resolveDbNumber();

    /// Called by the data block above when its number changes, or is known first.
    void setDataBlockNumber(std::uint16_t number);

    /// The text in the user's language.
    [[nodiscard]] static std::u16string translated(std::string_view text);

private:
    [[nodiscard]] bool hasStringSize() const;
    [[nodiscard]] bool isMember() const { return dbNumber.has_value(); }
    bindings::Validation validateAddress();
    bindings::Validation validateCommand();
    void updateEffectiveAddress();
    void dbNumberChanged();
    void dataTypeChanged();
    void writableChanged();
    [[nodiscard]] const model::Attribute& valueAttribute() const;

    PropertyController::Subscription dbNumberSubscription_;
    PropertyController::Subscription addressSubscription_;
};

} // namespace corvane::workbench::plugins::s7Driver
