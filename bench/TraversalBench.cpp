#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>

#include <cmath>

namespace
{

using zor::geom::PLANE_3D;

constexpr int c_nBatch = 4096;

/// Six planes around a box in the middle of the terrain that holds the given share of its plan.
std::vector<PLANE_3D> MakeBox(std::int64_t nNum, double dShare)
{
    zor::geom::RECT_3D rect;
    GetTerrainCld(nNum).GetBdry(rect);
    const double dX = (rect.xmin + rect.xmax) / 2.0;
    const double dY = (rect.ymin + rect.ymax) / 2.0;
    const double dHalf = (rect.xmax - rect.xmin) / 2.0 * std::sqrt(dShare);
    return {PLANE_3D(-1.0, 0.0, 0.0, dX - dHalf),      PLANE_3D(1.0, 0.0, 0.0, -dX - dHalf),
            PLANE_3D(0.0, -1.0, 0.0, dY - dHalf),      PLANE_3D(0.0, 1.0, 0.0, -dY - dHalf),
            PLANE_3D(0.0, 0.0, -1.0, rect.zmin - 1.0), PLANE_3D(0.0, 0.0, 1.0, -rect.zmax - 1.0)};
}

/// Measures a query several times over, so that short ones are measured at all.
template <class TQuery>
std::uint64_t RunQuery(CCpuTimer& timer, int nTimes, TQuery query)
{
    CSumListener listener;
    timer.Measure(
        [&]
        {
            for (int i = 0; i < nTimes; ++i)
                query(&listener);
        });
    return listener.m_nSum;
}

template <class TQuery>
std::int64_t CountPnts(TQuery query)
{
    CSumListener listener;
    query(&listener);
    return listener.m_nNumPnts;
}

/// A row in nanoseconds a delivered point.
template <class TQuery>
void AddPerPntRow(const std::string& sItem, std::int64_t nNum, double dBar, TQuery query)
{
    const std::int64_t nDelivered = CountPnts(query);
    const int nTimes = static_cast<int>(1 + 1000000 / (nDelivered + 1));
    CBenchRow row{"traversal", sItem + ", " + std::to_string(nDelivered) + " delivered",         nNum,   "",
                  dBar,        [=](CCpuTimer& timer) { return RunQuery(timer, nTimes, query); }, nullptr};
    row.dPerUnits = static_cast<double>(nDelivered) * nTimes;
    AddRow(row);
}

void AddTraversalRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
    {
        AddPerPntRow("GetPnts", nNum, 10.0,
                     [=](CSumListener* pListener) { GetTerrainCld(nNum).GetPnts(pListener, c_nBatch); });
        AddPerPntRow("GetPnts_Clip, a quarter", nNum, 10.0,
                     [=, planes = MakeBox(nNum, 0.25)](CSumListener* pListener)
                     { GetTerrainCld(nNum).GetPnts_Clip(pListener, planes, c_nBatch); });
        for (const double dLod : {1.0, 5.0, 50.0})
            AddPerPntRow("GetPnts_Lod, " + std::to_string(static_cast<int>(dLod)) + " m", nNum, 0.0,
                         [=](CSumListener* pListener)
                         { GetTerrainCld(nNum).GetPnts_Lod(pListener, dLod, c_nBatch); });
    }
}

const CBenchGroup group("traversal", AddTraversalRows);

} // namespace
