#include <bench/BenchMemory.h>
#include <bench/BuildCases.h>
#include <formats/Compact.h>

#include <pcl/octree/octree_search.h>
#include <pcl/point_cloud.h>
#include <pcl/point_types.h>

namespace
{

using TCloud = pcl::PointCloud<pcl::PointXYZ>;
using TTree = pcl::octree::OctreePointCloudSearch<pcl::PointXYZ>;

constexpr const char* c_pPeer = "PCL octree, resolution 1.2 m";
constexpr double c_dResolution = 1.2; // leaves of about as many points as the product's

TCloud::Ptr MakeCloud(std::int64_t nNum, bool bShuffled)
{
    TCloud::Ptr pCloud(new TCloud);
    pCloud->reserve(static_cast<std::size_t>(nNum));
    for (const CTruncPnt& pnt : GetBuildPnts(nNum, bShuffled))
        pCloud->push_back({static_cast<float>(pnt.m_nX / c_dCompactScale),
                           static_cast<float>(pnt.m_nY / c_dCompactScale),
                           static_cast<float>(pnt.m_nZ / c_dCompactScale)});
    return pCloud;
}

std::uint64_t BuildPcl(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    TTree tree(c_dResolution);
    tree.setInputCloud(MakeCloud(nNum, bShuffled));
    timer.Measure([&] { tree.addPointsFromInputCloud(); });
    std::uint64_t nSum = 0;
    for (auto it = tree.leaf_depth_begin(); it != tree.leaf_depth_end(); ++it)
        nSum += it.getLeafContainer().getSize();
    return nSum;
}

double MeasurePclMemory(std::int64_t nNum)
{
    const TCloud::Ptr pCloud = MakeCloud(nNum, false);
    const std::int64_t nBefore = GetHeapBytes();
    TTree tree(c_dResolution);
    tree.setInputCloud(pCloud);
    tree.addPointsFromInputCloud();
    return static_cast<double>(GetHeapBytes() - nBefore) / static_cast<double>(nNum);
}

void AddBuildRow(std::int64_t nNum, bool bShuffled, CBenchBar bar)
{
    AddRow({"build", bShuffled ? "tree build, shuffled" : "tree build, scan order", nNum, c_pPeer, bar,
            [=](CCpuTimer& timer) { return BuildProduct(nNum, bShuffled, timer); },
            [=](CCpuTimer& timer) { return BuildPcl(nNum, bShuffled, timer); }});
}

void AddBuildRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddBuildRow(nNum, false, {0.70, 0.45});
    const std::int64_t nNum = BenchSizes({1000000}).back();
    AddBuildRow(nNum, true, {0.15, 0.10});
    AddValue({"build",
              "tree memory, heap",
              nNum,
              "B/point",
              {4.0, 3.6},
              [=] { return MeasureTreeMemory(nNum); },
              c_pPeer,
              [=] { return MeasurePclMemory(nNum); }});
}

const CBenchGroup c_group("build", AddBuildRows);

} // namespace
