#include <bench/BuildCases.h>

#include <nanoflann.hpp>

#include <memory>

namespace
{

/// The compact points as nanoflann wants to see them.
struct CPnts
{
    std::size_t kdtree_get_point_count() const { return vecPnts.size(); }

    double kdtree_get_pt(std::size_t i, std::size_t nAxis) const
    {
        const CTruncPnt& pnt = vecPnts[i];
        return nAxis == 0 ? pnt.m_nX : nAxis == 1 ? pnt.m_nY : pnt.m_nZ;
    }

    template <class TBox>
    bool kdtree_get_bbox(TBox&) const
    {
        return false; // it finds the box itself
    }

    const std::vector<CTruncPnt>& vecPnts;
};

using TTree =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, CPnts>, CPnts, 3, std::uint32_t>;

std::uint64_t BuildNanoflann(std::int64_t nNum, bool bShuffled, CCpuTimer& timer)
{
    const CPnts pnts{GetBuildPnts(nNum, bShuffled)};
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

const CBenchGroup group("build", AddBuildRows);

} // namespace
