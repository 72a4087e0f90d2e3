#include <bench/BuildCases.h>
#include <bench/CNanoflannPnts.h>

#include <memory>

namespace
{

using TPnts = CNanoflannPnts<CTruncPnt>;
using TTree = TNanoflannTree<CTruncPnt, 3>;

std::uint64_t BuildNanoflann(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    const TPnts pnts{GetBuildPnts(nNum, bShuffled)};
    std::unique_ptr<TTree> pTree;
    timer.Measure(
        [&] { pTree = std::make_unique<TTree>(3, pnts, nanoflann::KDTreeSingleIndexAdaptorParams(10)); });
    return pTree->size(*pTree);
}

void AddBuildRows()
{
    const std::int64_t nNum = BenchSizes({1000000}).back();
    for (const bool bShuffled : {false, true})
        AddRow({"build", bShuffled ? "tree build, shuffled" : "tree build, scan order", nNum,
                "nanoflann k-d tree, 10 points a leaf", 0.0,
                [=](CCpuTimer& timer) { return BuildProduct(nNum, bShuffled, timer); },
                [=](CCpuTimer& timer) { return BuildNanoflann(nNum, bShuffled, timer); }});
}

const CBenchGroup c_group("build", AddBuildRows);

} // namespace
