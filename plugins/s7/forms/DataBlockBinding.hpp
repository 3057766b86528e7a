#pragma once

#include "elements/DataBlock.hpp"

#include <corvane/workbench/ui/SpinBox.hpp>

namespace corvane::workbench::plugins::s7Driver {

/// The form of a data block: its DB number.
class DataBlock::Binding final : public skill::ElementBinding<DataBlock> {
public:
    explicit Binding(DataBlock& block);
    void buildForm(ui::Form form) override;

private:
    ui::SpinBox<std::uint16_t> dbNumber_;
};

} // namespace corvane::workbench::plugins::s7Driver
