#include <octree/contour/WalkContour.h>

#include <octree/DeliverWhole.h>
#include <zor3geom/IsPntInsidePolygon.h>

template <class T>
CWalkContour<T>::CWalkContour(const COcTreeData<T>& store, COcTreeListener<T>& listener,
                              const zor::geom::TMultiPartPolygon& polygon, enumContourLeaf eLeaf)
    : m_store(store), m_listener(listener), m_polygon(polygon),
      m_eLeaf(eLeaf), m_stacks{CContourRegion(polygon), {}}
{
    if (m_eLeaf != enumContourLeaf::Nothing)
        m_stacks.ring.AddRing(polygon.outer);
}

template <class T>
void CWalkContour<T>::Walk()
{
    const COcTreeIndex& tree = *m_store.m_pTree;
    const COcTreeCube cube = tree.GetRootCube();
    WalkNode(*tree.m_pRoot, cube, CEnteredSquare(m_stacks, CalcContourSquare(m_store, cube)));
}

template <class T>
void CWalkContour<T>::WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const CEnteredSquare& square)
{
    const enumSide eSide = square.Classify();
    if (eSide == enumSide::Straddling)
        WalkChildren(node, cube, square);
    else if (eSide == enumSide::Inside)
        DeliverWhole(*m_store.m_pTree, m_listener, node);
}

template <class T>
void CWalkContour<T>::WalkChildren(const COcTreeNode& node, const COcTreeCube& cube,
                                   const CEnteredSquare& square)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf() && m_eLeaf == enumContourLeaf::Nothing)
            continue;
        const COcTreeCube childCube = cube.GetChild(child.GetOctant());
        const CEnteredSquare childSquare(square, CalcContourSquare(m_store, childCube), child.IsLeaf());
        if (child.IsLeaf())
            WalkLeaf(child.GetLeaf(), childSquare);
        else
            WalkNode(child.GetNode(), childCube, childSquare);
    }
}

template <class T>
void CWalkContour<T>::WalkLeaf(const COcTreeLeaf& leaf, const CEnteredSquare& square)
{
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
        if (!m_listener.IsDeleted(i) && IsWanted(i, square))
            m_listener.OnPnt(i);
}

// The points of a file may lie anywhere: far from their square the ring is asked as a whole.
template <class T>
bool CWalkContour<T>::IsWanted(std::int32_t nIndex, const CEnteredSquare& square) const
{
    const T& rec = m_listener.GetRecord(nIndex);
    const zor::geom::PNT_2D pnt(CoordFromCompact(rec.m_nX, m_store.m_fOrgX),
                                CoordFromCompact(rec.m_nY, m_store.m_fOrgY));
    const bool bInside =
        square.IsAround(pnt) ? square.IsInRing(pnt) : zor::geom::IsPntInsidePolygon(m_polygon.outer, pnt);
    return bInside == (m_eLeaf == enumContourLeaf::InsideRing);
}

template class CWalkContour<CTruncPnt>;
template class CWalkContour<CTruncPnt_Color>;
