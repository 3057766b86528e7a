#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/Flags.hpp>
#include <corvane/workbench/data/DataType.hpp>
#include <corvane/workbench/io/Direction.hpp>

#include <cstdint>
#include <string>

namespace corvane::workbench::model {

/// What the runtime may do with an attribute. The codes are fixed: the runtime reads them.
enum class Access : std::uint8_t {
    readOnly = 0,
    readWrite = 2,
};

/// A value that an element publishes at run time. Elements of a class share their attribute
/// objects: an attribute is told from another by its address, and lives as long as its plug-in.
/// The value itself is the runtime's: here stands only what it is called and what it can hold.
///
///     const Attribute kSpeed("speed", Access::readWrite, {data::TypeCode::signedInteger, 16},
///                            {io::Direction::input, io::Direction::output});
class CORVANE_EXPORT Attribute {
public:
    /// `name` is what the runtime knows it by; it is not translated. `directions` is empty for a
    /// value that belongs to neither side of the traffic.
    Attribute(std::string name, Access access, data::DataType type,
              Flags<io::Direction> directions);
    Attribute(const Attribute&) = delete;
    Attribute& operator=(const Attribute&) = delete;
    ~Attribute();

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Access access() const { return access_; }
    [[nodiscard]] data::DataType type() const { return type_; }
    [[nodiscard]] Flags<io::Direction> directions() const { return directions_; }

    // Members that devices of every kind publish. All are read only; a state or a quality is a code
    // of the runtime's own in 8 bits.
    static const Attribute kDeviceState; ///< whether the device can be reached
    static const Attribute kUpdateTime;  ///< of the last reading
    static const Attribute kWriteTime;   ///< of the last writing
    static const Attribute kQuality;     ///< how far the last value read can be trusted
    static const Attribute kChangeTime;  ///< of the last reading that brought another value

private:
    std::string name_;
    Access access_;
    data::DataType type_;
    Flags<io::Direction> directions_;
};

} // namespace corvane::workbench::model
