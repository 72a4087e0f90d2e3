#include <octree/BuildTree.h>

#include <formats/CCompactRange.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/Partition.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>

namespace
{

constexpr std::int32_t c_nMaxLeafAlways = 10;     // a child of so many points is always a leaf
constexpr std::int32_t c_nMinSplitAlways = 1000;  // from here on a child is divided whatever its size
constexpr std::int64_t c_nMaxEdgeOfLeaves = 1000; // a parent no larger has leaves of up to 999 points
constexpr std::int32_t c_nMinTail = 1000;         // fewer equal records at the end are no tail

constexpr std::int64_t c_nMinInt32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t c_nMaxInt32 = std::numeric_limits<std::int32_t>::max();

/// @return the first of the equal records that the array ends with: slots that a file announced and never
///         filled. `nNumPnts`, for no tail, where they are too few to matter.
template <class T>
std::int32_t FindTail(const T* pPnts, std::int32_t nNumPnts) noexcept
{
    // All bytes are compared, also one that has no meaning: a tail whose records differ there is not found.
    const void* const pLast = pPnts + nNumPnts - 1;
    const auto isLikeLast = [pLast](const void* pPnt) { return std::memcmp(pPnt, pLast, sizeof(T)) == 0; };
    std::int32_t nFirst = nNumPnts - 1;
    while (nFirst > 0 && isLikeLast(pPnts + nFirst - 1))
        --nFirst;
    return nNumPnts - nFirst < c_nMinTail ? nNumPnts : nFirst;
}

template <class T>
void CalcBox(const T* pPnts, std::int32_t nNumPnts, COcTreeIndex& tree) noexcept
{
    CCompactRange rangeX;
    CCompactRange rangeY;
    CCompactRange rangeZ;
    for (std::int32_t i = 0; i < nNumPnts; ++i)
    {
        rangeX.Add(pPnts[i].m_nX);
        rangeY.Add(pPnts[i].m_nY);
        rangeZ.Add(pPnts[i].m_nZ);
    }
    tree.m_nCentreX = rangeX.GetCentre();
    tree.m_nCentreY = rangeY.GetCentre();
    tree.m_nCentreZ = rangeZ.GetCentre();
    tree.m_nExtentX = rangeX.GetExtent();
    tree.m_nExtentY = rangeY.GetExtent();
    tree.m_nExtentZ = rangeZ.GetExtent();
    tree.m_nEdge = std::max({tree.m_nExtentX, tree.m_nExtentY, tree.m_nExtentZ});
}

/// Builds the nodes of one tree. `m_pPnts` is the whole array: runs are given by their indices in it.
///
/// Equal records at the end of a run, the tail, stay together and at the end of their run at every level: a
/// tail above the splitting plane is not moved, and a tail below it changes places with all records above the
/// plane. So the tail is moved as a whole, and a tail of any length costs no more than the other
/// records of the run do.
template <class T>
class CTreeBuilder
{
public:
    /// @param nTailFirst  where the tail begins, `nNumPnts` for none.
    CTreeBuilder(T* pPnts, std::int32_t nNumPnts, std::int32_t nTailFirst, COcTreeArena& arena)
        : m_pPnts(pPnts), m_nTailFirst(nTailFirst), m_nTailEnd(nTailFirst < nNumPnts ? nNumPnts : c_nNoTail),
          m_arena(arena)
    {
    }

    void BuildNode(COcTreeNode& node, std::int32_t nDepth, const COcTreeCube& cube, std::int32_t nFirst,
                   std::int32_t nNumPnts);

private:
    /// Ends of the octants' runs: octant k reaches from bounds[k] to bounds[k + 1].
    using TOctantBounds = std::array<std::int32_t, 9>;

    TOctantBounds PartitionOctants(const COcTreeCube& cube, std::int32_t nFirst,
                                   std::int32_t nNumPnts) noexcept;
    template <int Axis>
    std::int32_t PartitionRun(std::int32_t nFirst, std::int32_t nEnd, std::int64_t nPlane) noexcept;
    template <int Axis>
    std::int32_t PartitionWithTail(std::int32_t nFirst, std::int32_t nPlane) noexcept;
    std::int32_t MoveTail(std::int32_t nUpper) noexcept;
    void AddChildren(COcTreeNode& node, const TOctantBounds& bounds, std::int32_t nDepth, std::int64_t nEdge);

    static constexpr std::int32_t c_nNoTail = -1; // no run ends there

