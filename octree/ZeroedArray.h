#ifndef OCTREE_ZEROEDARRAY_H
#define OCTREE_ZEROEDARRAY_H

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>

/// Tells the system that a large block will be filled from front to back: where it knows of large pages
/// the block gets them, and its first touch costs a fraction. Changes nothing else.
void AdviseLargePages(void* pBytes, std::size_t nNumBytes) noexcept;

/// An array of `nNum` records (at least one) whose bytes are all zero, shared and released as a whole.
///
/// The zeros come from the C allocator, so that the pages of a large array are first touched when they
/// are written: an array that a file announces and never fills costs address space only.
/// Throws std::bad_alloc.
template <class T>
std::shared_ptr<T[]> MakeZeroedArray(std::size_t nNum)
{
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
    void* const pBytes = std::calloc(nNum == 0 ? 1 : nNum, sizeof(T));
    if (pBytes == nullptr)
        throw std::bad_alloc();
    AdviseLargePages(pBytes, nNum * sizeof(T));
    // On failure to allocate its own block the shared owner calls the deleter before it throws.
    return std::shared_ptr<T[]>(static_cast<T*>(pBytes), [](T* p) { std::free(p); });
}

#endif
