#include "elements/Command.hpp"
#include "elements/Struct.hpp"

// Structures and commands have forms without a field.

namespace corvane::workbench::plugins::s7Driver {

class Struct::Binding final : public skill::ElementBinding<Struct> {
public:
    using ElementBinding::ElementBinding;
};

class Command::Binding final : public skill::ElementBinding<Command> {
public:
    using ElementBinding::ElementBinding;
};

std::unique_ptr<skill::Binding> Struct::createBinding() { return std::make_unique<Binding>(*this); }

std::unique_ptr<skill::Binding> Command::createBinding() {
    return std::make_unique<Binding>(*this);
}

} // namespace corvane::workbench::plugins::s7Driver
