#include <octree/ZeroedArray.h>

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

void AdviseLargePages(void* pBytes, std::size_t nNumBytes) noexcept
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t c_nLargePage = std::uintptr_t{1} << 21U;
    if (nNumBytes < 2 * c_nLargePage)
        return;
    const std::uintptr_t nBegin =
        (reinterpret_cast<std::uintptr_t>(pBytes) + c_nLargePage - 1) & ~(c_nLargePage - 1);
    const std::uintptr_t nEnd = (reinterpret_cast<std::uintptr_t>(pBytes) + nNumBytes) & ~(c_nLargePage - 1);
    if (nEnd > nBegin) // an advice: that the system refuses it does not matter
        madvise(reinterpret_cast<void*>(nBegin), nEnd - nBegin, MADV_HUGEPAGE);
#else
    static_cast<void>(pBytes);
    static_cast<void>(nNumBytes);
#endif
}
