#include <corvane/workbench/process/Task.hpp>

#include <utility>

namespace corvane::workbench::process {

Task::Task(std::string name) : name_(std::move(name)) {}

Task::~Task() = default;

const Task Task::kReconnect("reconnect");

} // namespace corvane::workbench::process
