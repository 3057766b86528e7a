#include "address/DataBlockPrefix.hpp"
#include "elements/DocumentKeys.hpp"
#include "elements/Item.hpp"
#include "elements/ReadNumber.hpp"

#include <corvane/workbench/config/Context.hpp>

namespace corvane::workbench::plugins::s7Driver {

namespace {

// The bytes at the start of an S7 string buffer that hold no characters. The same number is taken
// off for WString, whose buffers have four: documents were always read so, and must go on to be.
constexpr std::uint64_t kStringHeadBytes = 2;

std::uint64_t stringSizeOfBuffer(std::uint64_t bytes) {
    return bytes < kStringHeadBytes ? 0 : bytes - kStringHeadBytes;
}

} // namespace

void Item::load(utils::json::decoder::Object& members, config::Context& context) {
    while (auto member = members.next()) {
        const std::string_view name = member->name;
        auto& value = member->value;
        if (name == keys::kDataType.text())
            dataType = value.asString();
        else if (name == keys::kStringSize.text())
            stringSize = readWholeNumber<std::uint64_t>(value);
        else if (name == keys::kBufferLength.text())
            stringSize = stringSizeOfBuffer(readWholeNumber<std::uint64_t>(value));
        else if (name == keys::kAddress.text())
            address = stripDataBlockPrefix(value.asString().view());
        else if (name == keys::kWritable.text())
            writable = value.asBool();
        else if (name == keys::kCommand.text())
            command = context.reference(value.asString());
        else
            config::throwUnknownParameterError(name);
    }
    resolveDbNumber();
}

void Item::save(utils::json::encoder::Object& members) const {
    members.addStringView(keys::kDataType, dataType);
    if (hasStringSize())
        members.addNumber(keys::kStringSize, stringSize);
    members.addStringView(keys::kAddress, address);
    members.add(keys::kWritable, writable);
    command.saveTo(members, keys::kCommand);
}

} // namespace corvane::workbench::plugins::s7Driver
