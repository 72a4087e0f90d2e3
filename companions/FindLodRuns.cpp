#include <zor4data/FindLodRuns.h>

#include <cloud/CCldStores.h>
#include <octree/LodRuns.h>

bool FindLodRuns(const CPntCld& cld, double dLod, int nLevel, std::int32_t nI, std::int32_t nJ,
                 std::int32_t nK, CLodRuns& runs)
{
    constexpr int c_nMaxLevel = 31; // as GetLevelCube
    if (nLevel < 0 || nLevel > c_nMaxLevel)
        return false;
    const std::int64_t nNum = std::int64_t{1} << nLevel;
    if (nI < 0 || nI >= nNum || nJ < 0 || nJ >= nNum || nK < 0 || nK >= nNum)
        return false;
    return CCldStores::Ask(cld, false,
                           [&](const auto& store)
                           {
                               if (store.m_pTree == nullptr)
                                   return false;
                               CLodRunSearch(store, dLod, runs).Find({nLevel, nI, nJ, nK});
                               return true;
                           });
}
