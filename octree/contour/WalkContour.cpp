#include <octree/contour/WalkContour.h>

#include <octree/NodeRun.h>
#include <zor3geom/IsPntInsidePolygon.h>

template <class T>
CWalkContour<T>::CWalkContour(const COcTreeData<T>& store, COcTreeListener<T>& listener,
                              const zor::geom::TMultiPartPolygon& polygon, enumContourLeaf eLeaf)
    : m_store(store), m_listener(listener), m_polygon(polygon), m_eLeaf(eLeaf), m_region(polygon)
{
    if (m_eLeaf != enumContourLeaf::Nothing)
        m_ring.AddRing(polygon.outer);
}

/// The plan square of a cube, coordinate units.
template <class T>
CPlanBox CWalkContour<T>::CalcBox(const COcTreeCube& cube) const noexcept
{
    const auto calcCoord = [](std::int64_t n, float fOrg)
    { return static_cast<double>(n) / c_dCompactScale + static_cast<double>(fOrg); };
    const std::int64_t nHalf = cube.GetHalfEdge();
    return {calcCoord(cube.m_nX - nHalf, m_store.m_fOrgX), calcCoord(cube.m_nY - nHalf, m_store.m_fOrgY),
            calcCoord(cube.m_nX + nHalf, m_store.m_fOrgX), calcCoord(cube.m_nY + nHalf, m_store.m_fOrgY)};
}

template <class T>
void CWalkContour<T>::Walk()
{
    const COcTreeIndex& tree = *m_store.m_pTree;
    const CPlanBox box = CalcBox(tree.GetRootCube());
    const Square square = m_region.EnterRoot(box);
    WalkNode(*tree.m_pRoot, tree.GetRootCube(), square, m_ring.EnterRoot(square.m_frame.m_place));
}

template <class T>
void CWalkContour<T>::WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const Square& square,
                               const Frame& ring)
{
    const enumSide eSide = m_region.ClassifySquare(square);
    if (eSide == enumSide::Outside)
        return;
    if (eSide == enumSide::Straddling)
    {
        WalkChildren(node, cube, square, ring);
        return;
    }
    DeliverWhole(node);
}

template <class T>
void CWalkContour<T>::DeliverWhole(const COcTreeNode& node)
{
    if (m_store.m_pTree->m_bTiled)
    {
        const CNodeRun run = CalcNodeRun(node);
        m_listener.OnRun(run.m_nFirst, run.m_nCount);
        return;
    }
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf())
            m_listener.OnRun(child.GetLeaf().m_nFirst, child.GetLeaf().m_nCount);
        else
            DeliverWhole(child.GetNode());
    }
}

template <class T>
void CWalkContour<T>::WalkChildren(const COcTreeNode& node, const COcTreeCube& cube, const Square& square,
                                   const Frame& ring)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf() && m_eLeaf == enumContourLeaf::Nothing)
            continue;
        const COcTreeCube childCube = cube.GetChild(child.GetOctant());
        const CPlanBox box = CalcBox(childCube);
        const zor::geom::PNT_2D centre((box.m_dXMin + box.m_dXMax) / 2.0, (box.m_dYMin + box.m_dYMax) / 2.0);
        const Frame childRing = m_ring.Enter(ring, centre, GetNeighbourhood(box));
        if (child.IsLeaf())
            WalkLeaf(child.GetLeaf(), GetNeighbourhood(box), childRing);
        else
        {
            const Square childSquare = m_region.Enter(square, box);
            WalkNode(child.GetNode(), childCube, childSquare, childRing);
            m_region.Leave(childSquare);
        }
        m_ring.Leave(childRing);
    }
}

/// @param box   neighbourhood of the leaf's square, for which `ring` holds.
template <class T>
void CWalkContour<T>::WalkLeaf(const COcTreeLeaf& leaf, const CPlanBox& box, const Frame& ring)
{
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
        if (!m_listener.IsDeleted(i) && IsWanted(i, box, ring))
            m_listener.OnPnt(i);
}

template <class T>
bool CWalkContour<T>::IsWanted(std::int32_t nIndex, const CPlanBox& box, const Frame& ring) const
{
    const T& rec = m_listener.GetRecord(nIndex);
    const zor::geom::PNT_2D pnt(CoordFromCompact(rec.m_nX, m_store.m_fOrgX),
                                CoordFromCompact(rec.m_nY, m_store.m_fOrgY));
    const bool bInside = box.Contains(pnt) ? m_ring.IsInsideOrOn(ring, pnt)
                                           : zor::geom::IsPntInsidePolygon(m_polygon.outer, pnt);
    return bInside == (m_eLeaf == enumContourLeaf::InsideRing);
}

template class CWalkContour<CTruncPnt>;
template class CWalkContour<CTruncPnt_Color>;
