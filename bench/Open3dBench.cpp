#include <bench/PlyCases.h>
#include <bench/QueryCases.h>

#include <open3d/geometry/PointCloud.h>
#include <open3d/io/PointCloudIO.h>

namespace
{

using TCloud = open3d::geometry::PointCloud;

const TCloud& GetCloud(std::int64_t nNum)
{
    static TCloud cloud;
    if (static_cast<std::int64_t>(cloud.points_.size()) != nNum)
    {
        cloud.points_.clear();
        for (const CSamplePnt& pnt : GetTerrain(nNum))
            cloud.points_.emplace_back(pnt.x - CSampleTerrain::c_dOrgX, pnt.y - CSampleTerrain::c_dOrgY,
                                       pnt.z);
    }
    return cloud;
}

std::uint64_t LodOpen3d(std::int64_t nNum, double dLod, CCpuTimer& timer)
{
    std::shared_ptr<TCloud> pThinned;
    timer.Measure([&] { pThinned = GetCloud(nNum).VoxelDownSample(dLod); });
    return pThinned->points_.size();
}

std::uint64_t LoadOpen3d(std::int64_t nNum, CCpuTimer& timer)
{
    const std::string sPath = GetTerrainPly(nNum);
    TCloud cloud;
    timer.Measure([&] { open3d::io::ReadPointCloudFromPLY(sPath, cloud, {}); });
    CMmSum sum = MakeRelativeSum();
    for (const Eigen::Vector3d& pnt : cloud.points_)
        sum.Add(pnt.x(), pnt.y(), pnt.z());
    return cloud.colors_.size() == cloud.points_.size() ? sum.Get() : 0;
}

void AddOpen3dLodRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddLodRows(nNum, "Open3D VoxelDownSample",
               [=](double dLod, CCpuTimer& timer) { return LodOpen3d(nNum, dLod, timer); });
}

void AddOpen3dPlyRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddRow({"ply",
                c_pPlyLoad,
                nNum,
                "Open3D, no index",
                {0.85, 0.60},
                [=](CCpuTimer& timer) { return LoadProduct(nNum, timer); },
                [=](CCpuTimer& timer) { return LoadOpen3d(nNum, timer); }});
}

const CBenchGroup c_groupLod("traversal", AddOpen3dLodRows);
const CBenchGroup c_groupPly("ply", AddOpen3dPlyRows);

} // namespace
