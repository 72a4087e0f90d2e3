// Tiles against the library itself, on ordinary and on odd clouds: at every level they have each point of the
// level of detail of the whole cloud once, and at the deepest each point of the cloud.

#include <tests/host/serve/support/CTestServer.h>
#include <tests/support/CRandom.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <set>

namespace
{

using zor::geom::PNT_3D;
using namespace zorcld;

template <class T>
T Read(const std::string& sBytes, std::size_t nAt)
{
    T value{};
    std::memcpy(&value, sBytes.data() + nAt, sizeof(value));
    return value;
}

/// A tile read back as docs/serve.md tells.
struct CReadTile
{
    explicit CReadTile(std::string bytes) : sBytes(std::move(bytes))
    {
        nNumPnts = Read<std::uint32_t>(sBytes, 32);
        nFlags = Read<std::uint32_t>(sBytes, 36);
    }

    /// The point's position in the array, by its colour.
    int GetIndex(std::size_t n) const
    {
        return static_cast<int>(Read<std::uint32_t>(sBytes, 40 + n * 12 + 8) & 0xFFFFFFU);
    }

    PNT_3D GetPnt(std::size_t n) const
    {
        const auto coord = [&](std::size_t k)
        {
            return Read<double>(sBytes, 8 * k) +
                   Read<std::int16_t>(sBytes, 40 + n * 12 + 2 * k) * (Read<double>(sBytes, 24) / 65534.0);
        };
        return {coord(0), coord(1), coord(2)};
    }

    double GetEdge() const { return Read<double>(sBytes, 24); }

    std::string sBytes;
    std::uint32_t nNumPnts = 0;
    std::uint32_t nFlags = 0;
};

struct CPlace
{
    int nI = 0;
    int nJ = 0;
    int nK = 0;
};

std::string TilePath(std::int64_t nVersion, int nLevel, const CPlace& place)
{
    return "/api/tile/" + std::to_string(nVersion) + "/" + std::to_string(nLevel) + "/" +
           std::to_string(place.nI) + "/" + std::to_string(place.nJ) + "/" + std::to_string(place.nK);
}

class CIndices final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            set.insert(pPnts[i].m_nIndex);
    }

    std::multiset<int> set;
};

/// Points of the cloud in a cube, by a look at all.
int CountInCube(const CPntArrays& arrays, const CLevelCube& cube)
{
    int nNumPnts = 0;
    for (std::int32_t i = 0; i < arrays.nNumPnts; ++i)
    {
        std::int32_t n[3];
        std::memcpy(n, arrays.pPnts + std::ptrdiff_t{i} * arrays.nStride, sizeof(n));
        nNumPnts += n[0] >= cube.nMinX && n[0] < cube.nEndX && n[1] >= cube.nMinY && n[1] < cube.nEndY &&
                            n[2] >= cube.nMinZ && n[2] < cube.nEndZ
                        ? 1
                        : 0;
    }
    return nNumPnts;
}

/// Every point lies where the library has it, to a step of the tile (and the few units that truncation puts
/// outside a cube).
void CheckPlaces(const CReadTile& tile, const CPntCld& cloud)
{
    constexpr double c_dTruncated = 32e-4;
    const double dStep = tile.GetEdge() / 65534.0;
    const double dSlack = std::min(tile.GetEdge() / 128.0 + 4e-4, c_dTruncated);
    for (std::size_t n = 0; n < tile.nNumPnts; ++n)
    {
        PNT_3D pnt;
        cloud.GetPnt(tile.GetIndex(n), pnt);
        const PNT_3D read = tile.GetPnt(n);
        const double dOff =
            std::max({std::fabs(pnt.x - read.x), std::fabs(pnt.y - read.y), std::fabs(pnt.z - read.z)});
        ASSERT_LE(dOff, 0.51 * dStep + dSlack) << "point " << tile.GetIndex(n);
    }
}

