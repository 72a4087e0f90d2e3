#include <bench/NativeFiles.h>

#include <pcl/io/pcd_io.h>
#include <pcl/point_types.h>

namespace
{

void SetColor(pcl::PointXYZ&, std::uint8_t) {}

void SetColor(pcl::PointXYZRGB& pnt, std::uint8_t uc)
{
    pnt.r = uc;
    pnt.g = 7;
    pnt.b = 9;
}

template <class TPnt>
std::string GetTerrainPcd(std::int64_t nNum, const char* pSuffix)
{
    const auto write = [=](const std::string& sPath)
    {
        pcl::PointCloud<TPnt> cloud;
        std::uint8_t uc = 0;
        for (const CSamplePnt& sample : GetTerrain(nNum))
        {
            TPnt pnt;
            pnt.x = static_cast<float>(sample.x - CSampleTerrain::c_dOrgX);
            pnt.y = static_cast<float>(sample.y - CSampleTerrain::c_dOrgY);
            pnt.z = static_cast<float>(sample.z);
            SetColor(pnt, uc++);
            cloud.push_back(pnt);
        }
        return pcl::io::savePCDFileBinary(sPath, cloud) == 0;
    };
    return GetBenchFile(std::to_string(nNum) + pSuffix, write);
}

template <class TPnt>
std::uint64_t LoadPcd(const std::string& sPath, CCpuTimer& timer)
{
    pcl::PointCloud<TPnt> cloud;
    timer.Measure([&] { pcl::io::loadPCDFile(sPath, cloud); });
    CMmSum sum = MakeRelativeSum();
    for (const TPnt& pnt : cloud)
        sum.Add(pnt.x, pnt.y, pnt.z);
    return sum.Get();
}

std::uint64_t LoadPcd(std::int64_t nNum, bool bColor, CCpuTimer& timer)
{
    return bColor ? LoadPcd<pcl::PointXYZRGB>(GetTerrainPcd<pcl::PointXYZRGB>(nNum, "c.pcd"), timer)
                  : LoadPcd<pcl::PointXYZ>(GetTerrainPcd<pcl::PointXYZ>(nNum, ".pcd"), timer);
}

void AddPcdRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        for (const bool bColor : {false, true})
            AddRow({"native",
                    bColor ? "native load, octree ready, colour" : "native load, octree ready, plain",
                    nNum,
                    "PCL loadPCDFile, no index",
                    {0.40, 0.25},
                    [=](CCpuTimer& timer) { return LoadNative(nNum, bColor, timer); },
                    [=](CCpuTimer& timer) { return LoadPcd(nNum, bColor, timer); }});
}

const CBenchGroup c_group("native", AddPcdRows);

} // namespace
