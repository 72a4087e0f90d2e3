#ifndef OCTREE_CDIAGCOUNTER_H
#define OCTREE_CDIAGCOUNTER_H

#include <atomic>
#include <cstdint>

/// A diagnostic number that queries on several threads may change at once. Nothing is decided by it, so its
/// order among other memory does not matter. It wraps around instead of overflowing.
///
/// It is copied with the tree that it belongs to, which nobody else uses at that time.
class CDiagCounter
{
public:
    CDiagCounter() noexcept = default;
    CDiagCounter(const CDiagCounter& other) noexcept : m_n(other.Get()) {}
    CDiagCounter& operator=(const CDiagCounter& other) noexcept
    {
        if (this != &other)
            m_n.store(other.Get(), std::memory_order_relaxed);
        return *this;
    }

    void Reset() noexcept { m_n.store(0, std::memory_order_relaxed); }
    void Add(std::int32_t n) noexcept { m_n.fetch_add(n, std::memory_order_relaxed); }
    std::int32_t Get() const noexcept { return m_n.load(std::memory_order_relaxed); }

private:
    std::atomic<std::int32_t> m_n{0};
};

#endif
