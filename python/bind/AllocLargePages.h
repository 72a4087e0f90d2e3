#ifndef PYTHON_BIND_ALLOCLARGEPAGES_H
#define PYTHON_BIND_ALLOCLARGEPAGES_H

#include <cstddef>
#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zorpy
{

/// Takes memory that comes in large pages where the system has them, since getting small ones takes longer
/// than writing them. Only what is written counts as used.
///
/// @return null: there is none; else for std::realloc and std::free.
inline void* AllocLargePages(std::size_t nNumBytes) noexcept
{
    constexpr std::size_t c_nLargePage = std::size_t{1} << 21U;
    const std::size_t nWhole = (nNumBytes + c_nLargePage - 1) / c_nLargePage * c_nLargePage;
    void* const p = std::aligned_alloc(c_nLargePage, nWhole);
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    if (p != nullptr)
        static_cast<void>(madvise(p, nWhole, MADV_HUGEPAGE)); // an advice: refused, small pages do
#endif
    return p;
}

} // namespace zorpy

#endif
