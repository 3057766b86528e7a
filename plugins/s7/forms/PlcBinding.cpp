#include "forms/PlcBinding.hpp"

#include "dbimport/DataBlockImport.hpp"
#include "forms/FormText.hpp"

namespace corvane::workbench::plugins::s7Driver {

namespace {

// Limits of what a user enters: a document may carry any value, which is shown as it is.
constexpr ui::SpinBoxControl::Range kRackRange{.minimum = 0, .maximum = 7, .step = 1};
constexpr ui::SpinBoxControl::Range kSlotRange{.minimum = 0, .maximum = 31, .step = 1};

} // namespace

Plc::Binding::Binding(Plc& plc)
    : ElementBinding(plc),
      address_("address",
               translatedTexts<Plc>("Address", "The network address used by the S7 plc",
                                    "This field shows the network address of the S7 plc."),
               fieldHandle(plc, &Plc::address), textAccessor(pointer(), &Plc::address),
               {.placeholder = i18n::translate(kTextContext, "enter the address"),
                .minimumWidth = 0,
                .preferredWidth = 300,
                .fixUp = {},
                .remark = [this] { return pointer()->addressRemark(); }}),
      rack_("rack",
            translatedTexts<Plc>("Rack number", "The rack number of the S7 plc",
                                 "This field shows the rack number of the S7 plc."),
            fieldHandle(plc, &Plc::rack), fieldAccessor(pointer(), &Plc::rack), kRackRange,
            kSpinBoxSettings),
      slot_("slot",
            translatedTexts<Plc>("Slot number", "The slot number of the S7 plc",
                                 "This field shows the slot number of the S7 plc."),
            fieldHandle(plc, &Plc::slot), fieldAccessor(pointer(), &Plc::slot), kSlotRange,
            kSpinBoxSettings),
      import_("import",
              translatedTexts<Plc>(
                  "Import DB File",
                  "This button allows you to import the data blocks defined in a .db file in "
                  "structured text format. Such files can be exported from within the TIA Portal "
                  "PLC programming environment, for example.",
                  {}),
              ".db",
              [&plc](const std::filesystem::path& file) { return importDataBlocks(plc, file); }) {}

void Plc::Binding::buildForm(ui::Form form) {
    form.add(address_);
    form.add(rack_);
    form.add(slot_);
    form.add(import_);
}

std::unique_ptr<skill::Binding> Plc::createBinding() { return std::make_unique<Binding>(*this); }

} // namespace corvane::workbench::plugins::s7Driver
