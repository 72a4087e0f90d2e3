#ifndef SUPPORT_CFAILINGALLOC_H
#define SUPPORT_CFAILINGALLOC_H

#include <cstdint>

/// Makes the allocator of this executable fail: `operator new` throws, malloc and calloc return null.
///
/// Counts every allocation of the executable's own objects, so that a test can fail the first, the
/// second, and so on, until the operation gets through.
class CFailingAlloc
{
public:
    /// Lets the next `nNumGood` allocations through and fails all later ones as long as this object lives.
    explicit CFailingAlloc(std::int64_t nNumGood) noexcept;
    ~CFailingAlloc();

    CFailingAlloc(const CFailingAlloc&) = delete;
    CFailingAlloc& operator=(const CFailingAlloc&) = delete;

    /// @return allocations that succeeded, since the program began.
    static std::int64_t GetNumAllocs() noexcept;

    /// @return blocks allocated and not yet released.
    static std::int64_t GetNumLive() noexcept;
};

#endif
