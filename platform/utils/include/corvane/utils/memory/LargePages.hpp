#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>

namespace corvane::utils::memory {

/// Asks the system to back a large block that is about to be filled with large pages, where it has
/// them: filling fresh memory page by page costs more than what is written into it. Only a hint;
/// the block stays the caller's, and small blocks are left alone.
CORVANE_EXPORT void preferLargePages(void* block, std::size_t size);

} // namespace corvane::utils::memory
