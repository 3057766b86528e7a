#include <corvane/utils/io/OutputStream.hpp>

namespace corvane::utils::io {

OutputStream::~OutputStream() = default;

// A stream into memory has arrived where it goes.
void OutputStream::flush() {}

} // namespace corvane::utils::io
