#include <host/query/FilterGround.h>

#include <formats/CCoordSystem.h>
#include <formats/CloudLimits.h>
#include <formats/Compact.h>
#include <host/output/CFailure.h>
#include <host/output/UnitSymbol.h>
#include <host/query/Query.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindGround.h>
#include <zor4data/ICldColorListener.h>
#include <zor4data/KeepPnts.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace zorcld
{

namespace
{

using TKey = std::array<std::int32_t, 3>; // x, y and z in 1/10000 of a metre from the first point

class CNoColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

/// Points of a cloud in metres, as a second cloud holds them.
class CScaledPnts
{
public:
    CScaledPnts(const CGroundScale& scale, const zor::geom::PNT_3D& first)
        : m_scale(scale), m_org(Place(first)), m_afOrg{SaturateToFloat(m_org.x), SaturateToFloat(m_org.y),
                                                       SaturateToFloat(m_org.z)}
    {
    }

    zor::geom::PNT_3D Place(const zor::geom::PNT_3D& pnt) const
    {
        return {pnt.x * m_scale.dPlan, pnt.y * m_scale.dPlan, pnt.z * m_scale.dHeight};
    }

    /// @param pnt  a point of the cloud in its own units.
    TKey KeyFromPnt(const zor::geom::PNT_3D& pnt) const
    {
        const zor::geom::PNT_3D place = Place(pnt);
        return {CompactFromCoord(place.x, m_afOrg[0]), CompactFromCoord(place.y, m_afOrg[1]),
                CompactFromCoord(place.z, m_afOrg[2])};
    }

    /// @param place  of a point as the second cloud holds it: whole steps but for rounding.
    TKey KeyFromPlace(const zor::geom::PNT_3D& place) const
    {
        const auto round = [](double d, float fOrg)
        { return SaturateToInt32(std::round((d - static_cast<double>(fOrg)) * c_dCompactScale)); };
        return {round(place.x, m_afOrg[0]), round(place.y, m_afOrg[1]), round(place.z, m_afOrg[2])};
    }

private:
    CGroundScale m_scale;
    zor::geom::PNT_3D m_org;
    std::array<float, 3> m_afOrg;
};

/// @return the places of the ground points, sorted. Points at one place are ground all or none.
std::vector<TKey> FindGroundPlaces(const CPntCld& cloud, const CScaledPnts& scaled,
                                   IPclProgressListener* pListener)
{
    CNoColors colors;
    CPntCld metres(&colors);
    metres.OnReadType(PntCldType_Pnt);
    static_cast<void>(metres.Init(cloud.GetNumPnts()));
    ForEachPnt(cloud, CQuery(),
               [&](const CCldCadPnt& pnt)
               {
                   const zor::geom::PNT_3D place = scaled.Place(pnt.m_pnt);
                   static_cast<void>(metres.AddPnt(place.x, place.y, place.z));
               });
    metres.Morph(pListener);
    std::vector<TKey> vecGround;
    vecGround.reserve(static_cast<std::size_t>(metres.GetNumPnts()));
    for (int i = 0; i < metres.GetNumPnts(); ++i)
    {
        zor::geom::PNT_3D place;
        metres.GetPnt(i, place);
        vecGround.push_back(scaled.KeyFromPlace(place));
    }
    std::sort(vecGround.begin(), vecGround.end());
    return vecGround;
}

bool IsInReach(const CPntCld& cloud, const CGroundScale& scale)
{
    zor::geom::RECT_3D box;
    return !cloud.GetBdry(box) ||
           std::max({(box.xmax - box.xmin) * scale.dPlan, (box.ymax - box.ymin) * scale.dPlan,
                     (box.zmax - box.zmin) * scale.dHeight}) < c_dReach;
}

} // namespace

std::vector<int> FindGroundPnts(const CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                                IPclProgressListener* pListener)
{
    if (scale.IsOne())
        return FindGround(cloud, pListener);
    if (!IsInReach(cloud, scale))
        throw CFailure(sPath, fmt::format("is wider or higher than {} metres", c_nReach));
    std::vector<zor::geom::PNT_3D> vecFirst;
    ForEachPnt(cloud, CQuery(),
               [&](const CCldCadPnt& pnt)
               {
                   if (vecFirst.empty())
                       vecFirst.push_back(pnt.m_pnt);
               });
    if (vecFirst.empty())
        return {};
    const CScaledPnts scaled(scale, vecFirst.front());
    const std::vector<TKey> vecPlaces = FindGroundPlaces(cloud, scaled, pListener);
    std::vector<int> vecGround;
    ForEachPnt(cloud, CQuery(),
               [&](const CCldCadPnt& pnt)
               {
                   if (std::binary_search(vecPlaces.begin(), vecPlaces.end(), scaled.KeyFromPnt(pnt.m_pnt)))
                       vecGround.push_back(pnt.m_nIndex);
               });
    return vecGround;
}

void FilterGround(CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                  IPclProgressListener* pListener)
{
    if (scale.IsOne() || cloud.GetNumPnts() == 0)
        return cloud.Morph(pListener);
    const std::vector<int> vecGround = FindGroundPnts(cloud, scale, sPath, pListener);
    if (vecGround.size() < static_cast<std::size_t>(cloud.GetNumPnts())) // else the order may stay, too
        KeepPnts(cloud, vecGround);
}

CGroundScale FindGroundScale(const CCoordSystem& coords, const std::string& sPath)
{
    if (coords.plan.bAngle)
        throw CFailure(
            sPath,
            fmt::format("its x and y are angles ({}), the ground filter goes by metres: it must be projected "
                        "first; if they are none, --unit-scale tells how many metres a unit is",
                        GetUnitSymbol(coords.plan)));
    CGroundScale scale;
    if (coords.GetPlanMetres() > 0.0)
        scale.dPlan = coords.GetPlanMetres();
    if (coords.GetHeightMetres() > 0.0)
        scale.dHeight = coords.GetHeightMetres();
    return scale;
}

} // namespace zorcld
