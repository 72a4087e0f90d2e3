#ifndef FORMATS_CTAKENRUNS_H
#define FORMATS_CTAKENRUNS_H

#include <cstdint>
#include <vector>

/// The slots of an array that runs have taken, so that no slot is taken twice.
///
/// Runs that follow each other from the first slot on, as those of an octree that was built do, cost a
/// comparison each and no memory. From the first one that leaves a gap on there is a bit a slot, and coarser
/// bits above these, so that a run costs in proportion to the slots that it takes, and one that is refused
/// next to nothing, however long it is.
class CTakenRuns
{
public:
    explicit CTakenRuns(std::uint64_t nNumSlots) noexcept : m_nNumSlots(nNumSlots) {}

    /// Takes a run. A run without slots takes nothing, and overlaps nothing.
    /// @return false, and nothing is taken, when it is not inside the array or overlaps one taken before.
    ///         Throws std::bad_alloc.
    bool Take(std::uint32_t nCount, std::uint32_t nFirst)
    {
        const std::uint64_t nEnd = std::uint64_t{nFirst} + nCount;
        if (nEnd > m_nNumSlots)
            return false;
        if (nCount == 0)
            return true;
        if (nFirst != m_nTiledEnd || !m_vecLevels.empty())
            return TakeApart(nFirst, nEnd);
        m_nTiledEnd = nEnd;
        return true;
    }

    /// @return whether the runs tile the array: each begins where the one before ends, and none is missing.
    bool IsTiled() const noexcept { return m_vecLevels.empty() && m_nTiledEnd == m_nNumSlots; }

private:
    bool TakeApart(std::uint64_t nFirst, std::uint64_t nEnd);
    bool IsAnyTaken(std::uint64_t nFirst, std::uint64_t nEnd) const noexcept;
    void Mark(std::uint64_t nFirst, std::uint64_t nEnd) noexcept;

    using TWords = std::vector<std::uint64_t>;

    std::uint64_t m_nNumSlots;
    std::uint64_t m_nTiledEnd = 0; // while there are no bits: the slots below it are taken, and no others

    // A bit a slot; then, level by level, a bit for each word of the level below that has a bit set, up to a
    // level of one word. None while the runs follow each other.
    std::vector<TWords> m_vecLevels;
};

#endif
