#pragma once

#include <stdexcept>
#include <string>

namespace corvane::workbench::core {

/// A document cannot be loaded. The text names the element, where the fault belongs to one, and the
/// member and the place in the text, where they are known.
class DocumentError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace corvane::workbench::core
