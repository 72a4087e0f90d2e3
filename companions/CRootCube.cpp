#include <zor4data/CRootCube.h>

#include <cloud/CCldStores.h>
#include <octree/COcTreeIndex.h>
#include <octree/CPntBounds.h>

bool GetRootCube(const CPntCld& cld, CRootCube& cube)
{
    return CCldStores::Ask(cld, false,
                           [&](const auto& store)
                           {
                               if (store.m_pTree == nullptr)
                                   return false;
                               const COcTreeIndex& tree = *store.m_pTree;
                               cube = {tree.m_nCentreX, tree.m_nCentreY, tree.m_nCentreZ, tree.m_nEdge,
                                       store.m_fOrgX,   store.m_fOrgY,   store.m_fOrgZ};
                               return true;
                           });
}

bool GetLevelCube(const CRootCube& root, int nLevel, std::int32_t nI, std::int32_t nJ, std::int32_t nK,
                  CLevelCube& cube)
{
    constexpr int c_nMaxLevel = 31; // at which an edge of 31 bits has been halved to 0
    if (nLevel < 0 || nLevel > c_nMaxLevel)
        return false;
    const std::int64_t nNum = std::int64_t{1} << nLevel;
    if (nI < 0 || nI >= nNum || nJ < 0 || nJ >= nNum || nK < 0 || nK >= nNum)
        return false;
    CPntBounds bounds = CPntBounds::OfSpan({root.nX, root.nY, root.nZ, root.nEdge});
    for (int i = nLevel - 1; i >= 0; --i) // the highest bit of a position is the first half taken
        bounds = bounds.GetChild(((nI >> i) & 1) * 4 + ((nJ >> i) & 1) * 2 + ((nK >> i) & 1));
    cube = {bounds.cube.nX, bounds.cube.nY, bounds.cube.nZ, bounds.cube.nEdge, bounds.nMinX,
            bounds.nMinY,   bounds.nMinZ,   bounds.nEndX,   bounds.nEndY,      bounds.nEndZ};
    return true;
}
