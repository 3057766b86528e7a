#include "dbimport/StringOutputStream.hpp"

#include "dbimport/Messages.hpp"

#include <corvane/utils/memory/LargePages.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

namespace {

// The new bytes are overwritten before anyone sees them, so they are not filled first.
void resizeUnfilled(std::string& text, std::size_t size) {
    text.resize_and_overwrite(size, [size](char*, std::size_t) { return size; });
}

[[noreturn]] void throwTooLong() {
    throw std::length_error(std::string(messageText(Message::textTooLong)));
}

} // namespace

void StringOutputStream::reserveRoom(std::size_t size) {
    text_.reserve(size);
    utils::memory::preferLargePages(text_.data(), text_.capacity());
}

std::string StringOutputStream::take() {
    text_.resize(size());
    cursor_ = end_ = nullptr;
    return std::exchange(text_, std::string());
}

std::string_view StringOutputStream::description() const { return "in-memory text string"; }

void StringOutputStream::overflow() {
    const std::size_t written = size();
    const std::size_t present = text_.size();
    if (present >= maximumSize_)
        throwTooLong();
    const std::size_t doubled = present > maximumSize_ / 2 ? maximumSize_ : 2 * present;
    const std::size_t grown = present < text_.capacity() ? text_.capacity() : doubled;
    resizeUnfilled(text_, std::min(grown, maximumSize_));
    useTailFrom(written);
}

void StringOutputStream::writeBlock(std::string_view bytes) {
    const std::size_t written = size();
    if (bytes.size() > maximumSize_ - written)
        throwTooLong();
    text_.resize(written);
    text_.append(bytes);
    useTailFrom(text_.size());
}

void StringOutputStream::useTailFrom(std::size_t position) {
    cursor_ = text_.data() + position;
    end_ = text_.data() + text_.size();
}

} // namespace corvane::workbench::plugins::s7Driver
