#ifndef ANALYSIS_OUTLINE_COUTLINEPATH_H
#define ANALYSIS_OUTLINE_COUTLINEPATH_H

#include <analysis/outline/CSegmentGrid.h>
#include <zor3geom/TPlanBox.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The outline walked so far: point indices, first to last, and boxes around its segments.
///
/// Segment i leads from point i to point i + 1. Each box of the lowest level stands around 16 segments, each
/// box of the next level around 16 of these boxes, and so on: the segments that a new one could meet are
/// found without looking at the whole path. A path takes 6 bytes a point.
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

    /// @return how many segments, and boxes around segments, have been looked at so far.
    std::int64_t GetNumLooks() const noexcept { return m_nNumLooks; }

    using TBox = zor::geom::TPlanBox<std::int32_t>; // compact units

    /// Lists the segments in a grid from here on, which takes about 30 bytes a point and 4 a cell and is
    /// faster for paths that lie side by side with themselves.
    ///
    /// @param box  all points to come lie in it. Throws std::bad_alloc.
    void MakeGrid(TBox box, std::size_t nNumCells);

    /// @return null before MakeGrid.
    const CSegmentGrid* GetGrid() const noexcept { return m_pGrid.get(); }

private:
    class CCandidate;

    static constexpr std::size_t c_nFanOut = 16;

    const T& GetPnt(std::size_t i) const noexcept { return m_pPnts[m_vecPath[i]]; }
    TBox GetItem(std::size_t nLevel, std::size_t i) const noexcept;
    std::size_t GetNumItems(std::size_t nLevel) const noexcept
    {
        return nLevel == 0 ? m_vecPath.size() - 1 : m_vecLevels[nLevel - 1].size();
    }
    TBox CalcBlock(std::size_t nLevel, std::size_t nBlock) const noexcept;
    bool MeetsBlock(const CCandidate& candidate, std::size_t nLevel, std::size_t nBlock) const noexcept;
    bool MeetsSegment(const CCandidate& candidate, std::size_t i) const noexcept;

    const T* m_pPnts;
    std::vector<std::int32_t> m_vecPath;
    std::vector<std::vector<TBox>> m_vecLevels; // boxes around c_nFanOut items of the level below
    std::unique_ptr<CSegmentGrid> m_pGrid;      // null: the boxes are kept; else they are not
    mutable std::int64_t m_nNumLooks = 0;
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class COutlinePath<CTruncPnt>;
extern template class COutlinePath<CTruncPnt_Color>;

#endif