/// Goes through all tiles of the levels, from those that hold points to their octants.
void CheckLevels(const std::vector<PNT_3D>& vecPnts)
{
    const auto pCloud = MakeShownCloud(vecPnts, true);
    const auto pPlain = MakeShownCloud(vecPnts, false);
    CTestShow show(pCloud.get());
    CTestShow plain(pPlain.get());
    const TVersion pVersion = show.GetServed().GetFirst();
    const CPntArrays arrays = GetPntArrays(*pCloud);
    std::vector<CPlace> vecPlaces = {{}};
    ASSERT_LE(pVersion->GetNumLevels(), 15);
    for (int nLevel = 0; nLevel <= pVersion->GetNumLevels(); ++nLevel)
    {
        SCOPED_TRACE("level " + std::to_string(nLevel));
        CIndices found;
        std::vector<CPlace> vecNext;
        for (const CPlace& place : vecPlaces)
        {
            const std::string sPath = TilePath(pVersion->GetVersion(), nLevel, place);
            const CReadTile tile(show.GetBytes(sPath));
            ASSERT_EQ(tile.sBytes.size(), 40 + 12 * std::size_t{tile.nNumPnts});
            CheckPlaces(tile, *pCloud);
            CLevelCube cube{};
            ASSERT_TRUE(GetLevelCube(pVersion->GetRoot(), nLevel, place.nI, place.nJ, place.nK, cube));
            const int nInCube = CountInCube(arrays, cube);
            EXPECT_EQ((tile.nFlags >> 8U) & 1U, static_cast<int>(tile.nNumPnts) < nInCube ? 1U : 0U);
            for (std::size_t n = 0; n < tile.nNumPnts; ++n)
                found.set.insert(tile.GetIndex(n));
            for (int k = 0; k < 8; ++k)
                if (((tile.nFlags >> k) & 1U) != 0)
                    vecNext.push_back(
                        {place.nI * 2 + (k >> 2 & 1), place.nJ * 2 + (k >> 1 & 1), place.nK * 2 + (k & 1)});
            const CReadTile same(plain.GetBytes(TilePath(77, nLevel, place)));
            EXPECT_EQ(same.nNumPnts, tile.nNumPnts);
            EXPECT_EQ(same.nFlags, tile.nFlags);
        }
        CIndices wanted;
        pCloud->GetPnts_Lod(&wanted, pVersion->CalcLod(nLevel), 100);
        EXPECT_EQ(found.set, wanted.set);
        vecPlaces = vecNext;
        if (nLevel == pVersion->GetNumLevels())
        {
            EXPECT_EQ(found.set.size(), vecPnts.size());
        }
    }
}

TEST(MakeTile, OnePoint_IsTheTile)
{
    CheckLevels({{1.5, 2.5, 3.5}});
}

TEST(MakeTile, AllEqual_AreAllInOneTile)
{
    CheckLevels(std::vector<PNT_3D>(500, PNT_3D(4000000.25, 7.0, -2.0)));
}

TEST(MakeTile, TwoPoints_AUnitApart)
{
    CheckLevels({{0.0, 0.0, 0.0}, {0.0001, 0.0, 0.0}});
}

TEST(MakeTile, Line_ThroughAllLevels)
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < 3000; ++i)
        vecPnts.emplace_back(0.013 * i, 0.0, 0.0);
    CheckLevels(vecPnts);
}

TEST(MakeTile, Flat_WithoutHeight)
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < 150; ++i)
        for (int k = 0; k < 150; ++k)
            vecPnts.emplace_back(0.5 * i, 0.5 * k, 12.0);
    CheckLevels(vecPnts);
}

TEST(MakeTile, Wide_BeyondTheReachOfInt32)
{
    std::vector<PNT_3D> vecPnts;
    CRandom random(5);
    for (int i = 0; i < 2000; ++i)
        vecPnts.emplace_back(-200000.0 + 400000.0 * random.Unit(), 1000.0 * random.Unit(),
                             10.0 * random.Unit());
    vecPnts.front() = PNT_3D(0.0, 0.0, 0.0); // the origin: both sides are in reach
    vecPnts[1] = PNT_3D(200000.0, 5.0, 0.0);
    vecPnts[2] = PNT_3D(-200000.0, 5.0, 0.0);
    CheckLevels(vecPnts);
}

