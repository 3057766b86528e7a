#include "forms/DataBlockBinding.hpp"

#include "forms/FormText.hpp"

namespace corvane::workbench::plugins::s7Driver {

namespace {

// A document may carry the number 0, which no user can enter.
constexpr ui::SpinBoxControl::Range kDbNumberRange{.minimum = 1, .maximum = 65535, .step = 1};

} // namespace

DataBlock::Binding::Binding(DataBlock& block)
    : ElementBinding(block),
      dbNumber_("dbNumber",
                translatedTexts<DataBlock>("DB number", "The DB number of the data block",
                                           "This field shows the DB number of the data block."),
                fieldHandle(block, &DataBlock::dbNumber),
                fieldAccessor(pointer(), &DataBlock::dbNumber), kDbNumberRange, kSpinBoxSettings) {}

void DataBlock::Binding::buildForm(ui::Form form) { form.add(dbNumber_); }

std::unique_ptr<skill::Binding> DataBlock::createBinding() {
    return std::make_unique<Binding>(*this);
}

} // namespace corvane::workbench::plugins::s7Driver
