#include <host/query/CalcDensity.h>

#include <host/query/Query.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace zorcld
{

namespace
{

constexpr double c_dPntsPerCell = 16.0;
constexpr double c_dMaxCells = 6.7e7; // a bit each: 8 MiB

struct CGrid
{
    double dCell;
    std::int64_t nColumns;
    std::int64_t nRows;
};

CGrid MakeGrid(const zor::geom::RECT_3D& box, double dCell)
{
    const auto count = [&](double dExtent)
    { return static_cast<std::int64_t>(std::floor(dExtent / dCell)) + 1; };
    return {dCell, count(box.xmax - box.xmin), count(box.ymax - box.ymin)};
}

double CountCells(const CPntCld& cloud, const zor::geom::RECT_3D& box, const CGrid& grid)
{
    std::vector<bool> vecHit(static_cast<std::size_t>(grid.nColumns * grid.nRows));
    ForEachPnt(cloud, CQuery(),
               [&](const CCldCadPnt& pnt)
               {
                   const double dX = std::clamp(std::floor((pnt.m_pnt.x - box.xmin) / grid.dCell), 0.0,
                                                static_cast<double>(grid.nColumns - 1));
                   const double dY = std::clamp(std::floor((pnt.m_pnt.y - box.ymin) / grid.dCell), 0.0,
                                                static_cast<double>(grid.nRows - 1));
                   vecHit[static_cast<std::size_t>(static_cast<std::int64_t>(dY) * grid.nColumns +
                                                   static_cast<std::int64_t>(dX))] = true;
               });
    return static_cast<double>(std::count(vecHit.begin(), vecHit.end(), true));
}

} // namespace

CDensity CalcDensity(const CPntCld& cloud)
{
    zor::geom::RECT_3D box;
    const double dNumPnts = cloud.GetNumPnts();
    if (dNumPnts < 1.0 || !cloud.GetBdry(box))
        return {};
    // The box of a native file is what the file says: both sides may be below 0, and their product above.
    if (!(box.xmax > box.xmin) || !(box.ymax > box.ymin))
        return {};
    double dArea = (box.xmax - box.xmin) * (box.ymax - box.ymin);

    // A cloud that fills little of its box needs smaller cells than the box suggests.
    const double dBoxArea = dArea;
    for (int nRound = 0; nRound < 3; ++nRound)
    {
        const double dCellArea = std::max(dArea * c_dPntsPerCell / dNumPnts, dBoxArea / c_dMaxCells);
        const CGrid grid = MakeGrid(box, std::sqrt(dCellArea));
        if (static_cast<double>(grid.nColumns) * static_cast<double>(grid.nRows) > 2.0 * c_dMaxCells)
            break;
        dArea = std::min(dArea, CountCells(cloud, box, grid) * dCellArea);
    }
    return {dNumPnts / dArea, std::sqrt(dArea / dNumPnts)};
}

} // namespace zorcld
