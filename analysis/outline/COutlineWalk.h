#ifndef ANALYSIS_OUTLINE_COUTLINEWALK_H
#define ANALYSIS_OUTLINE_COUTLINEWALK_H

#include <analysis/outline/CNextPnt.h>
#include <analysis/outline/COutlinePath.h>
#include <analysis/outline/CPlanIndex.h>
#include <octree/COcTreeIndex.h>
#include <zor4data/enumOutline.h>

#include <cstdint>
#include <memory>
#include <vector>

/// Walk around a set of points in plan view, clockwise, the set on the right.
///
/// From each point the walk takes the sharpest left turn that does not meet the path so far, to a
/// point no farther than the step; where there is none it tries two steps, and so on up to ten. A
/// point from which no step leads on is given up, and the walk goes back to the one before.
///
/// A walk asks the tree, which costs nothing beforehand. One that has looked at many points, since it meets
/// many dead ends or its steps are long, makes an index of those that are left.
template <class T>
class COutlineWalk
{
public:
    /// @param pPnts  the store's points.
    /// @param pOpen  one bit a point: the set. The bits of the points walked to are cleared.
    /// @param dStep  compact units.
    /// @param nPatience  looks at points after which the index is made. Changes nothing but the cost.
    ///
    /// REQUIRES: a tree with a root.
    COutlineWalk(const COcTreeIndex& tree, const T* pPnts, unsigned char* pOpen, double dStep,
                 std::int64_t nPatience)
        : m_tree(tree), m_pPnts(pPnts), m_pOpen(pOpen), m_rings(dStep), m_nPatience(nPatience), m_path(pPnts)
    {
    }

    /// Walks until the start point is reached again. To be called once. Throws std::bad_alloc.
    ///
    /// @param nStart  a point of the set.
    /// @param nMaxLooks  looks after which the walk is left off, at the next point.
    /// @return Outline_None when there is no way back to it.
    enumOutline Walk(std::int32_t nStart, std::int64_t nMaxLooks);

    /// @return the points of the walk, the start point first and, if it was reached again, last.
    const std::vector<std::int32_t>& GetPath() const noexcept { return m_path.GetIndices(); }

    /// @return how often the walk has looked at a point, a box of points, or a segment of the path
    ///         or a box of them: the work done.
    std::int64_t GetNumLooks() const noexcept { return m_nNumLooks + m_path.GetNumLooks(); }

private:
    template <class OnPnt>
    void VisitRing(int nRing, OnPnt onPnt);

    std::int32_t FindNext(std::int32_t nGivenUp);
    std::int32_t FindFirst();
    void FindInTree(CNextPnt<T>& next);
    void FindInIndex(CNextPnt<T>& next, double dTried, double dMost);
    void FindInRings(CNextPnt<T>& next, std::int32_t nGivenUp);
    void MakeIndex();
    bool IsGivenUpAgain(std::int32_t nIndex, std::int32_t nGivenUp, std::int32_t nStart) const noexcept;

    const COcTreeIndex& m_tree;
    const T* m_pPnts;
    unsigned char* m_pOpen;
    CStepRings m_rings;
    std::int64_t m_nPatience;
    std::int64_t m_nNumLooks = 0;
    COutlinePath<T> m_path;
    CPathView m_view;
    std::unique_ptr<CPlanIndex<T>> m_pIndex; // null: not made
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class COutlineWalk<CTruncPnt>;
extern template class COutlineWalk<CTruncPnt_Color>;

#endif
