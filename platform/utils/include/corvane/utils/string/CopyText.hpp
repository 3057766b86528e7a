#pragma once

#include <string_view>

namespace corvane::utils::string {

/// Copies `text` to `target`, where there is room for it; returns the end of the copy, behind which
/// no zero is written. In one
/// block: libstdc++ 12's std::ranges::copy goes byte by byte here.
[[nodiscard]] inline char* copyText(char* target, std::string_view text) {
    return target + text.copy(target, text.size());
}

} // namespace corvane::utils::string
