#include <octree/WalkClip.h>

#include <octree/NodeRun.h>

template <class Visitor>
void CWalkClip<Visitor>::WalkNode(const COcTreeNode& node, const COcTreeCube& cube, CPlaneRange planes)
{
    m_listener.CountWork(planes.nEnd - planes.nBegin);
    const CStraddling straddling(m_stack, planes, cube); // pops in its destructor
    if (straddling.IsOutside())
        return;
    if (straddling.GetRange().IsEmpty() && m_tree.m_bTiled)
    {
        DeliverWhole(node);
        return;
    }
    for (const COcTreeChild child : node.GetChildren())
    {
        const COcTreeCube childCube = cube.GetChild(child.GetOctant());
        if (child.IsLeaf())
            ClipLeaf(child.GetLeaf(), childCube, straddling.GetRange(), false);
        else
            WalkNode(child.GetNode(), childCube, straddling.GetRange());
    }
}

template <class Visitor>
void CWalkClip<Visitor>::ClipLeaf(const COcTreeLeaf& leaf, const COcTreeCube& cube, CPlaneRange planes,
                                  bool bOnePnt)
{
    const CStraddling straddling(m_stack, planes, cube);
    if (straddling.IsOutside())
        return;
    if (bOnePnt)
    {
        DeliverFirst(leaf);
        return;
    }
    if (straddling.GetRange().IsEmpty())
        m_delivered.CountPnts(m_listener.OnRun(leaf.m_nFirst, leaf.m_nCount));
    else
        DeliverTested(leaf, straddling.GetRange());
    m_delivered.CountLeaves(1);
}

/// Delivers everything under the node without walking it. L2: it is one run of the array.
template <class Visitor>
void CWalkClip<Visitor>::DeliverWhole(const COcTreeNode& node)
{
    const CNodeRun run = CalcNodeRun(node);
    m_delivered.CountPnts(m_listener.OnRun(run.nFirst, run.nCount));
    m_delivered.CountLeaves(run.nNumLeaves);
}

// KEPT: the point is not tested against the planes; it is enough that its leaf's cube is not outside
// (LodClip_PointOfALeafIsNotTested_Kept).
template <class Visitor>
void CWalkClip<Visitor>::DeliverFirst(const COcTreeLeaf& leaf)
{
    const std::int32_t nIndex = m_listener.FindLivePnt(leaf);
    if (nIndex == -1)
        return;
    m_listener.OnPnt(nIndex);
    m_delivered.CountPnts(1);
}

template <class Visitor>
void CWalkClip<Visitor>::DeliverTested(const COcTreeLeaf& leaf, CPlaneRange planes)
{
    m_listener.CountWork((planes.nEnd - planes.nBegin) * static_cast<std::size_t>(leaf.m_nCount));
    std::int32_t nNumDelivered = 0;
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
    {
        if (m_listener.IsDeleted(i) || m_stack.IsOutside(m_listener.GetRecord(i), planes))
            continue;
        m_listener.OnPnt(i);
        ++nNumDelivered;
    }
    m_delivered.CountPnts(nNumDelivered);
}

template class CWalkClip<COcTreeListener<CTruncPnt>>;
template class CWalkClip<COcTreeListener<CTruncPnt_Color>>;
template class CWalkClip<CIndexVisitor<CTruncPnt>>;
template class CWalkClip<CIndexVisitor<CTruncPnt_Color>>;
