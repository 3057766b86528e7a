#include "workbench/cli/output/MemorySvg.hpp"

#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/memory/MemoryRange.hpp"

#include <corvane/utils/string/ControlCharacters.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <string>
#include <string_view>

namespace corvane::workbench::cli {

namespace {

constexpr std::uint64_t kByte = 8; // bits

// Pixels.
constexpr std::uint64_t kBitWidth = 9;
constexpr std::uint64_t kRowHeight = 24;
constexpr std::uint64_t kLeft = 80; // where the bytes begin
constexpr std::uint64_t kTop = 64;
constexpr std::uint64_t kLetterWidth = 7; // about
constexpr std::uint64_t kBaseline = 16;   // of a text, from the upper edge of its row

constexpr std::string_view kStyle = R"(<style>
text { font: 11px sans-serif; fill: #1b1f24 }
.title { font-size: 14px; font-weight: bold }
.number { text-anchor: end; font-family: monospace }
.bit { text-anchor: middle; font-family: monospace }
rect { stroke: #57606a }
.gap { fill: url(#dots); stroke-dasharray: 2 2 }
.even { fill: #dbe9f9 }
.odd { fill: #c1d8f0 }
.single { fill: #fdf0c8 }
.shared { fill: url(#hatching) }
</style>
<defs>
<pattern id="dots" width="6" height="6" patternUnits="userSpaceOnUse"><rect width="6" height="6" style="fill: #ffffff; stroke: none"/><circle cx="3" cy="3" r="0.8" fill="#8c959f"/></pattern>
<pattern id="hatching" width="6" height="6" patternUnits="userSpaceOnUse"><rect width="6" height="6" style="fill: #ffd8d3; stroke: none"/><path d="M0 6L6 0" stroke="#a4130a"/></pattern>
</defs>
)";

// What XML has no room for, not even escaped, becomes U+FFFD.
std::string escaped(std::string_view text) {
    constexpr std::string_view kReplacement = "\xef\xbf\xbd";
    const auto valid = utils::string::detail::replaceMalformedUtf8(text);
    std::string result;
    for (std::string_view rest = valid; !rest.empty(); rest.remove_prefix(1)) {
        const auto byte = static_cast<unsigned char>(rest.front());
        if (rest.front() == '&')
            result += "&amp;";
        else if (rest.front() == '<')
            result += "&lt;";
        else if (rest.front() == '>')
            result += "&gt;";
        else if (byte < 0x20 && rest.front() != '\n')
            result += kReplacement;
        else if (rest.starts_with("\xef\xbf\xbe") || rest.starts_with("\xef\xbf\xbf")) {
            result += kReplacement;
            rest.remove_prefix(2);
        } else
            result += rest.front();
    }
    return result;
}

std::string number(std::uint64_t value) { return std::to_string(value); }

/// An upright rectangle of the picture.
struct Box {
    std::uint64_t x;
    std::uint64_t y;
    std::uint64_t width;
};

class Drawing {
public:
    Drawing(const MemoryPicture& picture, utils::io::OutputStream& stream)
        : map_(picture.map),
          bytesPerRow_(picture.bytesPerRow),
          lines_(core::memoryLines(map_, picture.bytesPerRow)),
          stream_(stream) {}

    void draw();

private:
    void drawHead();
    void drawRow(const core::MemoryLine& line);
    void drawSegment(const core::MemorySegment& segment, const Box& box);
    void drawLabel(const core::MemorySegment& segment, const Box& box);
    [[nodiscard]] std::string_view classOf(const core::MemorySegment& segment) const;
    [[nodiscard]] std::string titleOf(const core::MemorySegment& segment) const;
    void text(std::string_view styles, std::uint64_t x, std::uint64_t y, std::string_view content) {
        stream_.write("<text class=\"" + std::string(styles) + "\" x=\"" + number(x) + "\" y=\"" +
                      number(y) + "\">" + escaped(content) + "</text>\n");
    }

    const core::MemoryMap& map_;
    unsigned bytesPerRow_;
    std::vector<core::MemoryLine> lines_;
    utils::io::OutputStream& stream_;
    std::uint64_t y_ = kTop;
};

void Drawing::draw() {
    drawHead();
    for (const auto& line : lines_) {
        if (line.rows == 1)
            drawRow(line);
        else
            text("more", kLeft, y_ + kBaseline, "⋮ " + leftOutText(map_, line));
        y_ += kRowHeight;
    }
    stream_.write("</svg>\n");
}

void Drawing::drawHead() {
    constexpr std::uint64_t kMargin = 16;
    const auto width = number(kLeft + bytesPerRow_ * kByte * kBitWidth + kMargin);
    const auto height = number(kTop + lines_.size() * kRowHeight + kMargin);
    stream_.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" +
                  height + "\" viewBox=\"0 0 " + width + " " + height + "\">\n");
    stream_.write("<title>" + escaped(summaryOf(map_)) + "</title>\n");
    stream_.write(kStyle);
    constexpr std::uint64_t kTitleBaseline = 24;
    constexpr std::uint64_t kHeadingBaseline = 52;
    text("title", kMargin, kTitleBaseline, summaryOf(map_));
    for (unsigned byte = 0; byte != bytesPerRow_; ++byte)
        text("heading", kLeft + byte * kByte * kBitWidth, kHeadingBaseline, "+" + number(byte));
}

void Drawing::drawRow(const core::MemoryLine& line) {
    constexpr std::uint64_t kDistance = 8;
    text("number", kLeft - kDistance, y_ + kBaseline, number(line.firstByte));
    for (const auto& segment : core::segmentsOf(map_, line, bytesPerRow_)) {
        const auto bit = segment.begin - line.firstByte * kByte;
        drawSegment(segment,
                    {kLeft + bit * kBitWidth, y_, (segment.end - segment.begin) * kBitWidth});
    }
}

void Drawing::drawSegment(const core::MemorySegment& segment, const Box& box) {
    stream_.write("<g><title>" + escaped(titleOf(segment)) + "</title><rect class=\"" +
                  std::string(classOf(segment)) + "\" x=\"" + number(box.x) + "\" y=\"" +
                  number(box.y) + "\" width=\"" + number(box.width) + "\" height=\"" +
                  number(kRowHeight) + "\"/>");
    if (segment.piece != core::MemoryMap::kGap)
        drawLabel(segment, box);
    stream_.write("</g>\n");
}

void Drawing::drawLabel(const core::MemorySegment& segment, const Box& box) {
    constexpr std::uint64_t kInset = 3;
    const auto& piece = map_.pieces()[segment.piece];
    if (isBits(piece)) {
        for (auto bit = segment.begin; bit != segment.end; ++bit)
            text("bit", box.x + (bit - segment.begin) * kBitWidth + kBitWidth / 2,
                 box.y + kBaseline, segment.shared ? "!" : number(bit % kByte));
        return;
    }
    std::string label = segment.shared ? "! " : "";
    if (piece.begin < segment.begin)
        label += "…";
    text("name", box.x + kInset, box.y + kBaseline,
         shortened(label + nameOf(map_, segment.piece), (box.width - kInset) / kLetterWidth));
}

std::string_view Drawing::classOf(const core::MemorySegment& segment) const {
    if (segment.piece == core::MemoryMap::kGap)
        return "gap";
    if (segment.shared)
        return "shared";
    if (isBits(map_.pieces()[segment.piece]))
        return "single";
    return segment.piece % 2 == 0 ? "even" : "odd";
}

// Of many elements at one place the first ones.
std::string Drawing::titleOf(const core::MemorySegment& segment) const {
    constexpr std::size_t kMostElements = 8;
    if (segment.piece == core::MemoryMap::kGap)
        return "gap: " + core::memoryRangeText(segment.begin, segment.end);
    std::string title;
    for (const auto index : map_.piecesAt(segment.begin, kMostElements)) {
        const auto& piece = map_.pieces()[index];
        const auto summary = piece.element->getSkillElement()->summary();
        title.append(title.empty() ? "" : "\n")
            .append(piece.element->path())
            .append("  ")
            .append(narrow(summary.type))
            .append("  ")
            .append(narrow(summary.address))
            .append("  ")
            .append(core::memoryRangeText(piece.begin, piece.end));
    }
    return title;
}

} // namespace

void writeMemorySvg(const MemoryPicture& picture, utils::io::OutputStream& stream) {
    Drawing(picture, stream).draw();
}

} // namespace corvane::workbench::cli
