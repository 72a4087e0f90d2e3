#include <octree/WalkLodClip.h>

#include <octree/FindRepresentative.h>

template <class Visitor>
void CWalkLodClip<Visitor>::WalkNode(const COcTreeNode& node, const COcTreeCube& cube, CPlaneRange planes,
                                     std::int64_t nDepth)
{
    // KEPT: a cube of the wanted size gives its point before any plane is looked at, even where only its
    // parent reaches into the kept volume (LodClip_NodeAtTheLimitIsNotTested_Kept).
    // KEPT: where a cube has no representative, its children are walked
    // (LodClip_WithoutRepresentativeGoesOnToTheChildren_Kept).
    if (nDepth == m_nLimit && DeliverRepresentative(node))
        return;
    const CStraddling straddling(m_stack, planes, cube);
    if (straddling.IsOutside())
        return;
    const bool bOnePnt = nDepth >= m_nLimit - 1;
    for (const COcTreeChild child : node.GetChildren())
    {
        const COcTreeCube childCube = cube.GetChild(child.GetOctant());
        if (child.IsLeaf())
            m_clip.ClipLeaf(child.GetLeaf(), childCube, straddling.GetRange(), bOnePnt);
        else
            WalkNode(child.GetNode(), childCube, straddling.GetRange(), nDepth + 1);
    }
}

template <class Visitor>
bool CWalkLodClip<Visitor>::DeliverRepresentative(const COcTreeNode& node)
{
    const COcTreeLeaf* const pLeaf = FindRepresentative(node);
    const std::int32_t nIndex = pLeaf == nullptr ? -1 : m_listener.FindLivePnt(*pLeaf);
    if (nIndex == -1)
        return false;
    m_listener.OnPnt(nIndex);
    m_delivered.CountPnts(1);
    return true;
}

template class CWalkLodClip<COcTreeListener<CTruncPnt>>;
template class CWalkLodClip<COcTreeListener<CTruncPnt_Color>>;
template class CWalkLodClip<CIndexVisitor<CTruncPnt>>;
template class CWalkLodClip<CIndexVisitor<CTruncPnt_Color>>;
