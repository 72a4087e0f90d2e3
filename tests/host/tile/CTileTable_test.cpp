#include <host/tile/CTileTable.h>

#include <host/output/CFailure.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

using namespace zorcld;

namespace
{

constexpr std::int32_t c_nUnit = 10000; // steps

/// Points in a square grid.
std::vector<CTilePnt> MakeGrid(std::int32_t nEdge, double dApart)
{
    std::vector<CTilePnt> vecPnts;
    for (std::int32_t i = 0; i < nEdge; ++i)
        for (std::int32_t k = 0; k < nEdge; ++k)
            vecPnts.push_back({{static_cast<std::int32_t>(i * dApart * c_nUnit),
                                static_cast<std::int32_t>(k * dApart * c_nUnit), 0},
                               {}});
    return vecPnts;
}

std::string FindRefusal(double dSize, double dBuffer, const std::vector<CTilePnt>& vecPnts)
{
    const CTileGrid grid(dSize, dBuffer, TOrigin{}, 1.0);
    CTileTable table(grid);
    try
    {
        table.Count(vecPnts);
    }
    catch (const CUsageError& error)
    {
        return error.what();
    }
    return {};
}

} // namespace

TEST(CTileTable, TilesOfOnePnt_ReachEachOther)
{
    const CTileGrid grid(10.0, 10.0, TOrigin{}, 1.0);
    CTileTable table(grid);
    table.Count({{{5 * c_nUnit, 5 * c_nUnit, 0}, {}}, {{17 * c_nUnit, 5 * c_nUnit, 0}, {}}});
    const std::vector<CTileCount>& vecTiles = table.GetTiles();
    const auto get = [&](std::int32_t nColumn, std::int32_t nRow)
    {
        const auto found = std::find_if(vecTiles.begin(), vecTiles.end(),
                                        [&](const CTileCount& tile) {
                                            return tile.cell == CCell{nColumn, nRow};
                                        });
        return found == vecTiles.end() ? CTileCount{} : *found;
    };
    EXPECT_EQ(get(0, 0).nNumCore, 1);
    EXPECT_EQ(get(0, 0).nNumAll, 2);
    EXPECT_EQ(get(1, 0).nNumCore, 1);
    EXPECT_EQ(get(1, 0).nNumAll, 2);
    EXPECT_EQ(get(2, 0).nNumCore, 0);
    EXPECT_EQ(get(2, 0).nNumAll, 1);
}

// Each of these points has a tile, and a thousand others in its reach that are not made.
TEST(CTileTable, FarApartWithSmallTiles_TilesThatAreMadeCount)
{
    EXPECT_EQ(FindRefusal(4.2, 67.0, MakeGrid(34, 190.0)), "");
    EXPECT_NE(FindRefusal(4.2, 67.0, MakeGrid(80, 190.0)).find("--size: is so small beside the buffer"),
              std::string::npos);
}

TEST(CTileTable, AMillionTilesAndNoMore)
{
    EXPECT_EQ(FindRefusal(0.5, 0.0, MakeGrid(1000, 0.5)), "");
    EXPECT_NE(FindRefusal(0.5, 0.0, MakeGrid(1001, 0.5)).find("more than 1 000 000 tiles"),
              std::string::npos);
}
