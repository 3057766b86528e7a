#pragma once

#include "elements/Item.hpp"

#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

namespace corvane::workbench::plugins::s7Driver {

/// The form of an item.
class Item::Binding final : public skill::ElementBinding<Item> {
public:
    /// Throws std::logic_error for an item outside any PLC, which has no commands to choose from.
    explicit Binding(Item& item);
    void buildForm(ui::Form form) override;
    bool moveTo(skill::Element& element) override;

private:
    ui::ChoiceList dataType_;
    ui::SpinBox<std::uint64_t> stringSize_;
    ui::TextField address_;
    ui::InfoField effectiveAddress_;
    ui::FlagChoice writable_;
    ui::ReferenceChooser command_;
};

/// Corrects an address under edit: a member's address that was pasted with the number of its block,
/// as in DB3.DB12, keeps only its own part. Cursor and anchor move left by what was taken away.
void fixUpAddress(ui::TextEdit& edit);

} // namespace corvane::workbench::plugins::s7Driver
