#include <sample/CSampleTerrain.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <set>
#include <utility>

namespace
{

std::uint64_t CalcChecksum(const CSampleTerrain& terrain)
{
    std::uint64_t nSum = 14695981039346656037U;
    const auto add = [&](std::uint64_t n) { nSum = (nSum ^ n) * 1099511628211U; };
    terrain.ForEachPnt(
        [&](const CSamplePnt& pnt)
        {
            for (const double d : {pnt.x, pnt.y, pnt.z})
                add(static_cast<std::uint64_t>(std::llround(d * 1000.0)));
            for (const unsigned char uc : {pnt.r, pnt.g, pnt.b})
                add(uc);
        });
    return nSum;
}

} // namespace

// Benchmarks of different machines and years compare only if their clouds are the same.
TEST(CSampleTerrain, CalcPnt_SameOnEveryMachine)
{
    EXPECT_EQ(CalcChecksum(CSampleTerrain(20000, 1)), 17395661532934518085U);
    EXPECT_EQ(CalcChecksum(CSampleTerrain(20000, 7)), 7839052719455974647U);
}

TEST(CSampleTerrain, CalcPnt_MillimetresInsideTheSquare)
{
    const CSampleTerrain terrain(50000);
    EXPECT_NEAR(terrain.GetSide() * terrain.GetSide() * CSampleTerrain::c_dDensity, 50000.0, 500.0);
    const double dMargin = 1.0; // a wall is moved onto the edge of its building
    terrain.ForEachPnt(
        [&](const CSamplePnt& pnt)
        {
            ASSERT_GE(pnt.x, CSampleTerrain::c_dOrgX - dMargin);
            ASSERT_LE(pnt.x, CSampleTerrain::c_dOrgX + terrain.GetSide() + dMargin);
            ASSERT_GE(pnt.y, CSampleTerrain::c_dOrgY - dMargin);
            ASSERT_LE(pnt.y, CSampleTerrain::c_dOrgY + terrain.GetSide() + dMargin);
            ASSERT_DOUBLE_EQ(pnt.z, std::round(pnt.z * 1000.0) / 1000.0);
        });
}

TEST(CSampleTerrain, CalcPnt_NoTwoAtOnePlanPosition)
{
    std::set<std::pair<double, double>> setPlaces;
    const CSampleTerrain terrain(200000);
    terrain.ForEachPnt([&](const CSamplePnt& pnt) { setPlaces.emplace(pnt.x, pnt.y); });
    EXPECT_EQ(setPlaces.size(), 200000U);
}

TEST(CSampleTerrain, CalcPnts_InOrderAndEmptyForNone)
{
    EXPECT_TRUE(CSampleTerrain(0).CalcPnts().empty());
    EXPECT_TRUE(CSampleTerrain(-5).CalcPnts().empty());
    const CSampleTerrain terrain(100);
    const std::vector<CSamplePnt> vecPnts = terrain.CalcPnts();
    ASSERT_EQ(vecPnts.size(), 100U);
    EXPECT_EQ(vecPnts[42].x, terrain.CalcPnt(42).x);
}
