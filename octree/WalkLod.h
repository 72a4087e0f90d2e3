#ifndef OCTREE_WALKLOD_H
#define OCTREE_WALKLOD_H

#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>

/// Walk of a thinned cloud: a node at the depth limit gives its representative, a leaf there its first
/// live point, a leaf above all its live points.
template <class T>
class CWalkLod
{
public:
    /// @param nLimit  depth at which cubes give one point. KEPT: a value below 0 is never met, so that
    ///                every live point is delivered.
    CWalkLod(COcTreeIndex& tree, COcTreeListener<T>& listener, std::int64_t nLimit)
        : m_tree(tree), m_listener(listener), m_nLimit(nLimit)
    {
    }

    void WalkNode(const COcTreeNode& node, std::int64_t nDepth);

private:
    void WalkLeaf(const COcTreeLeaf& leaf, bool bOnePnt);
    void DeliverFirst(const COcTreeLeaf* pLeaf);

    COcTreeIndex& m_tree;
    COcTreeListener<T>& m_listener;
    std::int64_t m_nLimit;
};

extern template class CWalkLod<CTruncPnt>;
extern template class CWalkLod<CTruncPnt_Color>;

#endif
