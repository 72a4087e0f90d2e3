#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BuildCases.h>
#include <octree/BuildTree.h>

const std::vector<CTruncPnt>& GetBuildPnts(std::int64_t nNum, bool bShuffled)
{
    static std::vector<CTruncPnt> vecPnts;
    static bool bShuffledMade = false;
    if (static_cast<std::int64_t>(vecPnts.size()) != nNum || bShuffled != bShuffledMade)
    {
        vecPnts = MakeCompact(nNum, bShuffled);
        bShuffledMade = bShuffled;
    }
    return vecPnts;
}

namespace
{

std::uint64_t SumLeaves(const COcTreeNode& node)
{
    std::uint64_t nSum = 0;
    for (const COcTreeChild child : node.GetChildren())
        nSum += child.IsLeaf() ? static_cast<std::uint64_t>(child.GetLeaf().m_nCount)
                               : SumLeaves(child.GetNode());
    return nSum;
}

} // namespace

std::uint64_t BuildProduct(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    std::vector<CTruncPnt> vecPnts = GetBuildPnts(nNum, bShuffled);
    COcTreeIndex tree;
    timer.Measure([&] { tree = BuildTree(vecPnts.data(), static_cast<std::int32_t>(nNum)); });
    return SumLeaves(*tree.m_pRoot);
}

double MeasureTreeMemory(std::int64_t nNum)
{
    std::vector<CTruncPnt> vecPnts = GetBuildPnts(nNum, false);
    const std::int64_t nBefore = GetHeapBytes();
    const COcTreeIndex tree = BuildTree(vecPnts.data(), static_cast<std::int32_t>(nNum));
    return static_cast<double>(GetHeapBytes() - nBefore) / static_cast<double>(nNum);
}

namespace
{

void AddGrowthRow()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRow({"build",
            "tree build, growth to",
            nNum,
            "itself with a tenth of the points",
            {12.0, 10.5},
            [=](CCpuTimer& timer) { return BuildProduct(nNum, false, timer); },
            [=](CCpuTimer& timer) { return BuildProduct(nNum / 10, false, timer); },
            BenchResult_Ignored});
}

const CBenchGroup c_group("build", AddGrowthRow);

} // namespace
