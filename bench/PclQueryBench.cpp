#include <bench/QueryCases.h>

#include <pcl/filters/plane_clipper3D.h>
#include <pcl/filters/voxel_grid.h>
#include <pcl/octree/octree_search.h>
#include <pcl/point_cloud.h>
#include <pcl/point_types.h>

namespace
{

using TCloud = pcl::PointCloud<pcl::PointXYZ>;
using TTree = pcl::octree::OctreePointCloudSearch<pcl::PointXYZ>;
using zor::geom::PLANE_3D;
using zor::geom::RECT_2D;

/// Floats hold millimetres only near the terrain's origin: the peer's points are relative to it, in the
/// order of the scan.
const TCloud::Ptr& GetCloud(std::int64_t nNum)
{
    static TCloud::Ptr pCloud;
    if (pCloud != nullptr && static_cast<std::int64_t>(pCloud->size()) == nNum)
        return pCloud;
    pCloud.reset(new TCloud);
    pCloud->reserve(static_cast<std::size_t>(nNum));
    for (const CSamplePnt& pnt : GetTerrain(nNum))
        pCloud->push_back({static_cast<float>(pnt.x - CSampleTerrain::c_dOrgX),
                           static_cast<float>(pnt.y - CSampleTerrain::c_dOrgY), static_cast<float>(pnt.z)});
    return pCloud;
}

const TTree& GetTree(std::int64_t nNum)
{
    constexpr double c_dResolution = 1.2; // leaves of about as many points as the product's
    static std::unique_ptr<TTree> pTree;
    if (pTree == nullptr || pTree->getInputCloud() != GetCloud(nNum))
    {
        pTree = std::make_unique<TTree>(c_dResolution);
        pTree->setInputCloud(GetCloud(nNum));
        pTree->addPointsFromInputCloud();
    }
    return *pTree;
}

std::uint64_t RectsPcl(std::int64_t nNum, const std::vector<RECT_2D>& vecRects, CCpuTimer& timer)
{
    const TTree& tree = GetTree(nNum);
    const TCloud& cloud = *GetCloud(nNum);
    std::vector<pcl::PointXYZ> vecFound; // keeps its memory from rectangle to rectangle
    pcl::Indices indices;
    CMmSum sum = MakeRelativeSum();
    for (const RECT_2D& rect : vecRects)
    {
        vecFound.clear();
        const auto ToX = [](double x) { return static_cast<float>(x - CSampleTerrain::c_dOrgX); };
        const auto ToY = [](double y) { return static_cast<float>(y - CSampleTerrain::c_dOrgY); };
        const Eigen::Vector3f min(ToX(rect.xmin), ToY(rect.ymin), -10000.0F);
        const Eigen::Vector3f max(ToX(rect.xmax), ToY(rect.ymax), 10000.0F);
        timer.Measure(
            [&]
            {
                tree.boxSearch(min, max, indices);
                for (const pcl::index_t nIndex : indices)
                    vecFound.push_back(cloud[static_cast<std::size_t>(nIndex)]);
            });
        for (const pcl::PointXYZ& pnt : vecFound)
            sum.Add(pnt.x, pnt.y, pnt.z);
    }
    timer.DivideBy(static_cast<std::int64_t>(vecRects.size()));
    return sum.Get();
}

/// One clipper a plane, each looking at the indices that the one before it left.
std::uint64_t ClipPcl(std::int64_t nNum, double dShare, CCpuTimer& timer)
{
    const TCloud& cloud = *GetCloud(nNum);
    std::vector<Eigen::Vector4f, Eigen::aligned_allocator<Eigen::Vector4f>> vecPlanes;
    for (const PLANE_3D& plane : MakeClipBox(nNum, dShare)) // its normals point into the kept volume
    {
        const double d = plane.a * CSampleTerrain::c_dOrgX + plane.b * CSampleTerrain::c_dOrgY + plane.d;
        vecPlanes.emplace_back(static_cast<float>(-plane.a), static_cast<float>(-plane.b),
                               static_cast<float>(-plane.c), static_cast<float>(-d));
    }
    pcl::Indices indices;
    timer.Measure(
        [&]
        {
            for (const Eigen::Vector4f& plane : vecPlanes)
            {
                pcl::Indices clipped;
                pcl::PlaneClipper3D<pcl::PointXYZ>(plane).clipPointCloud3D(cloud, clipped, indices);
                indices.swap(clipped);
            }
        });
    CMmSum sum = MakeRelativeSum();
    for (const pcl::index_t nIndex : indices)
    {
        const pcl::PointXYZ& pnt = cloud[static_cast<std::size_t>(nIndex)];
        sum.Add(pnt.x, pnt.y, pnt.z);
    }
    return sum.Get();
}

std::uint64_t LodPcl(std::int64_t nNum, double dLod, CCpuTimer& timer)
{
    TCloud thinned;
    timer.Measure(
        [&]
        {
            const auto fEdge = static_cast<float>(dLod);
            pcl::VoxelGrid<pcl::PointXYZ> filter;
            filter.setInputCloud(GetCloud(nNum));
            filter.setLeafSize(fEdge, fEdge, fEdge);
            filter.filter(thinned);
        });
    return thinned.size();
}

void AddRectRow(std::int64_t nNum, double dEdge, CBenchBar bar)
{
    if (dEdge >= CSampleTerrain(nNum).GetSide())
        return;
    const std::vector<RECT_2D> vecRects = MakeSquares(nNum, dEdge);
    const std::string sEdge = std::to_string(static_cast<int>(dEdge));
    AddRow({"traversal", "rectangle " + sEdge + " m x " + sEdge + " m", nNum, "PCL boxSearch and copy", bar,
            [=](CCpuTimer& timer) { return RectsProduct(nNum, vecRects, timer); },
            [=](CCpuTimer& timer) { return RectsPcl(nNum, vecRects, timer); }});
}

void AddQueryRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRectRow(nNum, 10.0, {0.80, 0.50});
    AddRectRow(nNum, 100.0, {0.45, 0.30});
    AddRectRow(nNum, 1000.0, {0.20, 0.15});
    AddRow({"traversal",
            "clip by 6 planes, a quarter",
            nNum,
            "PCL PlaneClipper3D, 6 times",
            {0.25, 0.16},
            [=](CCpuTimer& timer) { return ClipProduct(nNum, 0.25, timer); },
            [=](CCpuTimer& timer) { return ClipPcl(nNum, 0.25, timer); }});
    AddLodRows(nNum, "PCL VoxelGrid",
               [=](double dLod, CCpuTimer& timer) { return LodPcl(nNum, dLod, timer); });
}

const CBenchGroup c_group("traversal", AddQueryRows);

} // namespace
