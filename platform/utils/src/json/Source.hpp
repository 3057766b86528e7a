#pragma once

#include <corvane/utils/json/Decoder.hpp>

#include <string>
#include <string_view>

namespace corvane::utils::json::decoder::detail {

/// A document's text, and the one who knows what line something stands in.
class Source {
public:
    explicit Source(std::string text);
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// The text without a byte order mark. A NUL stands at `end`.
    [[nodiscard]] const char* begin() const { return begin_; }
    [[nodiscard]] const char* end() const { return text_.data() + text_.size(); }
    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(end() - begin()); }

    [[noreturn]] void fail(const std::string& problem, std::string_view member,
                           const char* place) const;
    [[noreturn]] void failMalformed(std::string_view reason, const char* place) const;

private:
    [[nodiscard]] Position positionOf(const char* place) const;

    std::string text_;
    const char* begin_;
};

} // namespace corvane::utils::json::decoder::detail
