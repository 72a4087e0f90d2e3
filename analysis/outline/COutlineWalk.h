#ifndef ANALYSIS_OUTLINE_COUTLINEWALK_H
#define ANALYSIS_OUTLINE_COUTLINEWALK_H

#include <analysis/outline/COutlinePath.h>
#include <octree/COcTreeIndex.h>

#include <cstdint>
#include <vector>

/// Walk around a set of points in plan view, clockwise, the set on the right.
///
/// From each point the walk takes the sharpest left turn that does not meet the path so far, to a
/// point no farther than the step; where there is none it tries two steps, and so on up to ten. A
/// point from which no step leads on is given up, and the walk goes back to the one before.
template <class T>
class COutlineWalk
{
public:
    /// @param pPnts  the store's points.
    /// @param pOpen  one bit a point: the set. The bits of the points walked to are cleared.
    /// @param dStep  compact units.
    ///
    /// REQUIRES: a tree with a root.
    COutlineWalk(const COcTreeIndex& tree, const T* pPnts, unsigned char* pOpen, double dStep)
        : m_tree(tree), m_pPnts(pPnts), m_pOpen(pOpen), m_dStep(dStep), m_path(pPnts)
    {
    }

    /// Walks until the start point is reached again. To be called once. Throws std::bad_alloc.
    ///
    /// @param nStart  a point of the set.
    /// @return false when there is no way back to it.
    bool Walk(std::int32_t nStart);

    /// @return the points of the walk, the start point first and, if it was reached again, last.
    const std::vector<std::int32_t>& GetPath() const noexcept { return m_path.GetIndices(); }

private:
    template <class OnPnt>
    void VisitNear(double dRadius, double dTried, OnPnt onPnt) const;

    std::int32_t FindNext() const;
    std::int32_t FindFirst(double dRadius, double dTried) const;
    std::int32_t FindSharpest(double dRadius, double dTried) const;

    const COcTreeIndex& m_tree;
    const T* m_pPnts;
    unsigned char* m_pOpen;
    double m_dStep;
    COutlinePath<T> m_path;
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class COutlineWalk<CTruncPnt>;
extern template class COutlineWalk<CTruncPnt_Color>;

#endif
