// The nearest point to a place, beside nanoflann's k-d tree.

#include <bench/BenchTable.h>
#include <bench/CNanoflannPnts.h>
#include <bench/PickCases.h>
#include <zor4data/PickPnt.h>

#include <memory>

namespace
{

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

constexpr int c_nNumPlaces = 20000;

using TPnts = CNanoflannPnts<PNT_3D>;
template <int NumAxes>
using TTree = TNanoflannTree<PNT_3D, NumAxes>;

template <int NumAxes>
const TTree<NumAxes>& GetTree(std::int64_t nNum)
{
    static std::int64_t nMadeFor = -1;
    static std::unique_ptr<TPnts> pPnts;
    static std::unique_ptr<TTree<NumAxes>> pTree;
    if (nMadeFor != nNum)
    {
        pPnts.reset(new TPnts{GetCldPnts(nNum)});
        pTree =
            std::make_unique<TTree<NumAxes>>(NumAxes, *pPnts, nanoflann::KDTreeSingleIndexAdaptorParams(10));
        nMadeFor = nNum;
    }
    return *pTree;
}

/// @return the checksum of the distances from the places to the points found.
template <int NumAxes>
std::uint64_t SumDists(std::int64_t nNum, const std::vector<PNT_3D>& vecPlaces,
                       const std::vector<int>& vecFound)
{
    const std::vector<PNT_3D>& vecPnts = GetCldPnts(nNum);
    CDistSum sum;
    for (std::size_t i = 0; i < vecPlaces.size(); ++i)
    {
        const PNT_3D& pnt = vecPnts[static_cast<std::size_t>(vecFound[i])];
        const double x = pnt.x - vecPlaces[i].x;
        const double y = pnt.y - vecPlaces[i].y;
        const double z = NumAxes == 3 ? pnt.z - vecPlaces[i].z : 0.0;
        sum.Add(x * x + y * y + z * z);
    }
    return sum.Get();
}

template <int NumAxes>
std::uint64_t NearestProduct(std::int64_t nNum, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    const std::vector<PNT_3D> vecPlaces = MakePlaces(nNum, c_nNumPlaces);
    std::vector<int> vecFound(vecPlaces.size());
    timer.Measure(
        [&]
        {
            for (std::size_t i = 0; i < vecPlaces.size(); ++i)
                if constexpr (NumAxes == 3)
                    vecFound[i] = FindNearestPnt(cld, vecPlaces[i], 100.0);
                else
                    vecFound[i] = FindNearestPnt2D(cld, PNT_2D(vecPlaces[i].x, vecPlaces[i].y), 100.0);
        });
    timer.DivideBy(c_nNumPlaces);
    return SumDists<NumAxes>(nNum, vecPlaces, vecFound);
}

template <int NumAxes>
std::uint64_t NearestNanoflann(std::int64_t nNum, CCpuTimer& timer)
{
    const TTree<NumAxes>& tree = GetTree<NumAxes>(nNum);
    const std::vector<PNT_3D> vecPlaces = MakePlaces(nNum, c_nNumPlaces);
    std::vector<int> vecFound(vecPlaces.size());
    timer.Measure(
        [&]
        {
            for (std::size_t i = 0; i < vecPlaces.size(); ++i)
            {
                const double adPlace[3] = {vecPlaces[i].x, vecPlaces[i].y, vecPlaces[i].z};
                std::uint32_t nFound = 0;
                double dSquare = 0.0;
                tree.knnSearch(adPlace, 1, &nFound, &dSquare);
                vecFound[i] = static_cast<int>(nFound);
            }
        });
    timer.DivideBy(c_nNumPlaces);
    return SumDists<NumAxes>(nNum, vecPlaces, vecFound);
}

template <int NumAxes>
void AddNearestRow(const std::string& sItem)
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRow({"pick", sItem, nNum, "nanoflann k-d tree, 10 points a leaf", 0.0,
            [=](CCpuTimer& timer) { return NearestProduct<NumAxes>(nNum, timer); },
            [=](CCpuTimer& timer) { return NearestNanoflann<NumAxes>(nNum, timer); }});
}

void AddNearestRows()
{
    AddNearestRow<3>("nearest point in space");
    AddNearestRow<2>("nearest point in plan");
}

const CBenchGroup c_group("pick", AddNearestRows);

} // namespace
