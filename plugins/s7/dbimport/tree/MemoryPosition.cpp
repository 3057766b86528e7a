#include "dbimport/tree/MemoryPosition.hpp"

#include "address/DataBlockPrefix.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>

namespace corvane::workbench::plugins::s7Driver {

std::string RelativeAddress::text() const {
    using utils::numeric::detail::formatNumber;
    std::string text(kDataBlockMarker);
    text.append(formatNumber(place.byteOffset).view());
    if (alignment == Alignment::bit)
        text.append(1, '.').append(formatNumber(place.bitOffset).view());
    return text;
}

} // namespace corvane::workbench::plugins::s7Driver
