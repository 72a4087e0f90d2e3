#include <analysis/ground/CProgressMorphFilter.h>

#include <analysis/ground/CMorphPnts.h>
#include <analysis/ground/CMorphProgress.h>
#include <analysis/ground/CMorphWindowSeries.h>
#include <analysis/ground/FilterWindow.h>

// The published filter is compiled here for this one type of point: of PCL's libraries only those that it
// rests on are linked, not the one that carries it for all types.
#include <pcl/filters/impl/morphological_filter.hpp>
#include <pcl/impl/pcl_base.hpp>
#include <pcl/segmentation/impl/progressive_morphological_filter.hpp>

#include <algorithm>
#include <numeric>
#include <utility>

template class pcl::ProgressiveMorphologicalFilter<pcl::PointXYZ>;

namespace
{

// A series of more windows tells its progress as if the rest of them belonged to the last of these.
constexpr int c_nMaxCounted = 10000;

int CountWindows(CMorphWindowSeries series) noexcept
{
    CMorphWindow window;
    int nNum = 0;
    while (nNum < c_nMaxCounted && series.FindNext(window))
        ++nNum;
    return std::max(nNum, 1);
}

void KeepStaying(const std::vector<unsigned char>& vecStays, std::vector<int>& vecGround)
{
    std::size_t nNumKept = 0;
    for (std::size_t i = 0; i < vecGround.size(); ++i)
        if (vecStays[i] != 0)
            vecGround[nNumKept++] = vecGround[i];
    vecGround.resize(nNumKept);
}

} // namespace

void CProgressMorphFilter::extract(IPclProgressListener* pListener, std::vector<int>& vecGround)
{
    if (!input_)
    {
        CMorphProgress(pListener, 1).Finish();
        return;
    }
    MakeIndices();
    // A list of all points, which nobody has set, is not kept twice; it is made again at the end.
    const bool bAll = fake_indices_;
    if (bAll)
        vecGround = std::move(*indices_);
    else
        vecGround = *indices_;
    KeepGround(pListener, vecGround);
    MakeIndices();
}

/// Makes the list of all points where none was set, as PCL's initCompute does. But should there be no memory
/// for the list, that prints a line and goes on with an empty one: all points would be lost in silence.
void CProgressMorphFilter::MakeIndices()
{
    if (!indices_)
    {
        indices_.reset(new pcl::Indices);
        fake_indices_ = true;
    }
    if (!fake_indices_ || indices_->size() == input_->size())
        return;
    indices_->resize(input_->size());
    std::iota(indices_->begin(), indices_->end(), 0);
}

void CProgressMorphFilter::KeepGround(IPclProgressListener* pListener, std::vector<int>& vecGround) const
{
    CMorphWindowSeries series(
        {max_window_size_, slope_, max_distance_, initial_distance_, cell_size_, base_, exponential_});
    CMorphProgress progress(pListener, CountWindows(series));
    CMorphBuffers buffers;
    CMorphWindow window;
    for (int i = 0; !vecGround.empty() && series.FindNext(window); ++i)
    {
        const auto nNumPnts = static_cast<std::uint32_t>(vecGround.size());
        progress.StartWindow(std::min(i, c_nMaxCounted - 1), nNumPnts);
        // KEPT: a list as long as the cloud stands for the cloud as it is, whatever its order
        // (Extract_IndicesAsManyAsPoints_Kept).
        const int* pList = vecGround.size() == input_->size() ? nullptr : vecGround.data();
        KeepStaying(
            FilterWindow(CMorphPnts(input_->points.data(), pList, nNumPnts), window, buffers, progress),
            vecGround);
    }
    progress.Finish();
}
