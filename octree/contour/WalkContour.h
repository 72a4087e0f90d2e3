#ifndef OCTREE_CONTOUR_WALKCONTOUR_H
#define OCTREE_CONTOUR_WALKCONTOUR_H

#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>
#include <octree/contour/CContourRegion.h>

/// What a contour query delivers of the leaves under squares that straddle the contour.
enum class enumContourLeaf
{
    InsideRing,  ///< the points inside the outer ring
    OutsideRing, ///< those outside it
    Nothing
};

/// Walk of a contour query: squares wholly inside the region deliver all their live points, squares
/// outside none, and leaves under straddling squares are looked at point by point.
template <class T>
class CWalkContour
{
public:
    CWalkContour(const COcTreeData<T>& store, COcTreeListener<T>& listener,
                 const zor::geom::TMultiPartPolygon& polygon, enumContourLeaf eLeaf);

    /// Walks the whole tree. REQUIRES: a root.
    void Walk();

private:
    using Frame = CEdgeTracker::Frame;
    using Square = CContourRegion::Square;

    CPlanBox CalcBox(const COcTreeCube& cube) const noexcept;
    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const Square& square, const Frame& ring);
    void WalkChildren(const COcTreeNode& node, const COcTreeCube& cube, const Square& square,
                      const Frame& ring);
    void DeliverWhole(const COcTreeNode& node);
    void WalkLeaf(const COcTreeLeaf& leaf, const CPlanBox& box, const Frame& ring);
    bool IsWanted(std::int32_t nIndex, const CPlanBox& box, const Frame& ring) const;

    const COcTreeData<T>& m_store;
    COcTreeListener<T>& m_listener;
    const zor::geom::TMultiPartPolygon& m_polygon;
    enumContourLeaf m_eLeaf;
    CContourRegion m_region;
    CEdgeTracker m_ring; // the outer ring as given, for the points
};

extern template class CWalkContour<CTruncPnt>;
extern template class CWalkContour<CTruncPnt_Color>;

#endif
