#include <analysis/outline/FindStartPnt.h>

#include <octree/CPntBits.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <algorithm>
#include <vector>

namespace
{

/// Search of a tree for the leaves that may hold the westernmost point of a set.
///
/// Each leaf found holds a point of the set, by its square (L4) none farther east than the square's eastern
/// edge. So no square that begins at that edge or farther east is searched: the least such edge is the limit.
/// A leaf found in the western half of a cube thus keeps the search from the eastern half.
class CStartSearch
{
public:
    CStartSearch(const COcTreeIndex& tree, const unsigned char* pBits)
        : m_pBits(pBits), m_nLimit(tree.GetRootCube().nX + tree.GetRootCube().GetHalfEdge())
    {
        WalkNode(*tree.m_pRoot, tree.GetRootCube());
    }

    /// @return the westernmost point of the set in the leaves found, or -1.
    template <class T>
    std::int32_t FindPnt(const T* pPnts) const
    {
        std::int32_t nStart = -1;
        // KEPT: a point on the limit itself does not count (PntsOnTheLimitDoNotCount_Kept,
        // NoneWithoutExtent_Kept).
        std::int64_t nBest = m_nLimit;
        for (const CFoundLeaf& found : m_vecFound)
        {
            if (found.nXMin > m_nLimit)
                continue;
            for (std::int32_t i = found.leaf.m_nFirst; i < GetEnd(found.leaf); ++i)
            {
                if (!CPntBits::IsSet(m_pBits, i) || pPnts[i].m_nX >= nBest)
                    continue;
                nBest = pPnts[i].m_nX;
                nStart = i;
            }
        }
        return nStart;
    }

private:
    struct CFoundLeaf
    {
        std::int64_t nXMin; // western edge of its square
        COcTreeLeaf leaf;
    };

    static std::int32_t GetEnd(const COcTreeLeaf& leaf) noexcept { return leaf.m_nFirst + leaf.m_nCount; }

    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube);
    void AddLeaf(const COcTreeLeaf& leaf, const COcTreeCube& cube);

    const unsigned char* m_pBits;
    std::int64_t m_nLimit; // the least eastern edge of the leaves found, and of the root cube
    std::vector<CFoundLeaf> m_vecFound;
};

/// Records a leaf that holds a point of the set.
void CStartSearch::AddLeaf(const COcTreeLeaf& leaf, const COcTreeCube& cube)
{
    std::int32_t i = leaf.m_nFirst;
    while (i < GetEnd(leaf) && !CPntBits::IsSet(m_pBits, i))
        ++i;
    if (i >= GetEnd(leaf))
        return;
    m_vecFound.push_back({cube.nX - cube.GetHalfEdge(), leaf});
    m_nLimit = std::min(m_nLimit, cube.nX + cube.GetHalfEdge());
}

void CStartSearch::WalkNode(const COcTreeNode& node, const COcTreeCube& cube)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        const COcTreeCube childCube = cube.GetChild(child.GetOctant());
        if (childCube.nX - childCube.GetHalfEdge() >= m_nLimit)
            continue;
        if (!child.IsLeaf())
            WalkNode(child.GetNode(), childCube);
        else
            AddLeaf(child.GetLeaf(), childCube);
    }
}

} // namespace

template <class T>
std::int32_t FindStartPnt(const COcTreeIndex& tree, const T* pPnts, const unsigned char* pBits)
{
    return CStartSearch(tree, pBits).FindPnt(pPnts);
}

template std::int32_t FindStartPnt(const COcTreeIndex&, const CTruncPnt*, const unsigned char*);
template std::int32_t FindStartPnt(const COcTreeIndex&, const CTruncPnt_Color*, const unsigned char*);
