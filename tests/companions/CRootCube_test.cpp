// The root cube as built, and the cubes of a level.

#include <tests/support/CTestCld.h>
#include <zor4data/CRootCube.h>

#include <limits>

namespace
{

using zor::geom::PNT_3D;

constexpr std::int64_t c_nLow = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t c_nHigh = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;

template <class T>
class CRootCube_case : public ::testing::Test
{
};
TYPED_TEST_SUITE(CRootCube_case, TBothPntTypes, CPntTypeName);

TYPED_TEST(CRootCube_case, Root_IsTheOneBuilt)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{PNT_3D(500000.0, 1.0, 2.0), PNT_3D(500007.5, 3.5, -4.0)});
    CRootCube cube{};
    ASSERT_TRUE(GetRootCube(*cld, cube));
    EXPECT_EQ(cube.nX, 37500);
    EXPECT_EQ(cube.nY, 12500);
    EXPECT_EQ(cube.nZ, -30000);
    EXPECT_EQ(cube.nEdge, 75000);
    EXPECT_EQ(cube.fOrgX, 500000.0F);
    EXPECT_EQ(cube.fOrgY, 1.0F);
    EXPECT_EQ(cube.fOrgZ, 2.0F);
}

TYPED_TEST(CRootCube_case, Root_WithoutAnOctreeThereIsNone)
{
    CPntCld cld(nullptr);
    CRootCube cube{1, 2, 3, 4, 5.0F, 6.0F, 7.0F};
    EXPECT_FALSE(GetRootCube(cld, cube));
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    EXPECT_FALSE(GetRootCube(cld, cube));
    cld.Init(1);
    cld.AddPnt(1.0, 2.0, 3.0);
    EXPECT_FALSE(GetRootCube(cld, cube));
    EXPECT_EQ(cube.nEdge, 4);
    cld.ComputeTree();
    EXPECT_TRUE(GetRootCube(cld, cube));
    EXPECT_EQ(cube.nEdge, 0);
    cld.Clear();
    EXPECT_FALSE(GetRootCube(cld, cube));
    cld.Init(0);
    cld.ComputeTree(); // an octree without points, as GetBdry has it
    EXPECT_TRUE(GetRootCube(cld, cube));
}

constexpr CRootCube c_root{100, 200, 300, 1000, 0.0F, 0.0F, 0.0F};

TEST(CLevelCube, LevelZero_IsTheRootAndHoldsAll)
{
    CLevelCube cube{};
    ASSERT_TRUE(GetLevelCube(c_root, 0, 0, 0, 0, cube));
    EXPECT_EQ(cube.nX, 100);
    EXPECT_EQ(cube.nZ, 300);
    EXPECT_EQ(cube.nEdge, 1000);
    EXPECT_EQ(cube.nMinX, c_nLow);
    EXPECT_EQ(cube.nEndZ, c_nHigh);
}

// Points at the end of the span: nominal centres beyond it leave nothing on their far side.
TEST(CLevelCube, CentreBeyondTheSpan_LimitsStayWithinThoseAbove)
{
    constexpr auto c_nLast = static_cast<std::int32_t>(c_nHigh - 1);
    constexpr CRootCube c_atTheEnd{c_nLast, c_nLast, c_nLast, 1000, 0.0F, 0.0F, 0.0F};
    CLevelCube cube{};
    ASSERT_TRUE(GetLevelCube(c_atTheEnd, 1, 1, 1, 1, cube));
    EXPECT_EQ(cube.nX, c_nLast + std::int64_t{250});
    ASSERT_TRUE(GetLevelCube(c_atTheEnd, 2, 2, 2, 2, cube));
    EXPECT_EQ(cube.nMinX, c_nLast);
    EXPECT_EQ(cube.nEndX, c_nHigh);
    ASSERT_TRUE(GetLevelCube(c_atTheEnd, 2, 3, 3, 3, cube));
    EXPECT_EQ(cube.nMinX, c_nHigh);
    EXPECT_EQ(cube.nEndX, c_nHigh);
}

// Edges 1000, 500, 250, 125, 62: moved by 250, 125, 62 and 31 units.
TEST(CLevelCube, Halves_AreTruncated)
{
    CLevelCube cube{};
    ASSERT_TRUE(GetLevelCube(c_root, 4, 0, 15, 5, cube));
    EXPECT_EQ(cube.nEdge, 62);
    EXPECT_EQ(cube.nX, 100 - 250 - 125 - 62 - 31);
    EXPECT_EQ(cube.nY, 200 + 250 + 125 + 62 + 31);
    EXPECT_EQ(cube.nZ, 300 - 250 + 125 - 62 + 31);
    EXPECT_EQ(cube.nMinX, c_nLow);
    EXPECT_EQ(cube.nEndX, 100 - 250 - 125 - 62);
    EXPECT_EQ(cube.nMinY, 200 + 250 + 125 + 62);
    EXPECT_EQ(cube.nEndY, c_nHigh);
    EXPECT_EQ(cube.nMinZ, 300 - 250 + 125 - 62);
    EXPECT_EQ(cube.nEndZ, 300 - 250 + 125);
}

TEST(CLevelCube, Deepest_EdgeIsGoneAndLimitsStillMeet)
{
    CLevelCube low{};
    CLevelCube high{};
    const std::int32_t nLast = std::numeric_limits<std::int32_t>::max();
    ASSERT_TRUE(GetLevelCube(c_root, 31, 0, nLast / 2, nLast, low));
    ASSERT_TRUE(GetLevelCube(c_root, 31, 1, nLast / 2 + 1, nLast, high));
    EXPECT_EQ(low.nEdge, 0);
    EXPECT_EQ(low.nEndX, high.nMinX);
    EXPECT_EQ(low.nEndY, 200);
    EXPECT_EQ(high.nMinY, 200);
    EXPECT_EQ(low.nEndZ, c_nHigh);
}

TEST(CLevelCube, OutsideTheLevel_FalseAndNothingWritten)
{
    CLevelCube cube{};
    cube.nEdge = 5;
    for (const int nLevel : {-1, 32, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_FALSE(GetLevelCube(c_root, nLevel, 0, 0, 0, cube)) << nLevel;
    for (const std::int32_t n : {-1, 8, std::numeric_limits<std::int32_t>::min()})
    {
        EXPECT_FALSE(GetLevelCube(c_root, 3, n, 0, 0, cube)) << n;
        EXPECT_FALSE(GetLevelCube(c_root, 3, 0, n, 0, cube)) << n;
        EXPECT_FALSE(GetLevelCube(c_root, 3, 0, 0, n, cube)) << n;
    }
    EXPECT_FALSE(GetLevelCube(c_root, 0, 1, 0, 0, cube));
    EXPECT_EQ(cube.nEdge, 5);
    EXPECT_TRUE(GetLevelCube(c_root, 3, 7, 7, 7, cube));
}

} // namespace
