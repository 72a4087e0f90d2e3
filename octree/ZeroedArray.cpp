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
    const std::uintptr_t nBytes = reinterpret_cast<std::uintptr_t>(pBytes);
    const std::size_t nSkipped = (c_nLargePage - nBytes % c_nLargePage) % c_nLargePage;
    const std::size_t nAdvised = (nNumBytes - nSkipped) / c_nLargePage * c_nLargePage;
    // An advice: that the system refuses it does not matter.
    static_cast<void>(madvise(static_cast<char*>(pBytes) + nSkipped, nAdvised, MADV_HUGEPAGE));
#else
    static_cast<void>(pBytes);
    static_cast<void>(nNumBytes);
#endif
}
