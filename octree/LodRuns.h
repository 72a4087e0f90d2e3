#ifndef OCTREE_LODRUNS_H
#define OCTREE_LODRUNS_H

#include <octree/CIndexVisitor.h>
#include <octree/COcTreeData.h>
#include <octree/COcTreeNode.h>
#include <octree/CPntBounds.h>
#include <octree/CRunList.h>
#include <zor4data/FindLodRuns.h>

/// A position on a level of the octree.
struct CLevelPlace
{
    int nLevel = 0;
    std::int32_t nI = 0;
    std::int32_t nJ = 0;
    std::int32_t nK = 0;

    /// The octant into which the way from the root goes at a depth above the level.
    int GetOctant(int nDepth) const noexcept
    {
        const int nBit = nLevel - 1 - nDepth; // the highest bit of a position is the first half taken
        return ((nI >> nBit) & 1) * 4 + ((nJ >> nBit) & 1) * 2 + ((nK >> nBit) & 1);
    }
};

/// The runs of `FindLodRuns`. REQUIRES: there is such a place; a tree.
template <class T>
class CLodRunSearch
{
public:
    CLodRunSearch(const COcTreeData<T>& store, double dLod, CLodRuns& runs);

    void Find(const CLevelPlace& place);

private:
    using TVisitor = CIndexVisitor<T, CRunList>;

    void FindUnder(const COcTreeNode& node, std::int64_t nDepth);
    void FindInLeaf(const COcTreeLeaf& leaf, const CPntBounds& bounds, bool bOnePnt);
    void FindInLargerCube(const COcTreeNode& node, const CPntBounds& bounds);
    bool IsInCube(std::int32_t nIndex, const CPntBounds& bounds) const;

    const COcTreeData<T>& m_store;
    CLodRuns& m_runs;
    TVisitor m_visitor;
    std::int64_t m_nLimit; // depth at which cubes give one point
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class CLodRunSearch<CTruncPnt>;
extern template class CLodRunSearch<CTruncPnt_Color>;

#endif
