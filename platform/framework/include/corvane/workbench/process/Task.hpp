#pragma once

#include <corvane/utils/Export.hpp>

#include <string>

namespace corvane::workbench::process {

/// Something that an element can be told to do at run time. Elements of a class share their task
/// objects: a task is told from another by its address, and lives as long as its plug-in. A task
/// takes no arguments, and belongs to no direction of the traffic as attributes and events do.
class CORVANE_EXPORT Task {
public:
    /// `name` is what the runtime knows it by; it is not translated.
    explicit Task(std::string name);
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task();

    [[nodiscard]] const std::string& name() const { return name_; }

    /// Drops the connection to a device and makes a new one.
    static const Task kReconnect;

private:
    std::string name_;
};

} // namespace corvane::workbench::process
