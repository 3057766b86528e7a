#pragma once

#include <algorithm>
#include <string_view>

namespace corvane::utils::string {

/// Copies `text` to `target`, where there is room for it; returns the end of the copy. By
/// std::copy, which moves a block: libstdc++ 12's std::ranges::copy goes byte by byte here.
[[nodiscard]] inline char* copyText(char* target, std::string_view text) {
    return std::copy(text.begin(), text.end(), target);
}

} // namespace corvane::utils::string
