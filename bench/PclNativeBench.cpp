#include <bench/CTempFile.h>
#include <bench/NativeFiles.h>

#include <pcl/io/pcd_io.h>
#include <pcl/point_types.h>

namespace
{

const std::string& GetTerrainPcd(std::int64_t nNum)
{
    static CTempFiles files;
    return files.Get(std::to_string(nNum) + ".pcd",
                     [&](const std::string& sPath)
                     {
                         pcl::PointCloud<pcl::PointXYZ> cloud;
                         const CSamplePnt first = GetTerrain(nNum).front();
                         for (const CSamplePnt& pnt : GetTerrain(nNum))
                             cloud.push_back({static_cast<float>(pnt.x - first.x),
                                              static_cast<float>(pnt.y - first.y),
                                              static_cast<float>(pnt.z - first.z)});
                         return pcl::io::savePCDFileBinary(sPath, cloud) == 0;
                     });
}

std::uint64_t LoadPcd(std::int64_t nNum, CCpuTimer& timer)
{
    const std::string& sPath = GetTerrainPcd(nNum);
    pcl::PointCloud<pcl::PointXYZ> cloud;
    timer.Measure([&] { pcl::io::loadPCDFile(sPath, cloud); });
    return cloud.size();
}

void AddPcdRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        for (const bool bColor : {false, true})
            AddRow({"native",
                    bColor ? "native load, octree ready, colour" : "native load, octree ready, plain", nNum,
                    "PCL loadPCDFile, no index", 0.40,
                    [=](CCpuTimer& timer) { return LoadNative(nNum, bColor, timer); },
                    [=](CCpuTimer& timer) { return LoadPcd(nNum, timer); }});
}

const CBenchGroup group("native", AddPcdRows);

} // namespace
