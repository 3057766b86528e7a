#include "workbench/cli/output/MemoryText.hpp"

#include "workbench/cli/output/TextOutput.hpp"

#include <string>
#include <vector>

namespace corvane::workbench::cli {

namespace {

constexpr std::size_t kByte = 8;           // bits, and so characters
constexpr std::size_t kColumn = kByte + 1; // with what parts it from the next one
constexpr std::size_t kNumberWidth = 6;
constexpr std::string_view kIndent = "         ";

class Drawing {
public:
    Drawing(const MemoryPicture& picture, function_ref<void(std::string_view)> writeLine)
        : map_(picture.map), bytesPerRow_(picture.bytesPerRow), writeLine_(writeLine) {}

    void draw();

private:
    void writeHeading();
    void writeRow(const core::MemoryLine& line);
    void writeNotes(std::uint64_t endBit);
    void fill(std::vector<std::string>& cells, std::uint64_t rowBegin,
              const core::MemorySegment& segment);
    void label(std::vector<std::string>& cells, std::size_t from, std::size_t to,
               const core::MemorySegment& segment);
    [[nodiscard]] static std::size_t columnOf(std::uint64_t bitInRow) {
        return static_cast<std::size_t>(bitInRow / kByte * kColumn + bitInRow % kByte);
    }
    void writeNumbered(const std::string& number, std::string_view rest) {
        const std::string blanks(number.size() < kNumberWidth ? kNumberWidth - number.size() : 0,
                                 ' ');
        writeLine_(blanks + number + " " + std::string(rest));
    }

    const core::MemoryMap& map_;
    unsigned bytesPerRow_;
    function_ref<void(std::string_view)> writeLine_;
    std::vector<std::size_t> cutOff_; // pieces whose names had no room in the row
    std::size_t nextPiece_ = 0;       // the first that no row has shown
    std::size_t nextOverlap_ = 0;
};

void Drawing::draw() {
    writeLine_(summaryOf(map_));
    if (map_.pieces().empty())
        return;
    writeHeading();
    for (const auto& line : core::memoryLines(map_, bytesPerRow_)) {
        cutOff_.clear();
        if (line.rows == 1)
            writeRow(line);
        else
            writeLine_(std::string(kNumberWidth, ' ') + " ⋮ " + leftOutText(map_, line));
        const auto rowEnd = line.firstByte + line.rows * bytesPerRow_;
        writeNotes(rowEnd > map_.end() / kByte ? map_.end() : rowEnd * kByte);
    }
}

void Drawing::writeHeading() {
    std::string heading;
    for (unsigned byte = 0; byte != bytesPerRow_; ++byte)
        heading += padded(" +" + std::to_string(byte), kColumn);
    heading.erase(heading.find_last_not_of(' ') + 1);
    writeNumbered({}, heading);
}

void Drawing::writeRow(const core::MemoryLine& line) {
    std::vector<std::string> cells(bytesPerRow_ * kColumn, " ");
    const auto segments = core::segmentsOf(map_, line, bytesPerRow_);
    for (const auto& segment : segments)
        fill(cells, line.firstByte * kByte, segment);
    // What is left of the memory's last byte is no one's.
    auto end = columnOf(segments.back().end - 1 - line.firstByte * kByte) + 1;
    for (; end % kColumn != kByte; ++end)
        cells[end] = ".";
    cells[end++] = "|";
    std::string row = "|";
    for (std::size_t i = 0; i != end; ++i)
        row += cells[i];
    writeNumbered(std::to_string(line.firstByte), row);
}

void Drawing::fill(std::vector<std::string>& cells, std::uint64_t rowBegin,
                   const core::MemorySegment& segment) {
    const auto from = columnOf(segment.begin - rowBegin);
    const auto to = columnOf(segment.end - 1 - rowBegin);
    const bool isGap = segment.piece == core::MemoryMap::kGap;
    const bool bits = !isGap && isBits(map_.pieces()[segment.piece]);
    for (auto column = from; column <= to; ++column) {
        const auto bit = column % kColumn;
        if (bit == kByte)
            cells[column] = isGap ? "|" : "-";
        else if (isGap)
            cells[column] = ".";
        else if (segment.shared)
            cells[column] = "!";
        else
            cells[column] = bits ? std::to_string(bit) : "-";
    }
    if (to % kColumn == kByte - 1)
        cells[to + 1] = "|";
    if (!segment.isFirst && from % kColumn == 0)
        cells[from - 1] = "-"; // the same element goes on
    if (!isGap && !bits && segment.isFirst)
        label(cells, from, to, segment);
}

// What goes on from the row above says so.
void Drawing::label(std::vector<std::string>& cells, std::size_t from, std::size_t to,
                    const core::MemorySegment& segment) {
    const bool goesOn = map_.pieces()[segment.piece].begin < segment.begin;
    const auto name = (goesOn ? "…" : "") + nameOf(map_, segment.piece);
    const auto shown = shortened(name, to - from + 1);
    if (shown != name && !goesOn)
        cutOff_.push_back(segment.piece);
    auto column = from;
    for (std::size_t begin = 0; begin != shown.size(); ++column) {
        auto end = begin + 1;
        while (end != shown.size() && (static_cast<unsigned char>(shown[end]) & 0xc0U) == 0x80U)
            ++end;
        cells[column] = shown.substr(begin, end - begin);
        begin = end;
    }
}

void Drawing::writeNotes(std::uint64_t endBit) {
    auto cutOff = cutOff_.begin();
    for (; nextPiece_ != map_.pieces().size() && map_.pieces()[nextPiece_].begin < endBit;
         ++nextPiece_) {
        while (cutOff != cutOff_.end() && *cutOff < nextPiece_)
            ++cutOff;
        const auto overlaps = map_.overlaps();
        const bool isOverlap =
            nextOverlap_ != overlaps.size() && overlaps[nextOverlap_].piece == nextPiece_;
        const bool isCutOff = cutOff != cutOff_.end() && *cutOff == nextPiece_;
        if (isOverlap || isCutOff || isBits(map_.pieces()[nextPiece_]))
            writeLine_(std::string(kIndent) + describe(map_, nextPiece_));
        if (isOverlap)
            writeLine_(std::string(kIndent) + "! " + describe(map_, overlaps[nextOverlap_++]));
    }
}

} // namespace

void writeMemoryText(const MemoryPicture& picture, function_ref<void(std::string_view)> writeLine) {
    Drawing(picture, writeLine).draw();
}

} // namespace corvane::workbench::cli