    T* m_pPnts;
    std::int32_t m_nTailFirst;
    std::int32_t m_nTailEnd;
    COcTreeArena& m_arena;
};

/// @return the first index of the run's upper side.
template <class T>
template <int Axis>
std::int32_t CTreeBuilder<T>::PartitionRun(std::int32_t nFirst, std::int32_t nEnd,
                                           std::int64_t nPlane) noexcept
{
    if (nPlane <= c_nMinInt32)
        return nFirst; // nothing lies below
    if (nPlane > c_nMaxInt32)
        return nEnd; // everything does
    if (nEnd == m_nTailEnd && nFirst < nEnd)
        return PartitionWithTail<Axis>(nFirst, static_cast<std::int32_t>(nPlane));
    return nFirst + PartitionPnts<Axis>(m_pPnts + nFirst, nEnd - nFirst, static_cast<std::int32_t>(nPlane));
}

template <class T>
template <int Axis>
std::int32_t CTreeBuilder<T>::PartitionWithTail(std::int32_t nFirst, std::int32_t nPlane) noexcept
{
    const std::int32_t nUpper = nFirst + PartitionPnts<Axis>(m_pPnts + nFirst, m_nTailFirst - nFirst, nPlane);
    const bool bTailBelow = PartitionPnts<Axis>(m_pPnts + m_nTailFirst, 1, nPlane) == 1;
    return bTailBelow ? MoveTail(nUpper) : nUpper;
}

/// Moves the tail in front of the records from `nUpper` on, which leaves them in the order that swapping
/// each record of the tail with the first of them would.
/// @return the new first index of these records.
template <class T>
std::int32_t CTreeBuilder<T>::MoveTail(std::int32_t nUpper) noexcept
{
    const std::int32_t nNumUpper = m_nTailFirst - nUpper;
    const std::int32_t nNumTail = m_nTailEnd - m_nTailFirst;
    if (nNumUpper > 0)
    {
        T* const pUpper = m_pPnts + nUpper;
        const T tail = m_pPnts[m_nTailFirst];
        std::rotate(pUpper, pUpper + nNumTail % nNumUpper, pUpper + nNumUpper);
        std::move_backward(pUpper, pUpper + nNumUpper, m_pPnts + m_nTailEnd);
        std::fill_n(pUpper, std::min(nNumUpper, nNumTail), tail);
    }
    m_nTailFirst = nUpper;
    m_nTailEnd = nUpper + nNumTail;
    return m_nTailEnd;
}

template <class T>
typename CTreeBuilder<T>::TOctantBounds CTreeBuilder<T>::PartitionOctants(const COcTreeCube& cube,
                                                                          std::int32_t nFirst,
                                                                          std::int32_t nNumPnts) noexcept
{
    TOctantBounds bounds{};
    bounds[0] = nFirst;
    bounds[8] = nFirst + nNumPnts;
    bounds[4] = PartitionRun<0>(bounds[0], bounds[8], cube.nX);
    for (const std::size_t i : {0U, 4U})
        bounds[i + 2] = PartitionRun<1>(bounds[i], bounds[i + 4], cube.nY);
    for (const std::size_t i : {0U, 2U, 4U, 6U})
        bounds[i + 1] = PartitionRun<2>(bounds[i], bounds[i + 2], cube.nZ);
    return bounds;
}

/// Makes the node's children block and fills its leaves; inner children are left without children.
template <class T>
void CTreeBuilder<T>::AddChildren(COcTreeNode& node, const TOctantBounds& bounds, std::int32_t nDepth,
                                  std::int64_t nEdge)
{
    const std::int32_t nMaxLeaf = nDepth == c_nMaxDepth         ? std::numeric_limits<std::int32_t>::max()
                                  : nEdge <= c_nMaxEdgeOfLeaves ? c_nMinSplitAlways - 1
                                                                : c_nMaxLeafAlways;
    unsigned nExist = 0;
    unsigned nLeaf = 0;
    for (std::size_t k = 0; k < 8; ++k)
    {
        const std::int32_t nCount = bounds[k + 1] - bounds[k];
        nExist |= (nCount > 0 ? 1U : 0U) << k;
        nLeaf |= (nCount > 0 && nCount <= nMaxLeaf ? 1U : 0U) << k;
    }
    node.m_ucExist = static_cast<std::uint8_t>(nExist);
    node.m_ucLeaf = static_cast<std::uint8_t>(nLeaf);
    node.m_pChildren = m_arena.Alloc(COcTreeChildren::GetBlockSize(node.m_ucExist, node.m_ucLeaf));
    unsigned char* pRecord = node.m_pChildren;
    for (std::size_t k = 0; k < 8; ++k)
    {
        const std::int32_t nCount = bounds[k + 1] - bounds[k];
        if (nCount == 0)
            continue;
        if (nCount <= nMaxLeaf)
            pRecord = COcTreeChildren::PutLeaf(pRecord, nCount, bounds[k]);
        else
            pRecord = COcTreeChildren::PutNode(pRecord);
    }
}

// L8: the recursion is bounded, since a child of a node at depth c_nMaxDepth is a leaf.
template <class T>
void CTreeBuilder<T>::BuildNode(COcTreeNode& node, std::int32_t nDepth, const COcTreeCube& cube,
                                std::int32_t nFirst, std::int32_t nNumPnts)
{
    const TOctantBounds bounds = PartitionOctants(cube, nFirst, nNumPnts);
    AddChildren(node, bounds, nDepth, cube.nEdge);
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf())
            continue;
        const std::size_t k = static_cast<std::size_t>(child.GetOctant());
        BuildNode(child.GetNode(), nDepth + 1, cube.GetChild(child.GetOctant()), bounds[k],
                  bounds[k + 1] - bounds[k]);
    }
}

} // namespace

template <class T>
COcTreeIndex BuildTree(T* pPnts, std::int32_t nNumPnts)
{
    COcTreeIndex tree;
    if (nNumPnts <= 0)
        return tree;
    const std::int32_t nTailFirst = FindTail(pPnts, nNumPnts);
    CalcBox(pPnts, std::min(nTailFirst + 1, nNumPnts), tree);
    tree.m_pRoot = new (tree.m_arena.Alloc(sizeof(COcTreeNode))) COcTreeNode;
    CTreeBuilder<T>(pPnts, nNumPnts, nTailFirst, tree.m_arena)
        .BuildNode(*tree.m_pRoot, 0, tree.GetRootCube(), 0, nNumPnts);
    return tree;
}

template COcTreeIndex BuildTree(CTruncPnt* pPnts, std::int32_t nNumPnts);
template COcTreeIndex BuildTree(CTruncPnt_Color* pPnts, std::int32_t nNumPnts);
