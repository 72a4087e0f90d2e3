#include <bench/BuildCases.h>
#include <formats/Compact.h>

#include <CGAL/Octree.h>
#include <CGAL/Simple_cartesian.h>

#include <memory>
#include <vector>

namespace
{

using TKernel = CGAL::Simple_cartesian<double>;
using TPoints = std::vector<TKernel::Point_3>;
using TOctree = CGAL::Octree<TKernel, TPoints>;

std::uint64_t BuildCgal(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    constexpr std::size_t c_nMaxDepth = 20; // where the product's leaves end
    constexpr std::size_t c_nBucket = 10;   // what a leaf of the product holds at most
    TPoints vecPnts;
    vecPnts.reserve(static_cast<std::size_t>(nNum));
    for (const CTruncPnt& pnt : GetBuildPnts(nNum, bShuffled))
        vecPnts.emplace_back(pnt.m_nX / c_dCompactScale, pnt.m_nY / c_dCompactScale,
                             pnt.m_nZ / c_dCompactScale);
    std::unique_ptr<TOctree> pTree;
    timer.Measure(
        [&]
        {
            pTree = std::make_unique<TOctree>(vecPnts);
            pTree->refine(c_nMaxDepth, c_nBucket);
        });
    std::uint64_t nSum = 0;
    for (const TOctree::Node& node : pTree->traverse<CGAL::Orthtrees::Leaves_traversal>())
        nSum += node.size();
    return nSum;
}

void AddBuildRows()
{
    const std::int64_t nNum = BenchSizes({1000000}).back();
    AddRow({"build",
            "tree build, shuffled",
            nNum,
            "CGAL octree, 10 points a leaf",
            {0.55, 0.40},
            [=](CCpuTimer& timer) { return BuildProduct(nNum, true, timer); },
            [=](CCpuTimer& timer) { return BuildCgal(nNum, true, timer); }});
}

const CBenchGroup c_group("build", AddBuildRows);

} // namespace
