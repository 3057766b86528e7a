#include <corvane/utils/io/StringOutputStream.hpp>

#include <corvane/utils/memory/LargePages.hpp>

#include <algorithm>
#include <utility>

namespace corvane::utils::io {

namespace {

/// From this size on, the zeros of a text come with its pages.
constexpr std::size_t kLargeRoom = std::size_t{128} << 10U;

} // namespace

TextTooLongError::TextTooLongError()
    : std::length_error("string data size exceeds representable size") {}

// The bytes of a large text that is written a million pieces at a time would else be filled twice.
void StringOutputStream::reserveRoom(std::size_t size) {
    const std::size_t written = this->size();
    text_.reserve(size);
    memory::preferLargePages(text_.data(), text_.capacity());
    const std::size_t room = std::min(text_.capacity(), maximumSize_);
    if (room - written >= kLargeRoom)
        text_.resize_and_overwrite(room, [&](char* text, std::size_t) {
            memory::fillWithZeros(text + written, room - written);
            return room;
        });
    useTailFrom(written);
}

std::string StringOutputStream::take() {
    text_.resize(size());
    cursor_ = end_ = nullptr;
    return std::exchange(text_, std::string());
}

// Only what was written can be anything but zero.
void StringOutputStream::clear() {
    std::fill_n(text_.begin(), size(), '\0');
    useTailFrom(0);
}

std::string_view StringOutputStream::description() const { return "in-memory text string"; }

// The tail is made of zeros in steps that are still in the processor's cache when they are written
// over. All of the capacity at once would be the same text, at the cost of going through memory
// twice: see BytesThatNobodyWroteAreZero.
void StringOutputStream::overflow() {
    constexpr std::size_t kStep = kMaxReserve / 2;
    const std::size_t written = size();
    const std::size_t present = text_.size();
    if (present >= maximumSize_)
        throw TextTooLongError();
    if (present == text_.capacity())
        text_.reserve(present > maximumSize_ / 2 ? maximumSize_ : 2 * present);
    text_.resize(std::min({text_.capacity(), present + kStep, maximumSize_}));
    useTailFrom(written);
}

void StringOutputStream::writeBlock(std::string_view bytes) {
    const std::size_t written = size();
    if (bytes.size() > maximumSize_ - written)
        throw TextTooLongError();
    text_.resize(written);
    text_.append(bytes);
    useTailFrom(text_.size());
}

void StringOutputStream::useTailFrom(std::size_t position) {
    cursor_ = text_.data() + position;
    end_ = text_.data() + text_.size();
}

} // namespace corvane::utils::io
