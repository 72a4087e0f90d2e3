// The points of a level of detail in a cube against the level of detail itself: what it delivers, by a look
// at every cube's limits.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CheckProp.h>
#include <zor4data/CRootCube.h>
#include <zor4data/FindLodRuns.h>

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace
{

using TOffsets = std::array<std::int32_t, 3>;

TOffsets ReadOffsets(const CPntArrays& arrays, int nIndex)
{
    TOffsets offsets{};
    std::memcpy(offsets.data(), arrays.pPnts + static_cast<std::ptrdiff_t>(nIndex) * arrays.nStride, 12);
    return offsets;
}

bool IsIn(const CLevelCube& cube, const TOffsets& n)
{
    return n[0] >= cube.nMinX && n[0] < cube.nEndX && n[1] >= cube.nMinY && n[1] < cube.nEndY &&
           n[2] >= cube.nMinZ && n[2] < cube.nEndZ;
}

/// What GetPnts_Lod delivers, in its order.
class CDeliveredIndices final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            vecIndices.push_back(pPnts[i].m_nIndex);
    }

    std::vector<int> vecIndices;
};

struct CPlace
{
    std::int32_t nI = 0;
    std::int32_t nJ = 0;
    std::int32_t nK = 0;
};

/// The cube of a level that a point belongs to.
CPlace FindPlace(const CRootCube& root, int nLevel, const TOffsets& offsets)
{
    CPlace place;
    for (int n = 1; n <= nLevel; ++n)
        for (int k = 0; k < 8; ++k)
        {
            const CPlace child = {place.nI * 2 + ((k >> 2) & 1), place.nJ * 2 + ((k >> 1) & 1),
                                  place.nK * 2 + (k & 1)};
            CLevelCube cube{};
            GetLevelCube(root, n, child.nI, child.nJ, child.nK, cube);
            if (!IsIn(cube, offsets))
                continue;
            place = child;
            break;
        }
    return place;
}

std::vector<int> Flatten(const CLodRuns& runs)
{
    std::vector<int> vecIndices;
    for (const CPntRun& run : runs.vecRuns)
        for (int i = 0; i < run.nCount; ++i)
            vecIndices.push_back(run.nFirst + i);
    return vecIndices;
}

template <class T>
class FindLodRuns_prop : public ::testing::Test
{
public:
    struct CCase
    {
        explicit CCase(const CCldRecipe& recipe) : cld(recipe), random(recipe.seed + 3)
        {
            static const std::vector<int> vecOneIn{0, 0, 2, 7};
            cld.Delete(random.Pick(vecOneIn));
            GetRootCube(*cld, root);
        }

        /// Spacings from far below a unit to far above the cloud, and none at all.
        double AnyLod()
        {
            if (random.Chance(10))
                return 0.0;
            return std::ldexp(std::max(root.nEdge, 1) / 10000.0, static_cast<int>(random.Int(-16, 3)));
        }

        CRecipeCld<T> cld;
        CRandom random;
        CRootCube root{};
    };

    /// @return whether the runs of one cube are right.
    static bool IsRight(CCase& one, double dLod, int nLevel, const CPlace& place)
    {
        CLevelCube cube{};
        CLodRuns runs;
        if (!GetLevelCube(one.root, nLevel, place.nI, place.nJ, place.nK, cube) ||
            !FindLodRuns(*one.cld, dLod, nLevel, place.nI, place.nJ, place.nK, runs))
            return false;
        const CPntArrays arrays = GetPntArrays(*one.cld);
        CDeliveredIndices all;
        one.cld->GetPnts_Lod(&all, dLod, 50);
        std::vector<int> vecWanted;
        for (const int nIndex : all.vecIndices)
            if (IsIn(cube, ReadOffsets(arrays, nIndex)))
                vecWanted.push_back(nIndex);
        int nNumInCube = 0;
        for (int i = 0; i < arrays.nNumPnts; ++i)
            nNumInCube += IsIn(cube, ReadOffsets(arrays, i)) ? 1 : 0;
        return Flatten(runs) == vecWanted && (runs.nNumInCube == -1 || runs.nNumInCube == nNumInCube);
    }
};
TYPED_TEST_SUITE(FindLodRuns_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(FindLodRuns_prop, Runs_AreTheLevelOfDetailInTheCube)
{
    CheckProp(200,
              [](const CCldRecipe& recipe)
              {
                  typename TestFixture::CCase one(recipe);
                  const CPntArrays arrays = GetPntArrays(*one.cld);
                  for (int n = 0; n < 12; ++n)
                  {
                      const int nLevel = static_cast<int>(one.random.Int(0, one.random.Chance(4) ? 31 : 6));
                      CPlace place;
                      if (arrays.nNumPnts > 0 && !one.random.Chance(5)) // where a point is, or anywhere
                          place = FindPlace(
                              one.root, nLevel,
                              ReadOffsets(arrays, static_cast<int>(one.random.Int(0, arrays.nNumPnts - 1))));
                      RC_ASSERT(TestFixture::IsRight(one, one.AnyLod(), nLevel, place));
                  }
              });
}

TYPED_TEST(FindLodRuns_prop, NoSuchCube_NothingIsWritten)
{
    CRecipeCld<TypeParam> cld(CCldRecipe{2, 500, 3, true});
    CLodRuns runs;
    runs.vecRuns = {{7, 8}};
    EXPECT_FALSE(FindLodRuns(*cld, 1.0, -1, 0, 0, 0, runs));
    EXPECT_FALSE(FindLodRuns(*cld, 1.0, 32, 0, 0, 0, runs));
    EXPECT_FALSE(FindLodRuns(*cld, 1.0, 2, 4, 0, 0, runs));
    EXPECT_FALSE(FindLodRuns(*cld, 1.0, 2, 0, 0, -1, runs));
    CRecipeCld<TypeParam> bare(CCldRecipe{2, 500, 3, true}, false);
    EXPECT_FALSE(FindLodRuns(*bare, 1.0, 0, 0, 0, 0, runs));
    EXPECT_EQ(runs.vecRuns.size(), 1U);
    EXPECT_TRUE(FindLodRuns(*cld, 1.0, 0, 0, 0, 0, runs));
}

} // namespace
