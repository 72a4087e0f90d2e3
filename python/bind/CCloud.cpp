#include <python/bind/CCloud.h>

#include <python/bind/Records.h>

#include <algorithm>
#include <limits>

namespace zorpy
{

namespace
{

std::array<double, 6> CalcBounds(const CPntArrays& arrays)
{
    std::array<double, 6> adBounds;
    adBounds.fill(std::numeric_limits<double>::quiet_NaN());
    if (arrays.nNumPnts == 0)
        return adBounds;
    std::array<std::int32_t, 3> anMin = GetOffsets(arrays, 0);
    std::array<std::int32_t, 3> anMax = anMin;
    for (std::int64_t i = 1; i < arrays.nNumPnts; ++i)
    {
        const std::array<std::int32_t, 3> an = GetOffsets(arrays, i);
        for (std::size_t k = 0; k < an.size(); ++k)
        {
            anMin[k] = std::min(anMin[k], an[k]);
            anMax[k] = std::max(anMax[k], an[k]);
        }
    }
    const std::array<double, 3> adOrg = GetOrigin(arrays);
    for (std::size_t k = 0; k < adOrg.size(); ++k)
    {
        adBounds[k] = CoordFromOffset(anMin[k], adOrg[k]);
        adBounds[3 + k] = CoordFromOffset(anMax[k], adOrg[k]);
    }
    return adBounds;
}

} // namespace

const std::array<double, 6>& CCloud::GetBounds() const
{
    std::call_once(m_boundsMade, [this] { m_adBounds = CalcBounds(m_arrays); });
    return m_adBounds;
}

} // namespace zorpy
