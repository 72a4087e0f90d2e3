#ifndef OCTREE_CONTOUR_WALKCONTOUR_H
#define OCTREE_CONTOUR_WALKCONTOUR_H

#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>
#include <octree/contour/CEnteredSquare.h>

/// What a contour query delivers of the leaves under squares that straddle the contour.
enum class enumContourLeaf
{
    InsideRing,  ///< the points inside the outer ring
    OutsideRing, ///< those outside it
    Nothing
};

/// Walk of a contour query: squares wholly inside the region deliver all their live points, squares
/// outside none, and leaves under straddling squares are looked at point by point.
///
/// Each square on the way down is entered (`CEnteredSquare`): of the contour's edges only those near it are
/// looked at there, so that a test costs what lies near it, however long the contour is.
template <class T>
class CWalkContour
{
public:
    CWalkContour(const COcTreeData<T>& store, COcTreeListener<T>& listener,
                 const zor::geom::TMultiPartPolygon& polygon, enumContourLeaf eLeaf);

    /// Walks the whole tree. REQUIRES: a root.
    void Walk();

private:
    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const CEnteredSquare& square);
    void WalkChildren(const COcTreeNode& node, const COcTreeCube& cube, const CEnteredSquare& square);
    void WalkLeaf(const COcTreeLeaf& leaf, const CEnteredSquare& square);
    bool IsWanted(std::int32_t nIndex, const CEnteredSquare& square) const;

    const COcTreeData<T>& m_store;
    COcTreeListener<T>& m_listener;
    const zor::geom::TMultiPartPolygon& m_polygon;
    enumContourLeaf m_eLeaf;
    CContourStacks m_stacks;
};

extern template class CWalkContour<CTruncPnt>;
extern template class CWalkContour<CTruncPnt_Color>;

#endif
