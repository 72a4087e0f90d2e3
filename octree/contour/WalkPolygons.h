#ifndef OCTREE_CONTOUR_WALKPOLYGONS_H
#define OCTREE_CONTOUR_WALKPOLYGONS_H

#include <octree/CIndexVisitor.h>
#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>
#include <octree/contour/CPolygonTracker.h>

/// Walk that delivers exactly the live points inside polygons, or outside all of them: squares that no edge
/// meets deliver all or nothing, leaves under other squares are looked at point by point.
///
/// L3: squares are not the nominal ones, out of which a point may lie, but what the splitting planes leave of
/// the box of all points. Their sides are those of points, in coordinates as points are delivered, so that no
/// rounding comes between a square and its points. Where L3 does not hold, in the tree of a damaged file or
/// one that points were added behind, a point counts by its square.
template <class T, class Visitor>
class CWalkPolygons
{
public:
    using TBox = zor::geom::TPlanBox<std::int64_t>; // compact units, both sides in it

    CWalkPolygons(const COcTreeData<T>& store, Visitor& listener,
                  const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside)
        : m_store(store), m_listener(listener), m_tracker(vecPolygons), m_bOutside(bOutside)
    {
    }

    /// Walks the whole tree. REQUIRES: a root.
    void Walk();

private:
    using CFrame = CPolygonTracker::CFrame;

    TBox CalcRootBox() const noexcept;
    double CalcX(std::int64_t n) const noexcept;
    double CalcY(std::int64_t n) const noexcept;
    bool IsWhole(const CFrame& frame) const noexcept;
    void WalkChildren(const COcTreeNode& node, const COcTreeCube& cube, const TBox& box, const CFrame& frame);
    void WalkChild(const COcTreeChild& child, const COcTreeCube& cube, const TBox& box, const CFrame& frame);
    void WalkLeaf(const COcTreeLeaf& leaf, const CFrame& frame);

    const COcTreeData<T>& m_store;
    Visitor& m_listener;
    CPolygonTracker m_tracker;
    bool m_bOutside;
};

extern template class CWalkPolygons<CTruncPnt, COcTreeListener<CTruncPnt>>;
extern template class CWalkPolygons<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>;
extern template class CWalkPolygons<CTruncPnt, CIndexVisitor<CTruncPnt>>;
extern template class CWalkPolygons<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>;

#endif
