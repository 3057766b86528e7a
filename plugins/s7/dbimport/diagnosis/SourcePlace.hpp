#pragma once

#include <corvane/utils/io/InputStream.hpp>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

/// Where something stands in a file, as editors count: both from 1, columns in code points. Lines
/// end with "\n", "\r\n" or "\r"; what is not UTF-8 counts as the U+FFFD that an editor shows, and
/// a byte order mark does not count.
struct SourcePlace {
    std::uint64_t line = 1;
    std::uint64_t column = 1;

    friend bool operator==(const SourcePlace&, const SourcePlace&) = default;
};

/// A place of a file with what stands around it, as far as somebody looks who wants to know what is
/// wrong there.
struct SourceView {
    SourcePlace place;
    std::string head;   ///< the first bytes of the file
    std::string before; ///< what stands in front of the place, some ten thousand bytes at most
    std::string after;  ///< the place itself and what follows, some thousand bytes at most
};

/// Passes over what stands in front of byte `offset`, or over the whole file if it ends before.
/// Throws what the stream throws.
void skipTo(utils::io::InputStream& stream, std::uint64_t offset);

/// Reads the file anew, up to byte `offset` and a little further. A place behind the last character
/// of the file that is no blank is moved to right behind that one: where something is missing, that
/// is where it is. Throws what the stream throws.
[[nodiscard]] SourceView viewOf(utils::io::InputStream& stream, std::uint64_t offset);

/// The places of these bytes, which are in ascending order. Throws what the stream throws.
[[nodiscard]] std::vector<SourcePlace> placesOf(utils::io::InputStream& stream,
                                                std::span<const std::uint64_t> offsets);

} // namespace corvane::workbench::plugins::s7Driver
