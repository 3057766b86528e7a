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
/// For the owner of the model alone (thread/Owner.hpp), like the objects that it is made for.
[[nodiscard]] CORVANE_EXPORT void* allocatePooled(std::size_t size);

/// For the class's operator delete, with the size that was asked for.
CORVANE_EXPORT void freePooled(void* place, std::size_t size) noexcept;

inline constexpr std::size_t kLargestPooled = 512;

/// The base of a class whose objects, and those of the classes derived from it, stand in pooled
/// memory. Whoever deletes one through a base needs a virtual destructor there: the size tells
/// where the place belongs.
class Pooled {
public:
    static void* operator new(std::size_t size) { return allocatePooled(size); }
    static void operator delete(void* object, std::size_t size) noexcept {
        freePooled(object, size);
    }

protected:
    Pooled() = default;
    Pooled(const Pooled&) = default;
    Pooled& operator=(const Pooled&) = default;
    ~Pooled() = default;
};

} // namespace corvane::utils::memory
