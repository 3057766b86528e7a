#include "dbimport/DataBlockNumbering.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/DataBlockReading.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/parser/Decimal.hpp"

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

} // namespace

void numberDataBlocks(std::vector<DataBlockRecord>& records, const ImportContext& context) {
    std::uint16_t highest = context.maxExistingDbNumber();
    for (DataBlockRecord& record : records) {
        if (const std::string_view digits = numberInName(record.name); !digits.empty())
            record.dbNumber = static_cast<std::uint16_t>(readDecimal(digits, record.place));
        highest = std::max(highest, record.dbNumber.value_or(0));
    }
    for (DataBlockRecord& record : records)
        if (!record.dbNumber)
            record.dbNumber = ++highest;
}

} // namespace corvane::workbench::plugins::s7Driver
