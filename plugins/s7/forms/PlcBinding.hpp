#pragma once

#include "elements/Plc.hpp"

#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

namespace corvane::workbench::plugins::s7Driver {

/// The form of a PLC: address, rack, slot, and the import of data blocks.
class Plc::Binding final : public skill::ElementBinding<Plc> {
public:
    explicit Binding(Plc& plc);
    void buildForm(ui::Form form) override;

private:
    ui::TextField address_;
    ui::SpinBox<std::uint8_t> rack_;
    ui::SpinBox<std::uint8_t> slot_;
    ui::PushButton import_;
};

} // namespace corvane::workbench::plugins::s7Driver
