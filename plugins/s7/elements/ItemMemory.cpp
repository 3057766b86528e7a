#include "address/S7Address.hpp"
#include "elements/DataTypes.hpp"
#include "elements/Item.hpp"

namespace corvane::workbench::plugins::s7Driver {

data::MemoryUse Item::memoryUse() const {
    const auto* const type = findDataType(dataType);
    const auto location = readLocation(address);
    if (type == nullptr || !location)
        return {};
    const auto area = *location->address.memoryArea;
    if (isMember() != (area == MemoryArea::DataBlock))
        return {}; // the address' validator refuses it
    if (location->address.dbNumber && location->address.dbNumber != dbNumber)
        return {};
    const bool isBit = type->valueType == ValueType::boolean;
    return data::MemoryExtent{.area = isMember() ? std::string_view() : markerOf(area),
                              .offset = std::uint64_t{bitsPerOffset(area)} * location->offset +
                                        (isBit ? location->bit : 0U),
                              .size = bitsInMemory(*type, stringSize)};
}

} // namespace corvane::workbench::plugins::s7Driver
