#ifndef HOST_FILES_CSTACKEDPNTS_H
#define HOST_FILES_CSTACKEDPNTS_H

#include <host/files/CSourcePnt.h>

#include <zor3geom/PNT_3D.h>

#include <cstdint>
#include <vector>

namespace zorcld
{

/// How many points a cloud does not keep because they lie above or below another, at its x and y to
/// 1/10000: near each other it keeps the first only. Points that are wholly the same do not count.
///
/// Takes a cloud to tell, so only up to `c_nMaxPnts` points: some 100 MB.
class CStackedPnts
{
public:
    static constexpr std::size_t c_nMaxPnts = 2000000;

    void Add(const CSourcePnt& pnt);

    /// To be called once. @return 0 when there were more points than are looked at.
    std::int64_t CalcNumLost();

private:
    std::vector<zor::geom::PNT_3D> m_vecPnts;
    bool m_bTooMany = false;
};

} // namespace zorcld

#endif
