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
class CORVANE_EXPORT Attribute {
public:
    Attribute(std::string name, Access access, data::DataType type,
              Flags<io::Direction> directions);
    Attribute(const Attribute&) = delete;
    Attribute& operator=(const Attribute&) = delete;
    ~Attribute();

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Access access() const { return access_; }
    [[nodiscard]] data::DataType type() const { return type_; }
    [[nodiscard]] Flags<io::Direction> directions() const { return directions_; }

    // Members that devices of every kind publish.
    static const Attribute kDeviceState;
    static const Attribute kUpdateTime;
    static const Attribute kWriteTime;
    static const Attribute kQuality;
    static const Attribute kChangeTime;

private:
    std::string name_;
    Access access_;
    data::DataType type_;
    Flags<io::Direction> directions_;
};

} // namespace corvane::workbench::model
