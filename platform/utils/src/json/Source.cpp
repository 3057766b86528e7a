#include "Source.hpp"

#include <algorithm>
#include <utility>

namespace corvane::utils::json::decoder {

namespace {

/// The longest part of a member's name that a message shows: names come from the text, and the
/// message is to stay one readable line.
constexpr std::size_t kMaxShownName = 80;

std::string shownName(std::string_view member) {
    std::size_t length = std::min(member.size(), kMaxShownName);
    while (length < member.size() && length > 0 && (member[length] & 0xc0) == 0x80)
        --length;
    std::string shown(member.substr(0, length));
    std::ranges::replace_if(shown, [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    return length < member.size() ? shown + "..." : shown;
}

std::string message(const std::string& problem, std::string_view member, Position position) {
    std::string text;
    if (!member.empty())
        text = "member \"" + shownName(member) + "\": ";
    return text + problem + " (line " + std::to_string(position.line) + ", column " +
           std::to_string(position.column) + ")";
}

} // namespace

DecodeError::DecodeError(const std::string& problem, std::string_view member, Position position)
    : std::runtime_error(message(problem, member, position)),
      member_(member),
      position_(position) {}

namespace detail {

Source::Source(std::string text) : text_(std::move(text)), begin_(text_.data()) {
    if (text_.starts_with("\xEF\xBB\xBF"))
        begin_ += 3;
}

void Source::fail(const std::string& problem, std::string_view member, const char* place) const {
    throw DecodeError(problem, member, positionOf(place));
}

void Source::failMalformed(std::string_view reason, const char* place) const {
    fail("malformed JSON: " + std::string(reason), {}, place);
}

Position Source::positionOf(const char* place) const {
    Position position;
    const char* lineBegin = begin_;
    for (const char* at = begin_; at != place; ++at) {
        const bool lineEnds = *at == '\n' || (*at == '\r' && at[1] != '\n');
        if (!lineEnds)
            continue;
        ++position.line;
        lineBegin = at + 1;
    }
    position.column = static_cast<std::size_t>(place - lineBegin) + 1;
    return position;
}

} // namespace detail

} // namespace corvane::utils::json::decoder
