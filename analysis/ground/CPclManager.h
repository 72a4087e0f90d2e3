#ifndef ANALYSIS_GROUND_CPCLMANAGER_H
#define ANALYSIS_GROUND_CPCLMANAGER_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPclProgressListener.h>
#include <zor4data/IPntCldListener.h>

#include <pcl/point_cloud.h>
#include <pcl/point_types.h>

#include <vector>

/// Carries points from a query into a PCL cloud and runs the ground filter on it.
///
/// To use: `CreateCloud`, a query with the manager as its listener, `Filter`. One manager, one run.
class CPclManager final : public IPntCldListener
{
public:
    /// Gives the manager a new cloud without points.
    void CreateCloud();

    /// Appends the points, absolute coordinates narrowed to float. No offset is subtracted first: far from
    /// the origin the filter sees them in coarse steps. A count below 1 does nothing.
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override;

    /// Filters with windows up to 20 (cells of 1 coordinate unit, growing by powers of 2), slope 1, and
    /// heights above the opened surface from 0.5 to 3 coordinate units.
    ///
    /// @param pListener  handed to the filter as it is.
    /// @param vecGround  receives the positions of the ground points in the cloud, ascending.
    void Filter(IPclProgressListener* pListener, std::vector<int>& vecGround) const;

    // The contract fixes this open member and its name; nothing else is open.
    pcl::PointCloud<pcl::PointXYZ>::Ptr m_pCloud; ///< empty before CreateCloud
};

#endif
