#include <analysis/ground/CPclManager.h>

#include <analysis/ground/CProgressMorphFilter.h>
#include <formats/Compact.h>

#include <cmath>

namespace
{

/// What is not finite, which only the origin of a damaged file can bring, stays so: the filter can take it.
float NarrowToFloat(double d) noexcept
{
    return std::isfinite(d) ? SaturateToFloat(d) : static_cast<float>(d);
}

} // namespace

void CPclManager::CreateCloud()
{
    m_pCloud.reset(new pcl::PointCloud<pcl::PointXYZ>);
}

void CPclManager::OnPnts(int nNumPnts, CCldCadPnt* pPnts)
{
    if (!m_pCloud)
        CreateCloud();
    for (int i = 0; i < nNumPnts; ++i)
    {
        const zor::geom::PNT_3D& pnt = pPnts[i].m_pnt;
        // Sets width and height with it: one row of all points.
        m_pCloud->push_back(pcl::PointXYZ(NarrowToFloat(pnt.x), NarrowToFloat(pnt.y), NarrowToFloat(pnt.z)));
    }
}

void CPclManager::Filter(IPclProgressListener* pListener, std::vector<int>& vecGround) const
{
    CProgressMorphFilter filter;
    filter.setInputCloud(m_pCloud);
    filter.setMaxWindowSize(20);
    filter.setSlope(1.0F);
    filter.setMaxDistance(3.0F);
    filter.setInitialDistance(0.5F);
    filter.extract(pListener, vecGround);
}
