#ifndef ANALYSIS_GROUND_CMORPHPNTS_H
#define ANALYSIS_GROUND_CMORPHPNTS_H

#include <pcl/point_types.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

/// The points that one window of the ground filter is laid over: a cloud in its own order, or those
/// that a list of indices names, in list order. A position counts along that order, from 0.
class CMorphPnts
{
public:
    /// @param pPnts    the cloud; stays the caller's.
    /// @param pList    indices into the cloud, inside it (not checked); null: the cloud as it is.
    /// @param nNumPnts length of the list, or of the cloud.
    CMorphPnts(const pcl::PointXYZ* pPnts, const int* pList, std::uint32_t nNumPnts) noexcept
        : m_pPnts(pPnts), m_pList(pList), m_nNumPnts(nNumPnts)
    {
    }

    std::uint32_t GetNumPnts() const noexcept { return m_nNumPnts; }

    const pcl::PointXYZ& GetPnt(std::uint32_t nPos) const noexcept
    {
        return m_pPnts[m_pList == nullptr ? static_cast<std::size_t>(nPos)
                                          : static_cast<std::size_t>(m_pList[nPos])];
    }

    /// Only finite points take part in minima and maxima.
    static bool IsFinite(const pcl::PointXYZ& pnt) noexcept
    {
        return std::isfinite(pnt.x) && std::isfinite(pnt.y) && std::isfinite(pnt.z);
    }

private:
    const pcl::PointXYZ* m_pPnts;
    const int* m_pList;
    std::uint32_t m_nNumPnts;
};

#endif
