#ifndef ANALYSIS_OUTLINE_COUTLINEPATH_H
#define ANALYSIS_OUTLINE_COUTLINEPATH_H

#include <algorithm>
#include <cstdint>
#include <vector>

/// Box around segments of a path, compact units.
struct CPathBox
{
    std::int32_t m_nXMin;
    std::int32_t m_nYMin;
    std::int32_t m_nXMax;
    std::int32_t m_nYMax;

    template <class T>
    static CPathBox Around(const T& a, const T& b) noexcept
    {
        return {std::min(a.m_nX, b.m_nX), std::min(a.m_nY, b.m_nY), std::max(a.m_nX, b.m_nX),
                std::max(a.m_nY, b.m_nY)};
    }

    /// Do the boxes have a point in common?
    bool Meets(const CPathBox& box) const noexcept
    {
        return m_nXMin <= box.m_nXMax && box.m_nXMin <= m_nXMax && m_nYMin <= box.m_nYMax &&
               box.m_nYMin <= m_nYMax;
    }

    void Extend(const CPathBox& box) noexcept
    {
        m_nXMin = std::min(m_nXMin, box.m_nXMin);
        m_nYMin = std::min(m_nYMin, box.m_nYMin);
        m_nXMax = std::max(m_nXMax, box.m_nXMax);
        m_nYMax = std::max(m_nYMax, box.m_nYMax);
    }
};

/// The outline walked so far: point indices, first to last, and boxes around its segments.
///
/// Segment i leads from point i to point i + 1. Boxes stand around 16 segments each, boxes of the next
/// level around 16 boxes each, and so on: what a new segment could meet is found without looking at
/// the whole path. A path takes 6 bytes a point.
template <class T>
class COutlinePath
{
public:
    /// @param pPnts  the store's points.
    explicit COutlinePath(const T* pPnts) : m_pPnts(pPnts) {}

    bool IsEmpty() const noexcept { return m_vecPath.empty(); }
    std::size_t GetNumPnts() const noexcept { return m_vecPath.size(); }
    const std::vector<std::int32_t>& GetIndices() const noexcept { return m_vecPath; }

    std::int32_t GetFirst() const noexcept { return m_vecPath.front(); }
    std::int32_t GetLast() const noexcept { return m_vecPath.back(); }
    std::int32_t GetLastButOne() const noexcept { return m_vecPath[m_vecPath.size() - 2]; }

    /// Throws std::bad_alloc; the path is then good for nothing.
    void Push(std::int32_t nIndex);

    /// REQUIRES: not IsEmpty().
    void Pop() noexcept;

    /// @return whether the segment from the last point to point `nIndex` meets a segment of the path
    ///         other than the last one, at an end or anywhere. Where the path is closed at its first
    ///         point, the segments that begin at its place do not count.
    bool IsCrossedBy(std::int32_t nIndex) const noexcept;

private:
    class CCandidate;

    static constexpr std::size_t c_nFanOut = 16;

    const T& GetPnt(std::size_t i) const noexcept { return m_pPnts[m_vecPath[i]]; }
    CPathBox GetItem(std::size_t nLevel, std::size_t i) const noexcept;
    std::size_t GetNumItems(std::size_t nLevel) const noexcept;
    CPathBox CalcBlock(std::size_t nLevel, std::size_t nBlock) const noexcept;
    bool MeetsBlock(const CCandidate& candidate, std::size_t nLevel, std::size_t nBlock) const noexcept;
    bool MeetsSegment(const CCandidate& candidate, std::size_t i) const noexcept;

    const T* m_pPnts;
    std::vector<std::int32_t> m_vecPath;
    std::vector<std::vector<CPathBox>> m_vecLevels; // boxes around c_nFanOut items of the level below
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class COutlinePath<CTruncPnt>;
extern template class COutlinePath<CTruncPnt_Color>;

#endif
