#include "workbench/core/StringOutputStream.hpp"

#include <utility>

namespace corvane::workbench::core {

StringOutputStream::StringOutputStream() {
    cursor_ = buffer_.data();
    end_ = cursor_ + buffer_.size();
}

std::string StringOutputStream::take() {
    flush();
    return std::exchange(text_, {});
}

void StringOutputStream::flush() {
    text_.append(buffer_.data(), cursor_);
    cursor_ = buffer_.data();
}

void StringOutputStream::writeBlock(std::string_view bytes) {
    flush();
    text_.append(bytes);
}

} // namespace corvane::workbench::core
