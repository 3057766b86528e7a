#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>

namespace corvane::utils::memory {

/// Memory for an object of a kind of which there may be millions, for its class's operator new: the
/// objects of one size stand side by side in large blocks, without anything between them, and a
/// place that becomes free is the next to be taken. When the last object of a size has gone, its
/// blocks go back to the system.
///
/// Objects beyond `kLargestPooled` bytes get ordinary memory. Throws std::bad_alloc.
///
/// For one thread at a time, like the objects that it is made for.
[[nodiscard]] CORVANE_EXPORT void* allocatePooled(std::size_t size);

/// For the class's operator delete, with the size that was asked for.
CORVANE_EXPORT void freePooled(void* place, std::size_t size) noexcept;

inline constexpr std::size_t kLargestPooled = 512;

} // namespace corvane::utils::memory
