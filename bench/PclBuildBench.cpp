#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <octree/BuildTree.h>
#include <octree/Compact.h>

#include <pcl/octree/octree_search.h>
#include <pcl/point_cloud.h>
#include <pcl/point_types.h>

namespace
{

/// Both sides index the same points: the compact ones, as floats for the peer.
struct CBuildCase
{
    std::vector<CTruncPnt> vecPnts;
    pcl::PointCloud<pcl::PointXYZ>::Ptr pCloud;
};

const CBuildCase& GetCase(std::int64_t nNum, bool bShuffled)
{
    static CBuildCase theCase;
    static std::int64_t nNumMade = -1;
    static bool bShuffledMade = false;
    if (nNum != nNumMade || bShuffled != bShuffledMade)
    {
        theCase.vecPnts = MakeCompact(nNum, bShuffled);
        theCase.pCloud.reset(new pcl::PointCloud<pcl::PointXYZ>);
        theCase.pCloud->reserve(theCase.vecPnts.size());
        for (const CTruncPnt& pnt : theCase.vecPnts)
            theCase.pCloud->push_back({static_cast<float>(pnt.m_nX / c_dCompactScale),
                                       static_cast<float>(pnt.m_nY / c_dCompactScale),
                                       static_cast<float>(pnt.m_nZ / c_dCompactScale)});
        nNumMade = nNum;
        bShuffledMade = bShuffled;
    }
    return theCase;
}

std::uint64_t SumLeaves(const COcTreeNode& node)
{
    std::uint64_t nSum = 0;
    for (const COcTreeChild child : node.GetChildren())
        nSum += child.IsLeaf() ? static_cast<std::uint64_t>(child.GetLeaf().m_nCount)
                               : SumLeaves(child.GetNode());
    return nSum;
}

std::uint64_t BuildProduct(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    std::vector<CTruncPnt> vecPnts = GetCase(nNum, bShuffled).vecPnts;
    COcTreeIndex tree;
    timer.Measure([&] { tree = BuildTree(vecPnts.data(), static_cast<std::int32_t>(nNum)); });
    return SumLeaves(*tree.m_pRoot);
}

std::uint64_t BuildPcl(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    constexpr double c_dResolution = 1.2; // leaves of about as many points as the product's
    pcl::octree::OctreePointCloudSearch<pcl::PointXYZ> tree(c_dResolution);
    tree.setInputCloud(GetCase(nNum, bShuffled).pCloud);
    timer.Measure([&] { tree.addPointsFromInputCloud(); });
    std::uint64_t nSum = 0;
    for (auto it = tree.leaf_depth_begin(); it != tree.leaf_depth_end(); ++it)
        nSum += it.getLeafContainer().getSize();
    return nSum;
}

void AddBuildRow(std::int64_t nNum, bool bShuffled, double dBar)
{
    AddRow({"build", bShuffled ? "tree build, shuffled" : "tree build, scan order", nNum,
            "PCL octree, resolution 1.2 m", dBar,
            [=](CCpuTimer& timer) { return BuildProduct(nNum, bShuffled, timer); },
            [=](CCpuTimer& timer) { return BuildPcl(nNum, bShuffled, timer); }});
}

void AddBuildRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddBuildRow(nNum, false, 0.70);
    AddBuildRow(BenchSizes({1000000}).back(), true, 0.15);
}

const CBenchGroup group("build", AddBuildRows);

} // namespace