// A little wider than the octree's cubes, which end with int32.
TEST(MakeTile, Wide_AtTheReachOfInt32)
{
    for (const double dHalf : {107374.0, 107374.1, 107374.2, 107400.0, 107750.0, 108180.0, 108250.0})
    {
        SCOPED_TRACE("half the width " + std::to_string(dHalf));
        CRandom random(7);
        const auto at = [&] { return dHalf * (2.0 * random.Unit() - 1.0); };
        std::vector<PNT_3D> vecPnts = {
            {0.0, 0.0, 0.0}, {dHalf, dHalf, 0.0}, {-dHalf, -dHalf, 0.0}, {dHalf, -dHalf, 0.0}};
        for (int i = 0; i < 600; ++i)
            vecPnts.emplace_back(at(), at(), 50.0 * random.Unit());
        CheckLevels(vecPnts);
    }
}

TEST(MakeTile, EdgeIsAPowerOfTwo)
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < 8192; ++i)
        vecPnts.emplace_back((i % 32) * 0.8192 / 31.0, (i / 32 % 16) * 0.01, (i / 512) * 0.03);
    CheckLevels(vecPnts);
}

TEST(MakeTile, Hills_OrdinaryCloud)
{
    CheckLevels(MakeHills(180));
}

// Dense places, single points and stacks: every way in which leaves end early or late.
TEST(MakeTile, Random_Clusters)
{
    for (unsigned nSeed = 1; nSeed <= 12; ++nSeed)
    {
        SCOPED_TRACE("seed " + std::to_string(nSeed));
        CRandom random(nSeed);
        std::vector<PNT_3D> vecPnts;
        for (int nCluster = 0; nCluster < 12; ++nCluster)
        {
            const double dSize = std::ldexp(1.0, static_cast<int>(random.Int(-13, 7)));
            const PNT_3D at(100.0 * random.Unit(), 100.0 * random.Unit(), 100.0 * random.Unit());
            const int nNum = static_cast<int>(random.Int(1, 900));
            for (int i = 0; i < nNum; ++i)
                vecPnts.emplace_back(at.x + dSize * random.Unit(), at.y + dSize * random.Unit(),
                                     at.z + dSize * random.Unit());
        }
        CheckLevels(vecPnts);
    }
}

// More points than are sent at once: the tile comes in pieces and is the same.
TEST(MakeTile, Large_ComesInPieces)
{
    std::vector<PNT_3D> vecPnts;
    CRandom random(3);
    for (int i = 0; i < 400000; ++i)
        vecPnts.emplace_back(random.Unit(), random.Unit(), random.Unit());
    const auto pCloud = MakeShownCloud(vecPnts, true);
    CTestShow show(pCloud.get());
    const CReply reply = show.Ask("/api/tile/77/0/0/0/0");
    ASSERT_NE(reply.pPieces, nullptr);
    const CReadTile tile(TakeBody(reply));
    ASSERT_GT(tile.nNumPnts, 262144U);
    EXPECT_EQ(static_cast<std::int64_t>(tile.sBytes.size()), reply.pPieces->GetSize());
    CIndices wanted;
    pCloud->GetPnts_Lod(&wanted, show.GetServed().GetFirst()->CalcLod(0), 4096);
    ASSERT_EQ(wanted.set.size(), tile.nNumPnts);
    std::multiset<int> setFound;
    for (std::size_t n = 0; n < tile.nNumPnts; ++n)
        setFound.insert(tile.GetIndex(n));
    EXPECT_EQ(setFound, wanted.set);
    CheckPlaces(tile, *pCloud);
}

TEST(MakeTile, NoPoint_NoTile)
{
    CPntCld cloud(nullptr);
    cloud.OnReadType(PntCldType_Pnt);
    cloud.OnReadNumPnts(0);
    cloud.OnReadEnd();
    CTestShow show(&cloud);
    EXPECT_EQ(show.GetJson("/api/info")["points"], 0);
    const CReadTile tile(show.GetBytes("/api/tile/77/0/0/0/0"));
    EXPECT_EQ(tile.nNumPnts, 0U);
    EXPECT_EQ(tile.nFlags, 0U);
}

} // namespace
