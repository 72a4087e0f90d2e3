#include <tests/support/CFailingAlloc.h>

#include <cstddef>
#include <limits>
#include <new>

extern "C"
{
    void* __real_malloc(std::size_t nSize);
    void* __real_calloc(std::size_t nNum, std::size_t nSize);
    void* __real_realloc(void* p, std::size_t nSize);
    void __real_free(void* p);
}

namespace
{

constexpr std::int64_t c_nNoLimit = std::numeric_limits<std::int64_t>::max();

std::int64_t g_nNumLeft = c_nNoLimit; // allocations to let through
std::int64_t g_nNumBad = 0;           // those to fail after them
std::int64_t g_nNumFailed = 0;
std::int64_t g_nNumAllocs = 0;
std::int64_t g_nNumLive = 0;

bool MayAlloc() noexcept
{
    if (g_nNumLeft == c_nNoLimit)
        return true;
    if (g_nNumLeft > 0)
    {
        --g_nNumLeft;
        return true;
    }
    if (g_nNumBad == 0)
        return true;
    --g_nNumBad;
    ++g_nNumFailed;
    return false;
}

void* Count(void* p) noexcept
{
    if (p != nullptr)
    {
        ++g_nNumAllocs;
        ++g_nNumLive;
    }
    return p;
}

void* AllocOrNull(std::size_t nSize) noexcept
{
    return MayAlloc() ? Count(__real_malloc(nSize == 0 ? 1 : nSize)) : nullptr;
}

void* AllocOrThrow(std::size_t nSize)
{
    void* const p = AllocOrNull(nSize);
    if (p == nullptr)
        throw std::bad_alloc();
    return p;
}

void Release(void* p) noexcept
{
    if (p == nullptr)
        return;
    --g_nNumLive;
    __real_free(p);
}

} // namespace

CFailingAlloc::CFailingAlloc(std::int64_t nNumGood, std::int64_t nNumBad) noexcept
{
    g_nNumLeft = nNumGood;
    g_nNumBad = nNumBad;
}

CFailingAlloc::~CFailingAlloc()
{
    g_nNumLeft = c_nNoLimit;
}

std::int64_t CFailingAlloc::GetNumAllocs() noexcept
{
    return g_nNumAllocs;
}

std::int64_t CFailingAlloc::GetNumFailed() noexcept
{
    return g_nNumFailed;
}

std::int64_t CFailingAlloc::GetNumLive() noexcept
{
    return g_nNumLive;
}

extern "C"
{
    void* __wrap_malloc(std::size_t nSize);
    void* __wrap_calloc(std::size_t nNum, std::size_t nSize);
    void* __wrap_realloc(void* p, std::size_t nSize);
    void __wrap_free(void* p);

    void* __wrap_malloc(std::size_t nSize)
    {
        return MayAlloc() ? Count(__real_malloc(nSize)) : nullptr;
    }

    void* __wrap_calloc(std::size_t nNum, std::size_t nSize)
    {
        return MayAlloc() ? Count(__real_calloc(nNum, nSize)) : nullptr;
    }

    void* __wrap_realloc(void* p, std::size_t nSize)
    {
        if (!MayAlloc())
            return nullptr;
        void* const pNew = __real_realloc(p, nSize);
        return p == nullptr ? Count(pNew) : pNew;
    }

    void __wrap_free(void* p)
    {
        Release(p);
    }
}

// The other forms of the standard library end in these; those of the address sanitizer do not.
void* operator new(std::size_t nSize)
{
    return AllocOrThrow(nSize);
}

void* operator new[](std::size_t nSize)
{
    return AllocOrThrow(nSize);
}

void* operator new(std::size_t nSize, const std::nothrow_t&) noexcept
{
    return AllocOrNull(nSize);
}

void* operator new[](std::size_t nSize, const std::nothrow_t&) noexcept
{
    return AllocOrNull(nSize);
}

void operator delete(void* p) noexcept
{
    Release(p);
}

void operator delete[](void* p) noexcept
{
    Release(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    Release(p);
}

void operator delete[](void* p, std::size_t) noexcept
{
    Release(p);
}
