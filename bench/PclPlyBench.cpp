#include <bench/PlyCases.h>

#include <pcl/io/ply_io.h>
#include <pcl/point_types.h>

namespace
{

std::uint64_t LoadPcl(std::int64_t nNum, CCpuTimer& timer)
{
    const std::string sPath = GetTerrainPly(nNum);
    pcl::PointCloud<pcl::PointXYZRGB> cloud;
    timer.Measure([&] { pcl::io::loadPLYFile(sPath, cloud); });
    CMmSum sum = MakeRelativeSum();
    for (const pcl::PointXYZRGB& pnt : cloud)
        sum.Add(pnt.x, pnt.y, pnt.z);
    return sum.Get();
}

void AddPlyRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddRow({"ply",
                c_pPlyLoad,
                nNum,
                "PCL loadPLYFile, no index",
                {0.33, 0.25},
                [=](CCpuTimer& timer) { return LoadProduct(nNum, timer); },
                [=](CCpuTimer& timer) { return LoadPcl(nNum, timer); }});
}

const CBenchGroup c_group("ply", AddPlyRows);

} // namespace
