#include "prepare/SourceText.hpp"

#include "dbimport/facts/ForeignNames.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

using utils::string::detail::isValidUtf8;

// Line by line: one comment in another encoding spoils no name elsewhere.
std::string convertLines(std::string_view text) {
    std::string converted;
    converted.reserve(text.size() + text.size() / 4);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        if (isValidUtf8(line))
            converted.append(line);
        else
            converted.append(windows1252ToUtf8(line));
        text.remove_prefix(end);
    }
    return converted;
}

} // namespace

SourceText::SourceText(std::string_view bytes)
    : text_(bytes),
      isText_(!bytes.starts_with("\xFF\xFE") && !bytes.starts_with("\xFE\xFF") &&
              !bytes.contains('\0')) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (!isText_)
        return;
    if (text_.starts_with(kByteOrderMark))
        text_.remove_prefix(kByteOrderMark.size());
    if (isValidUtf8(text_))
        return;
    converted_ = convertLines(text_);
    text_ = converted_;
}

std::optional<std::string_view> SourceText::view() const {
    return isText_ ? std::optional(text_) : std::nullopt;
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
