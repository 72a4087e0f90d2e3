#ifndef OCTREE_WALKCLIP_H
#define OCTREE_WALKCLIP_H

#include <octree/CClipPlanes.h>
#include <octree/CDelivered.h>
#include <octree/CIndexVisitor.h>
#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>

/// Walk of the points that are in front of none of a set of planes.
///
/// KEPT: L4, the walk decides by the nominal cubes: a leaf whose cube lies inside delivers all its live
/// points, one whose cube lies outside none, even where a point lies a few units outside its cube
/// (Clip_DecidesByNominalCubes_Kept).
template <class Visitor>
class CWalkClip
{
public:
    CWalkClip(const COcTreeIndex& tree, Visitor& listener, CClipPlanes& stack, CDelivered& delivered)
        : m_tree(tree), m_listener(listener), m_stack(stack), m_delivered(delivered)
    {
    }

    /// Delivers the points under `node` that are in front of none of `planes`.
    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube, CPlaneRange planes);

    /// Delivers the live points of a leaf that are in front of none of `planes`, or its first live point.
    ///
    /// @param bOnePnt  deliver one point, untested beyond the leaf's cube.
    void ClipLeaf(const COcTreeLeaf& leaf, const COcTreeCube& cube, CPlaneRange planes, bool bOnePnt);

private:
    void DeliverWhole(const COcTreeNode& node);
    void DeliverFirst(const COcTreeLeaf& leaf);
    void DeliverTested(const COcTreeLeaf& leaf, CPlaneRange planes);

    const COcTreeIndex& m_tree;
    Visitor& m_listener;
    CClipPlanes& m_stack;
    CDelivered& m_delivered;
};

extern template class CWalkClip<COcTreeListener<CTruncPnt>>;
extern template class CWalkClip<COcTreeListener<CTruncPnt_Color>>;
extern template class CWalkClip<CIndexVisitor<CTruncPnt>>;
extern template class CWalkClip<CIndexVisitor<CTruncPnt_Color>>;

#endif
