#ifndef OCTREE_CDELIVERED_H
#define OCTREE_CDELIVERED_H

#include <formats/Compact.h>

/// What one query has delivered through the tree. Summed here and added to the tree's own counters once, at
/// the end: queries on other threads count there too.
class CDelivered
{
public:
    void CountPnts(std::int32_t n) noexcept { m_nNumPnts = WrapAdd(m_nNumPnts, n); }
    void CountLeaves(std::int32_t n) noexcept { m_nNumLeaves = WrapAdd(m_nNumLeaves, n); }

    std::int32_t GetNumPnts() const noexcept { return m_nNumPnts; }

    /// Leaves delivered whole.
    std::int32_t GetNumLeaves() const noexcept { return m_nNumLeaves; }

private:
    std::int32_t m_nNumPnts = 0;
    std::int32_t m_nNumLeaves = 0;
};

#endif
