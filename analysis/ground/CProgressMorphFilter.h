#ifndef ANALYSIS_GROUND_CPROGRESSMORPHFILTER_H
#define ANALYSIS_GROUND_CPROGRESSMORPHFILTER_H

#include <zor4data/IPclProgressListener.h>

#include <pcl/point_types.h>
#include <pcl/segmentation/progressive_morphological_filter.h>

#include <vector>

// Compiled in CProgressMorphFilter.cpp.
extern template class pcl::ProgressiveMorphologicalFilter<pcl::PointXYZ>;

/// PCL's progressive morphological filter, telling a listener how far it is, and sooner done.
///
/// To fill and set up: as the published filter (`setInputCloud`, `setIndices`, its parameters). To run:
/// `extract`. Both forms of it give the same indices in the same order.
///
/// **The idea: bounds first, exact heights only where they decide.** The filter lays a series of growing
/// windows over the points that are left. With each window it erodes (the least height in the window of a
/// point), opens (the greatest eroded height in that window), and drops the points that lie too far above
/// their opened height. The published filter finds the opened height of every point, from every point of
/// every window. But all that is asked is on which side of a limit a point lies. So the points are sorted
/// into cells (`CWindowCells`). The cells that every window of a cell's points holds, and those that some
/// of these windows touch, bound the opened heights of all points of the cell from both sides
/// (`COpeningBounds`). A point that is close enough to the lower bound stays, one that is too far above the
/// upper bound goes. Only for the few points between, eroded heights are made exactly (`CErodedHeights`),
/// cell by cell, until one of them is close enough or none can be (`CGroundDecision`).
///
/// Why this gives the published result: a least or greatest height is one of the heights themselves,
/// nothing is rounded, so it does not matter in which groups it is taken. The windows end where the
/// published ones end, since their limits come from the same float operations. And float subtraction is
/// monotone: a point that passes the published comparison with the lower bound passes it with every
/// greater opened height, and one that fails it with the upper bound fails it with every lesser one.
class CProgressMorphFilter final : public pcl::ProgressiveMorphologicalFilter<pcl::PointXYZ>
{
public:
    /// The published filter as it stands.
    using pcl::ProgressiveMorphologicalFilter<pcl::PointXYZ>::extract;

    /// @param pListener  receives each percent from 0 to 100 once, from the caller's thread; null: no calls.
    /// @param vecGround  receives the indices of the ground points, in the order of the input cloud, or in
    ///                   that of the indices set. Without an input cloud it is left as it is.
    ///
    /// Points that are not finite are no part of the ground's surface, and are kept or not as the published
    /// filter would. Parameters that keep the published filter from ending, or on which it aborts, give
    /// an answer all the same: a series of windows that does not grow ends, a window without size is empty.
    ///
    /// Where the published filter's octree rounds its own borders inwards it misses points of a window, and
    /// may have another result: far from 0 from PCL 1.15 on, with any version in clouds of 10^8 windows and
    /// more across with coordinates next to 0. This one misses none.
    ///
    /// REQUIRES: indices, where set, inside the cloud. Throws std::bad_alloc, and what the listener throws;
    /// the filter can be used again then.
    /// Cost: for points spread evenly, in proportion to their number and the number of windows. Memory:
    /// at most 48 bytes a point, for the time of the call.
    void extract(IPclProgressListener* pListener, std::vector<int>& vecGround);

private:
    void MakeIndices();
    void KeepGround(IPclProgressListener* pListener, std::vector<int>& vecGround) const;
};

#endif
