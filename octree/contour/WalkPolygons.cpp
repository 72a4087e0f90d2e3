#include <octree/contour/WalkPolygons.h>

#include <octree/DeliverWhole.h>

#include <algorithm>
#include <limits>

using zor::geom::PNT_2D;

namespace
{

constexpr std::int64_t c_nMinInt32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t c_nMaxInt32 = std::numeric_limits<std::int32_t>::max();

/// The offsets along an axis that all points of a tree have.
struct CSpan
{
    std::int64_t nMin;
    std::int64_t nMax;
};

/// Centre and extent are truncated: the points reach up to one unit farther on either side. An extent that is
/// as large as it can be may stand for a larger one, and one below zero is a damaged file's.
CSpan CalcSpan(std::int64_t nCentre, std::int64_t nExtent) noexcept
{
    if (nExtent < 0 || nExtent >= c_nMaxInt32)
        return {c_nMinInt32, c_nMaxInt32};
    const std::int64_t nHalf = nExtent / 2 + 2;
    return {std::max(nCentre - nHalf, c_nMinInt32), std::min(nCentre + nHalf, c_nMaxInt32)};
}

} // namespace

template <class T, class Visitor>
typename CWalkPolygons<T, Visitor>::TBox CWalkPolygons<T, Visitor>::CalcRootBox() const noexcept
{
    const COcTreeIndex& tree = *m_store.m_pTree;
    const CSpan x = CalcSpan(tree.m_nCentreX, tree.m_nExtentX);
    const CSpan y = CalcSpan(tree.m_nCentreY, tree.m_nExtentY);
    return {x.nMin, y.nMin, x.nMax, y.nMax};
}

// Offsets of a box are an int32's; the conversion is the points' own, and rises with the offset.
template <class T, class Visitor>
double CWalkPolygons<T, Visitor>::CalcX(std::int64_t n) const noexcept
{
    return CoordFromCompact(static_cast<std::int32_t>(n), m_store.m_fOrgX);
}

template <class T, class Visitor>
double CWalkPolygons<T, Visitor>::CalcY(std::int64_t n) const noexcept
{
    return CoordFromCompact(static_cast<std::int32_t>(n), m_store.m_fOrgY);
}

template <class T, class Visitor>
void CWalkPolygons<T, Visitor>::Walk()
{
    const COcTreeIndex& tree = *m_store.m_pTree;
    const TBox box = CalcRootBox();
    const CFrame frame =
        m_tracker.EnterRoot({CalcX(box.xmin), CalcY(box.ymin), CalcX(box.xmax), CalcY(box.ymax)});
    if (frame.eSide == enumSide::Straddling)
        WalkChildren(*tree.m_pRoot, tree.GetRootCube(), box, frame);
    else if (IsWhole(frame))
        DeliverWhole(tree, m_listener, *tree.m_pRoot);
}

/// @return whether the whole square is asked for. REQUIRES: it does not straddle an edge.
template <class T, class Visitor>
bool CWalkPolygons<T, Visitor>::IsWhole(const CFrame& frame) const noexcept
{
    return (frame.eSide == enumSide::Outside) == m_bOutside;
}

template <class T, class Visitor>
void CWalkPolygons<T, Visitor>::WalkChildren(const COcTreeNode& node, const COcTreeCube& cube,
                                             const TBox& box, const CFrame& frame)
{
    // L3: on the plane a point lies in the upper half. A plane beside the box leaves a half that has no
    // point.
    const TBox cut{std::clamp(cube.nX, box.xmin, box.xmax), std::clamp(cube.nY, box.ymin, box.ymax),
                   std::clamp(cube.nX - 1, box.xmin, box.xmax), std::clamp(cube.nY - 1, box.ymin, box.ymax)};
    m_listener.CountWork(m_tracker.CountEdges(frame));
    const CPolygonTracker::CQuarters quarters(
        m_tracker, frame, {CalcX(cut.xmax), CalcX(cut.xmin), CalcY(cut.ymax), CalcY(cut.ymin)});
    for (const COcTreeChild child : node.GetChildren())
    {
        const int nOctant = child.GetOctant();
        const TBox childBox{
            (nOctant & 4) != 0 ? cut.xmin : box.xmin, (nOctant & 2) != 0 ? cut.ymin : box.ymin,
            (nOctant & 4) != 0 ? box.xmax : cut.xmax, (nOctant & 2) != 0 ? box.ymax : cut.ymax};
        WalkChild(child, cube, childBox, quarters.Get(static_cast<std::size_t>(nOctant / 2)));
    }
}

/// @param cube  of the node above; `box` and `frame` are the child's.
template <class T, class Visitor>
void CWalkPolygons<T, Visitor>::WalkChild(const COcTreeChild& child, const COcTreeCube& cube, const TBox& box,
                                          const CFrame& frame)
{
    if (frame.eSide != enumSide::Straddling && !IsWhole(frame))
        return;
    if (frame.eSide == enumSide::Straddling && child.IsLeaf())
        WalkLeaf(child.GetLeaf(), frame);
    else if (frame.eSide == enumSide::Straddling)
        WalkChildren(child.GetNode(), cube.GetChild(child.GetOctant()), box, frame);
    else if (child.IsLeaf())
        m_listener.OnRun(child.GetLeaf().m_nFirst, child.GetLeaf().m_nCount);
    else
        DeliverWhole(*m_store.m_pTree, m_listener, child.GetNode());
}

template <class T, class Visitor>
void CWalkPolygons<T, Visitor>::WalkLeaf(const COcTreeLeaf& leaf, const CFrame& frame)
{
    m_listener.CountWork(m_tracker.CountEdges(frame) * static_cast<std::size_t>(leaf.m_nCount));
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
    {
        if (m_listener.IsDeleted(i))
            continue;
        const T& rec = m_listener.GetRecord(i);
        const PNT_2D pnt(CalcX(rec.m_nX), CalcY(rec.m_nY));
        if (m_tracker.Contains(frame, pnt) != m_bOutside)
            m_listener.OnPnt(i);
    }
}

template class CWalkPolygons<CTruncPnt, COcTreeListener<CTruncPnt>>;
template class CWalkPolygons<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>;
template class CWalkPolygons<CTruncPnt, CIndexVisitor<CTruncPnt>>;
template class CWalkPolygons<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>;
