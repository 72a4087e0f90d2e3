#ifndef SUPPORT_CFAILINGALLOC_H
#define SUPPORT_CFAILINGALLOC_H

#include <cstdint>
#include <limits>

/// Makes the allocator of this executable fail: `operator new` throws, malloc and calloc return null.
///
/// Counts every allocation of the executable's own objects, so that a test can fail the first, the
/// second, and so on, until the operation asks for no more: FailEveryAlloc.h.
class CFailingAlloc
{
public:
    /// As long as this object lives: lets the next `nNumGood` allocations through, fails the `nNumBad` that
    /// follow, and lets all later ones through.
    explicit CFailingAlloc(std::int64_t nNumGood,
                           std::int64_t nNumBad = std::numeric_limits<std::int64_t>::max()) noexcept;
    ~CFailingAlloc();

    CFailingAlloc(const CFailingAlloc&) = delete;
    CFailingAlloc& operator=(const CFailingAlloc&) = delete;

    /// @return allocations that succeeded, since the program began.
    static std::int64_t GetNumAllocs() noexcept;

    /// @return allocations made to fail, since the program began.
    static std::int64_t GetNumFailed() noexcept;

    /// @return blocks allocated and not yet released.
    static std::int64_t GetNumLive() noexcept;
};

#endif
