#include <corvane/workbench/model/Attribute.hpp>

#include <utility>

namespace corvane::workbench::model {

namespace {

using enum data::TypeCode;
using enum io::Direction;

// States and qualities are small codes of the runtime's own.
constexpr data::DataType kCode{unsignedInteger, 8};
constexpr data::DataType kTime{timePoint, 0};

} // namespace

Attribute::Attribute(std::string name, Access access, data::DataType type,
                     Flags<io::Direction> directions)
    : name_(std::move(name)), access_(access), type_(type), directions_(directions) {}

Attribute::~Attribute() = default;

const Attribute Attribute::kDeviceState("deviceState", Access::readOnly, kCode, {input, output});
const Attribute Attribute::kUpdateTime("updateTime", Access::readOnly, kTime, {input});
const Attribute Attribute::kWriteTime("writeTime", Access::readOnly, kTime, {output});
const Attribute Attribute::kQuality("quality", Access::readOnly, kCode, {input});
const Attribute Attribute::kChangeTime("changeTime", Access::readOnly, kTime, {input});

} // namespace corvane::workbench::model
