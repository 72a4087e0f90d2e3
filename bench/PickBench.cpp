// The point under a 5-pixel cursor, beside a look at every point.

#include <bench/BenchTable.h>
#include <bench/PickCases.h>
#include <bench/QueryCases.h>
#include <zor4data/PickPnt.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

// 5 pixels of a picture of 1080 lines that shows 60 degrees: 5 * 2 * tan(30°) / 1080.
constexpr double c_dTan = 0.005345834;

constexpr int c_nNumAcross = 100; // rays of a view, each way

/// A camera's rays: where it is, and where it looks to.
struct CRays
{
    PNT_3D from;
    std::vector<PNT_3D> vecDirections;
};

struct CView
{
    const char* pName;
    double dBack;   ///< how far the camera stands in front of the terrain's southern edge, of its side
    double dHeight; ///< above the terrain's lowest point, of its side
};

constexpr CView c_aViews[] = {
    {"from above", -0.5, 1.2}, {"oblique", 0.6, 0.8}, {"from low down", 0.05, 0.06}};

/// Looks over the terrain: rays to a lattice of places on its middle height, and some past it.
CRays MakeRays(std::int64_t nNum, const CView& view, int nNumAcross)
{
    zor::geom::RECT_3D bdry;
    GetTerrainCld(nNum).GetBdry(bdry);
    const double dSide = bdry.xmax - bdry.xmin;
    CRays rays{PNT_3D((bdry.xmin + bdry.xmax) / 2.0, bdry.ymin - view.dBack * dSide,
                      bdry.zmin + view.dHeight * dSide),
               {}};
    for (int i = 0; i < nNumAcross; ++i)
        for (int k = 0; k < nNumAcross; ++k)
        {
            const double x = bdry.xmin + dSide * (i + 0.37) / nNumAcross;
            const double y = bdry.ymin + dSide * 1.1 * (k + 0.41) / nNumAcross;
            const double z = (bdry.zmin + bdry.zmax) / 2.0;
            rays.vecDirections.emplace_back(x - rays.from.x, y - rays.from.y, z - rays.from.z);
        }
    return rays;
}

std::uint64_t PickProduct(std::int64_t nNum, const CRays& rays, const std::vector<PLANE_3D>& planes,
                          CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    std::uint64_t nSum = 0;
    timer.Measure(
        [&]
        {
            for (const PNT_3D& direction : rays.vecDirections)
                nSum = nSum * 31U +
                       static_cast<std::uint64_t>(PickPnt(cld, rays.from, direction, c_dTan, planes) + 1);
        });
    timer.DivideBy(static_cast<std::int64_t>(rays.vecDirections.size()));
    return nSum;
}

/// The plain loop: the ray in doubles, every point asked.
int ScanRay(const std::vector<PNT_3D>& vecPnts, const PNT_3D& from, const PNT_3D& direction)
{
    const double dLargest =
        std::max({std::fabs(direction.x), std::fabs(direction.y), std::fabs(direction.z)});
    const PNT_3D scaled(direction.x / dLargest, direction.y / dLargest, direction.z / dLargest);
    const double dLength = std::sqrt(scaled.x * scaled.x + scaled.y * scaled.y + scaled.z * scaled.z);
    const PNT_3D u(scaled.x / dLength, scaled.y / dLength, scaled.z / dLength);
    int nBest = -1;
    double dBest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < vecPnts.size(); ++i)
    {
        const double x = vecPnts[i].x - from.x;
        const double y = vecPnts[i].y - from.y;
        const double z = vecPnts[i].z - from.z;
        const double t = x * u.x + y * u.y + z * u.z;
        const double dX = y * u.z - z * u.y;
        const double dY = z * u.x - x * u.z;
        const double dZ = x * u.y - y * u.x;
        if (t > 0.0 && t < dBest && dX * dX + dY * dY + dZ * dZ <= (c_dTan * t) * (c_dTan * t))
        {
            dBest = t;
            nBest = static_cast<int>(i);
        }
    }
    return nBest;
}

std::uint64_t PickScan(std::int64_t nNum, const CRays& rays, CCpuTimer& timer)
{
    const std::vector<PNT_3D>& vecPnts = GetCldPnts(nNum);
    std::uint64_t nSum = 0;
    timer.Measure(
        [&]
        {
            for (const PNT_3D& direction : rays.vecDirections)
                nSum = nSum * 31U + static_cast<std::uint64_t>(ScanRay(vecPnts, rays.from, direction) + 1);
        });
    timer.DivideBy(static_cast<std::int64_t>(rays.vecDirections.size()));
    return nSum;
}

/// @return nanoseconds of the slowest of a view's picks, each at the better of two tries.
double FindSlowest(std::int64_t nNum, const CRays& rays)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    double dSlowest = 0.0;
    for (const PNT_3D& direction : rays.vecDirections)
    {
        double dBest = std::numeric_limits<double>::infinity();
        for (int i = 0; i < 2; ++i)
        {
            CCpuTimer timer;
            timer.Measure([&] { benchmark::DoNotOptimize(PickPnt(cld, rays.from, direction, c_dTan, {})); });
            dBest = std::min(dBest, timer.GetSeconds() * 1e9);
        }
        dSlowest = std::max(dSlowest, dBest);
    }
    return dSlowest;
}

constexpr double c_dGoal = 200000.0; // nanoseconds

/// A row of all picks of a view, by itself. @param planes  that the pick respects.
void AddViewRow(std::int64_t nNum, const CView& view, const std::string& sWith,
                const std::vector<PLANE_3D>& planes)
{
    CBenchRow row{"pick",
                  std::string("5-pixel cursor, ") + view.pName + sWith + ", each of 10000",
                  nNum,
                  "",
                  c_dGoal,
                  [=](CCpuTimer& timer)
                  { return PickProduct(nNum, MakeRays(nNum, view, c_nNumAcross), planes, timer); },
                  nullptr};
    row.dPerUnits = 1.0;
    AddRow(row);
}

void AddPickRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    for (const CView& view : c_aViews)
    {
        AddViewRow(nNum, view, "", {});
        const std::string sItem = std::string("5-pixel cursor, ") + view.pName;
        AddValue({"pick", sItem + ", the slowest of 10000", nNum, "ns", c_dGoal,
                  [=] { return FindSlowest(nNum, MakeRays(nNum, view, c_nNumAcross)); }});
        constexpr int c_nNumScanned = 4; // across: a look at every point takes its time
        AddRow({"pick", sItem, nNum, "plain loop over float64", 0.01,
                [=](CCpuTimer& timer)
                { return PickProduct(nNum, MakeRays(nNum, view, c_nNumScanned), {}, timer); },
                [=](CCpuTimer& timer)
                { return PickScan(nNum, MakeRays(nNum, view, c_nNumScanned), timer); }});
    }
    AddViewRow(nNum, c_aViews[1], ", behind 6 planes", MakeClipBox(nNum, 0.25));
}

const CBenchGroup c_group("pick", AddPickRows);

} // namespace
