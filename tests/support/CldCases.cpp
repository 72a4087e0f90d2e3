#include <tests/support/CldCases.h>

#include <tests/support/CRandom.h>
#include <tests/support/RandomCld.h>

#include <array>

using zor::geom::PNT_3D;

namespace
{

using TPnts = std::vector<PNT_3D>;

PNT_3D Units(std::int32_t x, std::int32_t y, std::int32_t z)
{
    return {CoordFromUnits(x), CoordFromUnits(y), CoordFromUnits(z)};
}

TPnts AllEqual(int nSize)
{
    return TPnts(static_cast<std::size_t>(nSize), PNT_3D(12.5, -3.25, 7.0));
}

/// Every corner, edge middle, face middle and the centre of a cube: all splitting planes of two levels.
TPnts OnSplittingPlanes()
{
    TPnts pnts{PNT_3D(0.0, 0.0, 0.0)};
    for (int i = 0; i < 5 * 5 * 5; ++i)
        for (int n = 0; n < 3; ++n)
            pnts.push_back(Units(i % 5 * 10000 - 20000, i / 5 % 5 * 10000 - 20000, i / 25 * 10000 - 20000));
    return pnts;
}

/// `nCount` points in the uppermost octant of a cube of edge `nEdge`, one at the opposite corner.
TPnts InOneOctant(int nCount, int nEdge)
{
    CRandom random(static_cast<std::uint64_t>(nCount * 10000 + nEdge));
    TPnts pnts{PNT_3D(0.0, 0.0, 0.0)};
    for (int i = 1; i < nCount; ++i)
        pnts.push_back(Units(static_cast<std::int32_t>(random.Int(nEdge / 2, nEdge)),
                             static_cast<std::int32_t>(random.Int(nEdge / 2, nEdge)),
                             static_cast<std::int32_t>(random.Int(nEdge / 2, nEdge))));
    pnts.push_back(Units(nEdge, nEdge, nEdge));
    return pnts;
}

TPnts FarOrigin(int nSize)
{
    CRandom random(17);
    TPnts pnts{PNT_3D(500000.123456, 4000000.5, 12.34)};
    for (int i = 1; i < nSize; ++i)
        pnts.emplace_back(500000.0 + random.Unit() * 100.0, 4000000.0 + random.Unit() * 100.0,
                          random.Unit() * 20.0);
    return pnts;
}

TPnts FullSpan()
{
    TPnts pnts{PNT_3D(0.0, 0.0, 0.0)};
    for (int i = 0; i < 8; ++i)
        for (const double d : {1.0, 1000.0, 214748.3647, 214748.3649, 1e6, 1e300})
            pnts.emplace_back(i % 2 == 0 ? d : -d, i / 2 % 2 == 0 ? d : -d, i / 4 == 0 ? d : -d);
    return pnts;
}

/// Twelve points one unit apart at a corner of the whole span: their leaf lies below depth 20.
TPnts Deep()
{
    TPnts pnts{PNT_3D(0.0, 0.0, 0.0), PNT_3D(-214748.3, -214748.3, -214748.3)};
    for (int i = 0; i < 12; ++i)
        pnts.push_back(Units(2147480000 + i, 2147480000, 2147480000));
    return pnts;
}

TPnts Stacked(int nSize)
{
    TPnts pnts;
    for (int i = 0; i < nSize; ++i)
        pnts.push_back(Units(i % 7 * 1000, i % 3 * 1000, i * 50));
    return pnts;
}

TPnts Flat(int nSize)
{
    CRandom random(5);
    TPnts pnts;
    for (int i = 0; i < nSize; ++i)
        pnts.emplace_back(random.Unit() * 50.0, random.Unit() * 30.0, 8.0);
    return pnts;
}

TPnts Random(int nSize, int nShape, bool bShuffled)
{
    TPnts pnts{PNT_3D(0.0, 0.0, 0.0)};
    for (const Ref::CPnt& pnt : MakePnts({nShape, nSize, static_cast<std::uint64_t>(nSize), bShuffled}))
        pnts.push_back(Units(pnt.x, pnt.y, pnt.z));
    return pnts;
}

std::vector<CCldCase> MakeAll()
{
    std::vector<CCldCase> vecCases{
        {"empty", {}},
        {"one", {PNT_3D(1.0, 2.0, 3.0)}},
        {"two", {PNT_3D(1.0, 2.0, 3.0), PNT_3D(4.0, 2.0, 1.0)}},
        {"on the splitting planes", OnSplittingPlanes()},
        {"far origin", FarOrigin(2000)},
        {"int32 span and beyond", FullSpan()},
        {"depth 20", Deep()},
        {"stacked", Stacked(600)},
        {"flat", Flat(1500)},
    };
    for (const int nSize : {10, 11, 999, 1000, 3000})
        vecCases.emplace_back("all equal " + std::to_string(nSize), AllEqual(nSize));
    for (const int nSize : {10, 11, 999, 1000})
        for (const int nEdge : {1000, 1001})
            vecCases.emplace_back("one octant " + std::to_string(nSize) + " edge " + std::to_string(nEdge),
                                  InOneOctant(nSize, nEdge));
    for (int nShape = 0; nShape < c_nNumCldShapes; ++nShape)
        for (const int nSize : {60, 1200})
            vecCases.emplace_back("random shape " + std::to_string(nShape) + " size and seed " +
                                      std::to_string(nSize),
                                  Random(nSize, nShape, nShape % 2 == 0));
    return vecCases;
}

} // namespace

double CoordFromUnits(std::int32_t n)
{
    return (n + (n > 0 ? 0.5 : n < 0 ? -0.5 : 0.0)) / 10000.0;
}

const std::vector<CCldCase>& AllCldCases()
{
    static const std::vector<CCldCase> vecCases = MakeAll();
    return vecCases;
}
