#ifndef ANALYSIS_OUTLINE_COPENPNTS_H
#define ANALYSIS_OUTLINE_COPENPNTS_H

#include <zor3geom/TPlanBox.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Points by their place in plan view: a binary tree of boxes, from which points that are no longer open drop
/// out as they are met. About 17 bytes a point.
class COpenPnts
{
public:
    using TBox = zor::geom::TPlanBox<std::int32_t>; // compact units

    struct CEntry
    {
        std::int32_t x;
        std::int32_t y;
        std::int32_t nIndex;
    };

    /// Throws std::bad_alloc.
    explicit COpenPnts(std::vector<CEntry> vecEntries);

    std::size_t GetNumPnts() const noexcept { return m_vecEntries.size(); } ///< those no longer open, too
    const TBox& GetBox() const noexcept { return m_vecBoxes[0]; }

    /// Shows `onPnt(entry)` the points under all boxes that are wanted, the nearer of two boxes first.
    ///
    /// @param calcSquare  `calcSquare(box)`: the square of the distance of a box.
    /// @param isWanted    `isWanted(box, square)`: false leaves out the points of the box.
    /// @param isOpen      `isOpen(index)`: a point once closed must stay closed.
    template <class CalcSquare, class IsWanted, class IsOpen, class OnPnt>
    void Visit(CalcSquare calcSquare, IsWanted isWanted, IsOpen isOpen, OnPnt onPnt)
    {
        CVisit<CalcSquare, IsWanted, IsOpen, OnPnt> visit{calcSquare, isWanted, isOpen, onPnt};
        if (!m_vecBoxes[0].IsEmpty() && isWanted(m_vecBoxes[0], calcSquare(m_vecBoxes[0])))
            VisitNode(visit, 0, 0, 0);
    }

private:
    template <class CalcSquare, class IsWanted, class IsOpen, class OnPnt>
    struct CVisit
    {
        CalcSquare& calcSquare;
        IsWanted& isWanted;
        IsOpen& isOpen;
        OnPnt& onPnt;
    };

    void Build(std::size_t nNode, int nLevel, std::size_t nOnLevel);

    /// First entry of a node of a level; the node behind begins where it ends.
    std::size_t GetBegin(int nLevel, std::size_t nOnLevel) const noexcept
    {
        return (m_vecEntries.size() * nOnLevel) >> nLevel;
    }

    template <class TVisit>
    void VisitNode(TVisit& visit, std::size_t nNode, int nLevel, std::size_t nOnLevel);
    template <class TVisit>
    void VisitLeaf(TVisit& visit, std::size_t nNode, std::size_t nLeaf);

    std::vector<CEntry> m_vecEntries;    // leaf by leaf, the open ones of a leaf first
    std::vector<TBox> m_vecBoxes;        // of the nodes: the children of node i are 2 i + 1 and 2 i + 2
    std::vector<unsigned char> m_vecNum; // of each leaf's points, those that may be open
    int m_nNumLevels = 0;                // of inner nodes
};

template <class TVisit>
void COpenPnts::VisitLeaf(TVisit& visit, std::size_t nNode, std::size_t nLeaf)
{
    const std::size_t nBegin = GetBegin(m_nNumLevels, nLeaf);
    std::size_t nEnd = nBegin + m_vecNum[nLeaf];
    TBox box = TBox::GetEmpty();
    for (std::size_t i = nBegin; i < nEnd;)
    {
        const CEntry entry = m_vecEntries[i];
        if (!visit.isOpen(entry.nIndex))
        {
            m_vecEntries[i] = m_vecEntries[--nEnd];
            continue;
        }
        box.Add(entry.x, entry.y);
        visit.onPnt(entry);
        ++i;
    }
    m_vecNum[nLeaf] = static_cast<unsigned char>(nEnd - nBegin);
    m_vecBoxes[nNode] = box;
}

/// The recursion is bounded: a tree of all indices has 28 levels.
template <class TVisit>
void COpenPnts::VisitNode(TVisit& visit, std::size_t nNode, int nLevel, std::size_t nOnLevel)
{
    if (nLevel == m_nNumLevels)
    {
        VisitLeaf(visit, nNode, nOnLevel);
        return;
    }
    const std::size_t nLow = 2 * nNode + 1;
    const TBox& low = m_vecBoxes[nLow];
    const TBox& high = m_vecBoxes[nLow + 1];
    const double dLow = low.IsEmpty() ? 0.0 : visit.calcSquare(low);
    const double dHigh = high.IsEmpty() ? 0.0 : visit.calcSquare(high);
    const std::size_t nFirst = dLow <= dHigh ? 0 : 1;
    for (const std::size_t k : {nFirst, 1 - nFirst})
    {
        const TBox& box = m_vecBoxes[nLow + k];
        if (!box.IsEmpty() && visit.isWanted(box, k == 0 ? dLow : dHigh))
            VisitNode(visit, nLow + k, nLevel + 1, 2 * nOnLevel + k);
    }
    TBox box = low;
    box.Extend(high);
    m_vecBoxes[nNode] = box;
}

#endif
