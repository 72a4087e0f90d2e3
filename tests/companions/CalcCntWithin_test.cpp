// The outline with a bound on the walk.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CTestCld.h>
#include <zor4data/CalcCntWithin.h>

#include <limits>

namespace
{

constexpr std::int64_t c_nEndless = std::numeric_limits<std::int64_t>::max();

template <class T>
class CalcCntWithin_case : public ::testing::Test
{
};
TYPED_TEST_SUITE(CalcCntWithin_case, TBothPntTypes, CPntTypeName);

} // namespace

// With room enough it is CalcCnt, without any it leaves off and delivers nothing.
TYPED_TEST(CalcCntWithin_case, SameAsCalcCnt_OrLeftOff)
{
    int nNumClosed = 0;
    for (std::uint64_t nSeed = 0; nSeed < 60; ++nSeed)
    {
        CCldRecipe recipe;
        recipe.shape = static_cast<int>(nSeed % c_nNumCldShapes);
        recipe.size = 30 + static_cast<int>(nSeed);
        recipe.seed = nSeed;
        CRecipeCld<TypeParam> cld(recipe);
        CRecListener expected;
        CRecListener rec;
        const bool bClosed = cld->CalcCnt(nullptr, &expected, 3.0);
        ASSERT_EQ(CalcCntWithin(*cld, nullptr, &rec, 3.0, c_nEndless),
                  bClosed ? Outline_Closed : Outline_None);
        ASSERT_EQ(rec.GetIndices(), expected.GetIndices());
        nNumClosed += bClosed ? 1 : 0;
        if (!bClosed)
            continue;
        CRecListener none;
        ASSERT_EQ(CalcCntWithin(*cld, nullptr, &none, 3.0, 0), Outline_LeftOff);
        ASSERT_EQ(none.GetNumPnts(), 0);
    }
    EXPECT_GT(nNumClosed, 3);
}

TEST(CalcCntWithin, NoTypeNoTree_None)
{
    CRecListener rec;
    EXPECT_EQ(CalcCntWithin(CPntCld(nullptr), nullptr, &rec, 1.0, c_nEndless), Outline_None);
}
