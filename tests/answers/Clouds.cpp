#include <tests/answers/Clouds.h>

#include <sample/CSampleTerrain.h>
#include <tests/support/CRandom.h>

#include <utility>
#include <vector>

namespace
{

using TPnts = std::vector<zor::geom::PNT_3D>;

constexpr int c_nNumTerrain = 20000;
constexpr int c_nNumClusters = 12;

TPnts MakeTerrain()
{
    TPnts pnts;
    for (const CSamplePnt& pnt : CSampleTerrain(c_nNumTerrain).CalcPnts())
        pnts.emplace_back(pnt.x, pnt.y, pnt.z);
    return pnts;
}

/// Whole compact units, a little above so that the conversion to them finds them again.
zor::geom::PNT_3D Units(std::int64_t x, std::int64_t y, std::int64_t z)
{
    const auto coord = [](std::int64_t n)
    { return (static_cast<double>(n) + (n < 0 ? -0.25 : 0.25)) / 10000.0; };
    return {coord(x), coord(y), coord(z)};
}

/// A point somewhere in a box. The numbers are drawn one after the other: of arguments the order is the
/// compiler's.
zor::geom::PNT_3D Draw(CRandom& random, const zor::geom::PNT_3D& from, const zor::geom::PNT_3D& size)
{
    const double dX = random.Unit();
    const double dY = random.Unit();
    const double dZ = random.Unit();
    return {from.x + dX * size.x, from.y + dY * size.y, from.z + dZ * size.z};
}

/// The same in whole compact units, from nMin to an end each.
zor::geom::PNT_3D DrawUnits(CRandom& random, std::int64_t nMin, std::int64_t nX, std::int64_t nY,
                            std::int64_t nZ)
{
    const std::int64_t x = random.Int(nMin, nX);
    const std::int64_t y = random.Int(nMin, nY);
    const std::int64_t z = random.Int(nMin, nZ);
    return Units(x, y, z);
}

/// Points anywhere in a box of compact units, its corner at 0.
TPnts MakeBox(int nNum, std::int64_t nX, std::int64_t nY, std::int64_t nZ)
{
    CRandom random(static_cast<std::uint64_t>(nNum + nX));
    TPnts pnts{Units(0, 0, 0), Units(nX, nY, nZ)};
    while (static_cast<int>(pnts.size()) < nNum)
        pnts.push_back(DrawUnits(random, 0, nX, nY, nZ));
    return pnts;
}

/// `nNum` points in the uppermost octant of a cube, one in its lowest.
TPnts MakeOneOctant(int nNum, std::int64_t nEdge)
{
    TPnts pnts{Units(0, 0, 0)};
    for (const zor::geom::PNT_3D& pnt : MakeBox(nNum, nEdge / 2 - 1, nEdge / 2 - 1, nEdge / 2 - 1))
        pnts.emplace_back(pnt.x + static_cast<double>(nEdge) / 20000.0,
                          pnt.y + static_cast<double>(nEdge) / 20000.0,
                          pnt.z + static_cast<double>(nEdge) / 20000.0);
    return pnts;
}

/// Every corner and centre of the cubes of two levels, three times each.
TPnts MakeOnPlanes()
{
    TPnts pnts{Units(0, 0, 0)};
    for (int i = 0; i < 375; ++i)
        pnts.push_back(Units(i % 5 * 10000 - 20000, i / 5 % 5 * 10000 - 20000, i / 25 % 5 * 10000 - 20000));
    return pnts;
}

TPnts MakeClusters()
{
    CRandom random(20261122);
    TPnts pnts;
    for (int i = 0; i < c_nNumClusters; ++i)
    {
        const zor::geom::PNT_3D at = Draw(random, {0.0, 0.0, 0.0}, {900.0, 900.0, 90.0});
        const double dSize = random.Unit() * 60.0;
        for (int k = 0; k < 400; ++k)
            pnts.push_back(Draw(random, at, {dSize, dSize, dSize}));
    }
    return pnts;
}

/// From end to end of what a cloud holds.
TPnts MakeFullSpan()
{
    constexpr std::int64_t c_nEnd = 2147483647;
    CRandom random(9);
    TPnts pnts{Units(0, 0, 0), Units(-c_nEnd, -c_nEnd, -c_nEnd), Units(c_nEnd, c_nEnd, c_nEnd)};
    for (int i = 0; i < 3000; ++i)
        pnts.push_back(DrawUnits(random, -c_nEnd, c_nEnd, c_nEnd, c_nEnd));
    return pnts;
}

/// Heights above the same places.
TPnts MakeStacks()
{
    TPnts pnts;
    for (int i = 0; i < 3000; ++i)
        pnts.push_back(Units(i % 30 * 7000, i % 25 * 9000, i * 13 % 50000));
    return pnts;
}

/// Two groups at the ends of a wide cloud: the tree is as deep as it gets.
TPnts MakeDeep()
{
    TPnts pnts = MakeBox(1500, 3, 3, 3);
    pnts.push_back(Units(2000000000, 2000000000, 2000000000));
    return pnts;
}

std::vector<std::pair<std::string, TPnts>> MakeAll()
{
    return {{"empty", {}},
            {"one", {{500000.123456, 4000000.5, 12.34}}},
            {"equal", TPnts(3000, {12.5, -3.25, 7.0})},
            {"stacks", MakeStacks()},
            {"planes", MakeOnPlanes()},
            {"flat", MakeBox(3000, 1000000, 2000000, 0)},
            {"line", MakeBox(2000, 5000000, 0, 0)},
            {"octant_10", MakeOneOctant(10, 1000)},
            {"octant_11", MakeOneOctant(11, 1001)},
            {"octant_999", MakeOneOctant(999, 1000)},
            {"octant_1000", MakeOneOctant(1000, 1000)},
            {"small", MakeBox(2000, 900, 900, 900)},
            {"space", MakeBox(4000, 3000000, 3000000, 3000000)},
            {"deep", MakeDeep()},
            {"span", MakeFullSpan()},
            {"clusters", MakeClusters()},
            {"terrain", MakeTerrain()}};
}

void Fill(CPntCld& cld, const TPnts& pnts, bool bColor)
{
    cld.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
    cld.OnReadNumPnts(static_cast<int>(pnts.size()));
    CRandom random(3);
    for (const zor::geom::PNT_3D& pnt : pnts)
    {
        const std::uint64_t n = random.Next();
        if (bColor)
            cld.OnReadPnt(pnt.x, pnt.y, pnt.z, static_cast<unsigned char>(n & 0xFFU),
                          static_cast<unsigned char>(n >> 8U & 0xFFU),
                          static_cast<unsigned char>(n >> 16U & 0xFFU));
        else
            cld.OnReadPnt(pnt.x, pnt.y, pnt.z);
    }
    cld.OnReadEnd();
}

/// Every third point away, of the others every fifth selected.
void Thin(CPntCld& cld)
{
    for (int i = 0; i < cld.GetNumPnts(); i += 3)
        cld.SelPnt(i, false);
    cld.DelSelPnts();
    for (int i = 0; i < cld.GetNumPnts(); i += 5)
        cld.SelPnt(i, false);
}

} // namespace

void ForEachCloud(ICldColorListener& colors, const std::function<void(const std::string&, CPntCld&)>& fn)
{
    for (const auto& [sName, pnts] : MakeAll())
    {
        for (const bool bColor : {false, true})
        {
            CPntCld cld(&colors);
            Fill(cld, pnts, bColor);
            fn(sName + (bColor ? "/colour" : "/plain"), cld);
            Thin(cld);
            fn(sName + (bColor ? "/colour/thinned" : "/plain/thinned"), cld);
        }
    }
}
