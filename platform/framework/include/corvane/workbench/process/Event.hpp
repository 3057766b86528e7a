#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/Flags.hpp>
#include <corvane/workbench/io/Direction.hpp>

#include <string>

namespace corvane::workbench::process {

/// Something that an element reports at run time. Elements of a class share their event objects: an
/// event is told from another by its address, and lives as long as its plug-in.
///
///     const Event kOverflow("overflow", {io::Direction::input});
///
/// An element publishes its events with its attributes and tasks when it is asked for its members,
/// as `corvane members` does; nothing of them is saved.
class CORVANE_EXPORT Event {
public:
    /// `name` is what the runtime knows it by; it is not translated. `directions` is empty for an
    /// event that belongs to neither side of the traffic.
    Event(std::string name, Flags<io::Direction> directions);
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event();

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Flags<io::Direction> directions() const { return directions_; }

    // Events that devices of every kind report.
    static const Event kConnected;    ///< the device can be reached from now on; both directions
    static const Event kDisconnected; ///< it cannot any more; both directions
    static const Event kChanged;      ///< a reading has brought another value; input

private:
    std::string name_;
    Flags<io::Direction> directions_;
};

} // namespace corvane::workbench::process
