#include "dbimport/DataBlockNumbering.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/DataBlockReading.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/parser/Decimal.hpp"
#include "dbimport/warnings/ImportFindings.hpp"

#include <corvane/utils/string/Ascii.hpp>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// The digits of a name that is "DB" and digits; empty for any other name.
std::string_view numberInName(std::string_view name) {
    if (!name.starts_with(kDataBlockMarker))
        return {};
    name.remove_prefix(kDataBlockMarker.size());
    return std::ranges::all_of(name, utils::string::ascii::isDigit<char>) ? name
                                                                          : std::string_view();
}

// What does not fit wraps.
void setNumber(DataBlockRecord& record, std::uint64_t number, ImportFindings& findings) {
    record.dbNumber = static_cast<std::uint16_t>(number);
    if (*record.dbNumber != number)
        findings.wrapped.add({record.name, record.place, *record.dbNumber});
}

} // namespace

void numberDataBlocks(std::vector<DataBlockRecord>& records, const ImportContext& context,
                      ImportFindings& findings) {
    std::uint16_t highest = context.maxExistingDbNumber();
    for (DataBlockRecord& record : records) {
        if (const std::string_view digits = numberInName(record.name); !digits.empty())
            setNumber(record, static_cast<std::uint64_t>(readDecimal(digits, record.place)),
                      findings); // digits alone are never negative
        highest = std::max(highest, record.dbNumber.value_or(0));
    }
    std::uint64_t next = highest;
    for (DataBlockRecord& record : records)
        if (!record.dbNumber) {
            setNumber(record, ++next, findings);
            findings.guessed.add({record.name, record.place, *record.dbNumber});
        }
}

} // namespace corvane::workbench::plugins::s7Driver
