#ifndef OCTREE_WALKLODCLIP_H
#define OCTREE_WALKLODCLIP_H

#include <octree/WalkClip.h>

/// Walk of a thinned cloud that is clipped by planes.
template <class Visitor>
class CWalkLodClip
{
public:
    /// @param nLimit  depth at which cubes give one point. KEPT: leaves from one level above it on give one
    ///                point, so that a value below 0 takes one point of every leaf
    ///                (LodClip_LargerThanTheTreeGivesOnePointALeaf_Kept).
    CWalkLodClip(const COcTreeIndex& tree, Visitor& listener, CClipPlanes& stack, std::int64_t nLimit,
                 CDelivered& delivered)
        : m_listener(listener), m_stack(stack), m_nLimit(nLimit), m_delivered(delivered),
          m_clip(tree, listener, stack, delivered)
    {
    }

    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube, CPlaneRange planes, std::int64_t nDepth);

private:
    bool DeliverRepresentative(const COcTreeNode& node);

    Visitor& m_listener;
    CClipPlanes& m_stack;
    std::int64_t m_nLimit;
    CDelivered& m_delivered;
    CWalkClip<Visitor> m_clip;
};

extern template class CWalkLodClip<COcTreeListener<CTruncPnt>>;
extern template class CWalkLodClip<COcTreeListener<CTruncPnt_Color>>;
extern template class CWalkLodClip<CIndexVisitor<CTruncPnt>>;
extern template class CWalkLodClip<CIndexVisitor<CTruncPnt_Color>>;

#endif
