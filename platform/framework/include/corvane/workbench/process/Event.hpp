#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/Flags.hpp>
#include <corvane/workbench/io/Direction.hpp>

#include <string>

namespace corvane::workbench::process {

/// Something that an element reports at run time. Told from another by its address.
class CORVANE_EXPORT Event {
public:
    Event(std::string name, Flags<io::Direction> directions);
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event();

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Flags<io::Direction> directions() const { return directions_; }

    // Events that devices of every kind report.
    static const Event kConnected;
    static const Event kDisconnected;
    static const Event kChanged;

private:
    std::string name_;
    Flags<io::Direction> directions_;
};

} // namespace corvane::workbench::process
