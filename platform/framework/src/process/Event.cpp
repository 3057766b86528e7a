#include <corvane/workbench/process/Event.hpp>

#include <utility>

namespace corvane::workbench::process {

using enum io::Direction;

Event::Event(std::string name, Flags<io::Direction> directions)
    : name_(std::move(name)), directions_(directions) {}

Event::~Event() = default;

const Event Event::kConnected("connected", {input, output});
const Event Event::kDisconnected("disconnected", {input, output});
const Event Event::kChanged("changed", {input});

} // namespace corvane::workbench::process
