#include "dbimport/diagnosis/SourcePlace.hpp"

#include <corvane/utils/string/FindByte.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <cstddef>

namespace corvane::workbench::plugins::s7Driver {

namespace {

constexpr std::size_t kHeadSize = 512;
constexpr std::size_t kBeforeSize = std::size_t{64} * 1024;
constexpr std::size_t kAfterSize = std::size_t{8} * 1024;

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U; }

std::uint64_t charactersIn(std::string_view bytes) {
    const std::string text = utils::string::detail::replaceMalformedUtf8(bytes);
    return static_cast<std::uint64_t>(
        std::ranges::count_if(text, [](char byte) { return !continuesCharacter(byte); }));
}

/// Counts lines and columns of what it is given.
class PlaceCounter {
public:
    void pass(std::string_view bytes) {
        const char* at = bytes.data();
        const char* const end = at + bytes.size();
        while (at != end) {
            const char* const ending = utils::string::findLineEnding(at, end);
            if (ending != at)
                passInLine({at, ending});
            if (ending == end)
                return;
            passLineEnding(*ending);
            at = ending + 1;
        }
    }

    [[nodiscard]] SourcePlace place() const {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        const bool marked = line_ == 1 && passed_ == 0 && rest_.starts_with(kByteOrderMark);
        return {line_, 1 + passed_ + charactersIn(rest_) - static_cast<std::uint64_t>(marked)};
    }

private:
    // A line may be as long as the file, so that its beginning is counted while it comes in.
    void passInLine(std::string_view bytes) {
        constexpr std::size_t kLongLine = std::size_t{64} * 1024;
        afterReturn_ = false;
        rest_.append(bytes);
        if (rest_.size() < kLongLine)
            return;
        std::size_t size = rest_.size() - 1;
        while (size > 1 && continuesCharacter(rest_[size]))
            --size;
        passed_ += charactersIn(std::string_view(rest_).substr(0, size));
        rest_.erase(0, size);
    }

    void passLineEnding(char ending) {
        if (ending == '\n' && afterReturn_) {
            afterReturn_ = false;
            return;
        }
        afterReturn_ = ending == '\r';
        ++line_;
        passed_ = 0;
        rest_.clear();
    }

    std::uint64_t line_ = 1;
    std::uint64_t passed_ = 0; // characters of the line in front of `rest_`
    std::string rest_;
    bool afterReturn_ = false;
};

/// Hands on what the stream has up to byte `offset`.
template <class Take>
void readTo(utils::io::InputStream& stream, std::uint64_t offset, const Take& take) {
    while (stream.position() < offset && stream.ensureBuffer()) {
        const auto buffered = static_cast<std::uint64_t>(stream.bufferEnd() - stream.cursor());
        const auto size = std::min(buffered, offset - stream.position());
        const std::string_view bytes(stream.cursor(), static_cast<std::size_t>(size));
        stream.advanceTo(bytes.data() + bytes.size());
        take(bytes);
    }
}

void keepLast(std::string& text, std::string_view bytes) {
    text.append(bytes);
    if (text.size() > 2 * kBeforeSize)
        text.erase(0, text.size() - kBeforeSize);
}

} // namespace

void skipTo(utils::io::InputStream& stream, std::uint64_t offset) {
    readTo(stream, offset, [](std::string_view) {});
}

SourceView viewOf(utils::io::InputStream& stream, std::uint64_t offset) {
    SourceView view;
    PlaceCounter counter;
    stream.rewind();
    readTo(stream, offset, [&](std::string_view bytes) {
        view.head.append(bytes.substr(0, kHeadSize - std::min(kHeadSize, view.head.size())));
        keepLast(view.before, bytes);
        counter.pass(bytes);
    });
    const auto text = view.before.find_last_not_of(" \t\r\n") + 1;
    if (stream.eof() && text != view.before.size() && text != 0)
        return viewOf(stream, stream.position() - (view.before.size() - text));
    readTo(stream, stream.position() + kAfterSize,
           [&](std::string_view bytes) { view.after.append(bytes); });
    view.head.append(view.after, 0, kHeadSize - std::min(kHeadSize, view.head.size()));
    view.place = counter.place();
    return view;
}

std::vector<SourcePlace> placesOf(utils::io::InputStream& stream,
                                  std::span<const std::uint64_t> offsets) {
    std::vector<SourcePlace> places;
    PlaceCounter counter;
    stream.rewind();
    for (const std::uint64_t offset : offsets) {
        readTo(stream, offset, [&](std::string_view bytes) { counter.pass(bytes); });
        places.push_back(counter.place());
    }
    return places;
}

} // namespace corvane::workbench::plugins::s7Driver
