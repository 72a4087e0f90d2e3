#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

class ZorcldTileLas : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!CZorcld::HasLaszip())
            GTEST_SKIP() << "LAS is not read";
    }

    CRun Cut(const CLasFile& las, const char* pSize) const
    {
        const std::string sFile = m_zorcld.Write("source.las", las.GetBytes());
        return m_zorcld.Run({"tile", sFile, "-o", m_zorcld.GetPath("tiles"), "--size", pSize});
    }

    /// Colour of the point nearest to a place, as text.
    std::string FindColor(const char* pPlace) const
    {
        const std::string sTile = m_zorcld.GetPath("tiles/tile_0_0.cld");
        EXPECT_EQ(
            m_zorcld.Run({"points", sTile, "--rect", pPlace, "-o", m_zorcld.GetPath("out.csv")}).nStatus, 0);
        return ReadBytes(m_zorcld.GetPath("out.csv"));
    }

    CZorcld m_zorcld;
};

CLasFile RandomLas(std::uint32_t nSeed, int nNumPnts, std::int32_t nReach)
{
    std::mt19937 random(nSeed);
    const auto number = [&]
    { return static_cast<std::int32_t>(random() % (2 * static_cast<std::uint32_t>(nReach))) - nReach; };
    CLasFile las;
    for (int i = 0; i < nNumPnts; ++i)
        las.vecPnts.push_back({number(), number(), number(), {}});
    return las;
}

/// What a cloud stores of the points, sorted.
std::vector<TSteps> StepsOf(const CLasFile& las)
{
    const auto place = [&](const CLasPnt& pnt, std::size_t k) {
        return (k == 0 ? pnt.x : k == 1 ? pnt.y : pnt.z) * las.adScale[k] + las.adOffset[k];
    };
    std::vector<TSteps> vecSteps;
    for (const CLasPnt& pnt : las.vecPnts)
    {
        TSteps anSteps{};
        for (std::size_t k = 0; k < 3; ++k)
        {
            const auto fOrigin = static_cast<float>(place(las.vecPnts.front(), k));
            anSteps[k] = static_cast<std::int32_t>((place(pnt, k) - static_cast<double>(fOrigin)) * 10000.0);
        }
        vecSteps.push_back(anSteps);
    }
    std::sort(vecSteps.begin(), vecSteps.end());
    return vecSteps;
}

} // namespace

TEST_F(ZorcldTileLas, WholeNumbers_ArePlacedAsOneByOne)
{
    std::uint32_t nSeed = 0;
    for (const std::array<double, 3>& adScale : std::vector<std::array<double, 3>>{
             {0.01, 0.01, 0.01}, {0.001, -0.003, 1e-5}, {1.0 / 3.0, 0.1, 0.0}, {0.00025, 0.7, -2.0}})
        for (const auto& [nMinor, nFormat] : std::vector<std::pair<int, int>>{{2, 0}, {2, 2}, {4, 6}, {4, 8}})
        {
            SCOPED_TRACE(testing::Message() << nSeed << " format " << nFormat);
            CLasFile las = RandomLas(++nSeed, 700, 50000);
            las.nMinor = nMinor;
            las.nFormat = nFormat;
            las.adScale = adScale;
            las.adOffset = {470277.125, 4500000.3, -17.1};
            const CRun run = Cut(las, "2000");
            ASSERT_EQ(run.nStatus, 0) << run.sErr;
            EXPECT_EQ(JoinCores(m_zorcld.GetPath("tiles")), StepsOf(las));
            std::filesystem::remove_all(m_zorcld.GetPath("tiles"));
        }
}

TEST_F(ZorcldTileLas, PntBeyondReachAmongMany_IsToldByItsPlace)
{
    CLasFile las = RandomLas(1, 3000, 50000);
    las.vecPnts[2000].y = 30000000;
    const CRun run = Cut(las, "100");
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("y 300000, more than 214748 units"), std::string::npos) << run.sErr;
    EXPECT_FALSE(std::filesystem::exists(m_zorcld.GetPath("tiles")));
}

// Points are handed out before it is known that colours have 16 bits.
TEST_F(ZorcldTileLas, DeepColourLateInTheFile_AllLoseTheirLowBytes)
{
    for (const bool bLate : {false, true})
    {
        CLasFile las;
        las.nFormat = 2;
        for (std::int32_t i = 0; i < 40000; ++i)
            las.vecPnts.push_back({i % 200 * 100, i / 200 * 100, 0, {200, 100, 50}});
        las.vecPnts[bLate ? 39999 : 1].anColor = {0x1234, 0x5678, 0xFFFF};
        const CRun run = Cut(las, "500");
        ASSERT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_NE(FindColor(bLate ? "198.5,198.5,199.5,199.5" : "0.5,-0.5,1.5,0.5").find(",18,86,255\n"),
                  std::string::npos);
        EXPECT_NE(FindColor("4.5,-0.5,5.5,0.5").find(",0,0,0\n"), std::string::npos);
        std::filesystem::remove_all(m_zorcld.GetPath("tiles"));
    }
}
