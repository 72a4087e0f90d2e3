#ifndef OCTREE_WALKBEST_H
#define OCTREE_WALKBEST_H

#include <formats/Compact.h>
#include <octree/CCoordBox.h>
#include <octree/COcTreeData.h>
#include <octree/COcTreeIndex.h>
#include <octree/HasRoot.h>
#include <zor3geom/PNT_3D.h>

#include <limits>

/// The search for one point of a store: the live one of smallest key that is wanted, of equals the lowest
/// index.
///
/// Cubes are walked in the order of the least keys that their points could have, those under one node
/// together; a cube whose bound lies above the best key found is left out with all that it holds. Exact for
/// every cloud: cubes are judged by the limits of their points, which L3 tells, not by their nominal extent,
/// and `Key` computes a bound as it computes a key. Nothing is allocated.
///
/// @tparam Key  `CalcKey`, `IsWanted`, `CalcBound` as in CRayKey.
template <class T, class Key>
class CWalkBest
{
public:
    CWalkBest(const COcTreeData<T>& store, const Key& key) : m_store(store), m_key(key) {}

    /// @return the point's index, -1: none. Without a tree, or with one that does not hold every slot of the
    ///         array (L1), all points are looked at.
    std::int32_t Find()
    {
        if (HasRoot(m_store) && m_store.m_pTree->m_bTiled)
            WalkNode(*m_store.m_pTree->m_pRoot, m_store.m_pTree->GetRootCube(),
                     CalcRootBox(*m_store.m_pTree));
        else if (m_store.m_pPnts != nullptr)
            TestRun(0, m_store.m_nNumPnts);
        return m_nFound;
    }

private:
    /// The two halves of a node's limits on each axis, coordinate units: [0] below the dividing plane.
    struct CHalves
    {
        CCoordRange aX[2];
        CCoordRange aY[2];
        CCoordRange aZ[2];

        CCoordBox Get(int k) const noexcept { return {aX[(k >> 2) & 1], aY[(k >> 1) & 1], aZ[k & 1]}; }
    };

    /// A child that may hold what is searched.
    struct CCandidate
    {
        double dBound;
        int nOctant;
        const COcTreeLeaf* pLeaf; // null for an inner node
        const COcTreeNode* pNode;
    };

    /// The candidates under one node, least bound first, in the order of the octants where bounds are equal.
    class CCandidates
    {
    public:
        void Add(const CCandidate& candidate) noexcept
        {
            std::size_t i = m_nNum++;
            for (; i > 0 && m_aCandidates[i - 1].dBound > candidate.dBound; --i)
                m_aCandidates[i] = m_aCandidates[i - 1];
            m_aCandidates[i] = candidate;
        }

        const CCandidate* begin() const noexcept { return m_aCandidates; }
        const CCandidate* end() const noexcept { return m_aCandidates + m_nNum; }

    private:
        CCandidate m_aCandidates[8]; // filled up to m_nNum
        std::size_t m_nNum = 0;
    };

    static CCoordRange HalveBelow(const CCoordRange& range, std::int64_t nPlane, float fOrg) noexcept
    {
        return {range.dLo, CoordFromCompact(SaturateToInt32(nPlane - 1), fOrg)};
    }

    static CCoordRange HalveAbove(const CCoordRange& range, std::int64_t nPlane, float fOrg) noexcept
    {
        return {CoordFromCompact(SaturateToInt32(nPlane), fOrg), range.dHi};
    }

    CHalves CalcHalves(const COcTreeCube& cube, const CCoordBox& box) const noexcept
    {
        const float fX = m_store.m_fOrgX;
        const float fY = m_store.m_fOrgY;
        const float fZ = m_store.m_fOrgZ;
        return {{HalveBelow(box.x, cube.nX, fX), HalveAbove(box.x, cube.nX, fX)},
                {HalveBelow(box.y, cube.nY, fY), HalveAbove(box.y, cube.nY, fY)},
                {HalveBelow(box.z, cube.nZ, fZ), HalveAbove(box.z, cube.nZ, fZ)}};
    }

    /// The box of all points of the tree, a unit wider to each side than they may reach.
    CCoordBox CalcRootBox(const COcTreeIndex& tree) const noexcept
    {
        return {CalcRootRange(tree.m_nCentreX, tree.m_nExtentX, m_store.m_fOrgX),
                CalcRootRange(tree.m_nCentreY, tree.m_nExtentY, m_store.m_fOrgY),
                CalcRootRange(tree.m_nCentreZ, tree.m_nExtentZ, m_store.m_fOrgZ)};
    }

    /// @param nExtent  where it is the largest there is, it may have been cut to that.
    static CCoordRange CalcRootRange(std::int64_t nCentre, std::int32_t nExtent, float fOrg) noexcept
    {
        const std::int64_t nHalf = nExtent == std::numeric_limits<std::int32_t>::max()
                                       ? std::int64_t{1} << 32
                                       : std::int64_t{nExtent} / 2 + 1;
        return {CoordFromCompact(SaturateToInt32(nCentre - nHalf), fOrg),
                CoordFromCompact(SaturateToInt32(nCentre + nHalf), fOrg)};
    }

    // L8: the recursion is bounded by the depth of the tree.
    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const CCoordBox& box) noexcept
    {
        const CHalves halves = CalcHalves(cube, box);
        CCandidates candidates;
        for (const COcTreeChild child : node.GetChildren())
        {
            CCandidate candidate{0.0, child.GetOctant(), nullptr, nullptr};
            if (!m_key.CalcBound(halves.Get(candidate.nOctant), candidate.dBound) ||
                candidate.dBound > m_dBest)
                continue;
            if (child.IsLeaf())
                candidate.pLeaf = &child.GetLeaf();
            else
                candidate.pNode = &child.GetNode();
            candidates.Add(candidate);
        }
        for (const CCandidate& candidate : candidates)
        {
            if (candidate.dBound > m_dBest)
                return; // so are the bounds of the rest
            if (candidate.pLeaf != nullptr)
                TestRun(candidate.pLeaf->m_nFirst, candidate.pLeaf->m_nCount);
            else
                WalkNode(*candidate.pNode, cube.GetChild(candidate.nOctant), halves.Get(candidate.nOctant));
        }
    }

    void TestRun(std::int32_t nFirst, std::int32_t nCount) noexcept
    {
        for (std::int32_t i = nFirst; i < nFirst + nCount; ++i)
        {
            const T& rec = m_store.m_pPnts[i];
            const zor::geom::PNT_3D pnt(CoordFromCompact(rec.m_nX, m_store.m_fOrgX),
                                        CoordFromCompact(rec.m_nY, m_store.m_fOrgY),
                                        CoordFromCompact(rec.m_nZ, m_store.m_fOrgZ));
            const double dKey = m_key.CalcKey(pnt);
            if (dKey > m_dBest || (dKey == m_dBest && i > m_nFound) || m_store.IsDeleted(i) ||
                !m_key.IsWanted(pnt, dKey))
                continue;
            m_dBest = dKey;
            m_nFound = i;
        }
    }

    const COcTreeData<T>& m_store;
    const Key& m_key;
    std::int32_t m_nFound = -1;
    double m_dBest = std::numeric_limits<double>::infinity(); // the key of what was found
};

/// @return the index of the best point of a store, -1: none.
template <class T, class Key>
std::int32_t FindBestPnt(const COcTreeData<T>& store, const Key& key)
{
    return CWalkBest<T, Key>(store, key).Find();
}

#endif
