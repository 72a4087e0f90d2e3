#include <bench/OutlineCases.h>

#include <pcl/point_cloud.h>
#include <pcl/point_types.h>
#include <pcl/surface/concave_hull.h>

#include <cmath>

namespace
{

double CalcRingArea(const pcl::PointCloud<pcl::PointXYZ>& corners, const pcl::Vertices& ring)
{
    double dTwice = 0.0;
    for (std::size_t i = 0; i < ring.vertices.size(); ++i)
    {
        const pcl::PointXYZ& a = corners[static_cast<std::size_t>(ring.vertices[i])];
        const pcl::PointXYZ& b =
            corners[static_cast<std::size_t>(ring.vertices[(i + 1) % ring.vertices.size()])];
        dTwice += static_cast<double>(a.x) * static_cast<double>(b.y) -
                  static_cast<double>(b.x) * static_cast<double>(a.y);
    }
    return std::fabs(dTwice) / 2.0;
}

/// The points are laid on z = 0: in three dimensions the hull would be taken in a plane fitted to them.
std::uint64_t OutlinePcl(std::int64_t nNum, CCpuTimer& timer)
{
    const auto pCloud = std::make_shared<pcl::PointCloud<pcl::PointXYZ>>();
    for (const CSamplePnt& pnt : GetTerrain(nNum))
        pCloud->emplace_back(static_cast<float>(pnt.x - CSampleTerrain::c_dOrgX),
                             static_cast<float>(pnt.y - CSampleTerrain::c_dOrgY), 0.0F);
    pcl::PointCloud<pcl::PointXYZ> corners;
    std::vector<pcl::Vertices> vecRings;
    timer.Measure(
        [&]
        {
            pcl::ConcaveHull<pcl::PointXYZ> hull;
            hull.setInputCloud(pCloud);
            hull.setDimension(2);
            hull.setAlpha(c_dOutlineDistance);
            hull.reconstruct(corners, vecRings);
        });
    double dArea = 0.0; // of the rings the outer one is the largest; the others are holes
    for (const pcl::Vertices& ring : vecRings)
        dArea = std::max(dArea, CalcRingArea(corners, ring));
    return CheckOutlineArea(nNum, dArea);
}

void AddOutlineRows()
{
    for (const std::int64_t nNum : BenchSizes({100000, 1000000}))
        AddRow({"outline", "outline, d = 2 m", nNum, "PCL ConcaveHull", 0.0,
                [=](CCpuTimer& timer) { return OutlineProduct(nNum, timer); },
                [=](CCpuTimer& timer) { return OutlinePcl(nNum, timer); }, BenchResult_Same, 0.0,
                nNum < 1000000 ? 0 : 3});
}

const CBenchGroup c_group("outline", AddOutlineRows);

} // namespace
