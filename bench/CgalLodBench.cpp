#include <bench/QueryCases.h>

#include <CGAL/Simple_cartesian.h>
#include <CGAL/grid_simplify_point_set.h>

namespace
{

using TKernel = CGAL::Simple_cartesian<double>;

std::uint64_t LodCgal(std::int64_t nNum, double dLod, CCpuTimer& timer)
{
    std::vector<TKernel::Point_3> vecPnts; // afresh: it is reordered
    vecPnts.reserve(static_cast<std::size_t>(nNum));
    for (const CSamplePnt& pnt : GetTerrain(nNum))
        vecPnts.emplace_back(pnt.x - CSampleTerrain::c_dOrgX, pnt.y - CSampleTerrain::c_dOrgY, pnt.z);
    std::int64_t nNumLeft = 0;
    timer.Measure([&] { nNumLeft = CGAL::grid_simplify_point_set(vecPnts, dLod) - vecPnts.begin(); });
    return static_cast<std::uint64_t>(nNumLeft);
}

void AddCgalLodRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddLodRows(nNum, "CGAL grid_simplify_point_set",
               [=](double dLod, CCpuTimer& timer) { return LodCgal(nNum, dLod, timer); });
}

const CBenchGroup c_group("traversal", AddCgalLodRows);

} // namespace
