#include <host/files/CStackedPnts.h>

#include <formats/Compact.h>
#include <host/files/CFileColors.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace zorcld
{

namespace
{

/// @return how many points a cloud holds when these have been stored.
std::int64_t CountKept(const std::vector<zor::geom::PNT_3D>& vecPnts)
{
    CFileColors colors;
    CPntCld cloud(&colors);
    cloud.OnReadType(PntCldType_Pnt);
    cloud.OnReadNumPnts(static_cast<int>(vecPnts.size()));
    for (const zor::geom::PNT_3D& pnt : vecPnts)
        cloud.OnReadPnt(pnt.x, pnt.y, pnt.z);
    cloud.OnReadEnd();
    return cloud.GetNumPnts();
}

struct CPlace
{
    std::int32_t x; // steps of 1/10000 from the first point
    std::int32_t y;
    std::int32_t z;
};

bool IsSame(const CPlace& one, const CPlace& other)
{
    // One step apart they may have been the same before they were rounded.
    return one.x == other.x && one.y == other.y && std::abs(std::int64_t{one.z} - other.z) <= 1;
}

std::int64_t CountDistinct(const std::vector<zor::geom::PNT_3D>& vecPnts)
{
    std::vector<CPlace> vecPlaces;
    vecPlaces.reserve(vecPnts.size());
    const zor::geom::PNT_3D& first = vecPnts.front();
    const auto compact = [](double d, double dFirst) { return CompactFromCoord(d, SaturateToFloat(dFirst)); };
    for (const zor::geom::PNT_3D& pnt : vecPnts)
        vecPlaces.push_back({compact(pnt.x, first.x), compact(pnt.y, first.y), compact(pnt.z, first.z)});
    std::sort(vecPlaces.begin(), vecPlaces.end(),
              [](const CPlace& one, const CPlace& other)
              { return std::tie(one.x, one.y, one.z) < std::tie(other.x, other.y, other.z); });
    return std::unique(vecPlaces.begin(), vecPlaces.end(), IsSame) - vecPlaces.begin();
}

} // namespace

void CStackedPnts::Add(const CSourcePnt& pnt)
{
    m_bTooMany = m_bTooMany || m_vecPnts.size() == c_nMaxPnts;
    if (m_bTooMany)
        std::vector<zor::geom::PNT_3D>().swap(m_vecPnts);
    else
        m_vecPnts.emplace_back(pnt.x, pnt.y, pnt.z);
}

std::int64_t CStackedPnts::CalcNumLost()
{
    if (m_vecPnts.empty())
        return 0;
    const std::int64_t nNumKept = CountKept(m_vecPnts);
    return std::max<std::int64_t>(CountDistinct(m_vecPnts) - nNumKept, 0);
}

} // namespace zorcld
