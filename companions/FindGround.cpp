#include <zor4data/FindGround.h>

#include <cloud/CCldStores.h>
#include <formats/CloudLimits.h>
#include <formats/Compact.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindIndices.h>
#include <zor4data/IPntIndexListener.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace
{

using zor::geom::PNT_3D;
using TKey = std::array<std::int32_t, 3>; // x, y and z in 1/10000 of a metre from the origin

constexpr int c_nBatch = 4096;

/// Points of a cloud in metres, as a second cloud holds them. Its origin is the one of the first, so that
/// clouds of one origin, as tiles are, have places that are rounded alike.
class CScaledPnts
{
public:
    CScaledPnts(const CGroundScale& scale, const PNT_3D& org)
        : m_scale(scale), m_org(Place(org)), m_afOrg{SaturateToFloat(m_org.x), SaturateToFloat(m_org.y),
                                                     SaturateToFloat(m_org.z)}
    {
    }

    /// In metres.
    const PNT_3D& GetOrigin() const { return m_org; }

    PNT_3D Place(const PNT_3D& pnt) const
    {
        return {pnt.x * m_scale.dPlan, pnt.y * m_scale.dPlan, pnt.z * m_scale.dHeight};
    }

    /// @param pnt  a point of the cloud in its own units.
    TKey KeyFromPnt(const PNT_3D& pnt) const
    {
        const PNT_3D place = Place(pnt);
        return {CompactFromCoord(place.x, m_afOrg[0]), CompactFromCoord(place.y, m_afOrg[1]),
                CompactFromCoord(place.z, m_afOrg[2])};
    }

    /// @param place  of a point as the second cloud holds it: whole steps but for rounding.
    TKey KeyFromPlace(const PNT_3D& place) const
    {
        const auto round = [](double d, float fOrg)
        { return SaturateToInt32(std::round((d - static_cast<double>(fOrg)) * c_dCompactScale)); };
        return {round(place.x, m_afOrg[0]), round(place.y, m_afOrg[1]), round(place.z, m_afOrg[2])};
    }

private:
    CGroundScale m_scale;
    PNT_3D m_org;
    std::array<float, 3> m_afOrg;
};

/// `fn(index, point)`
template <class TFn>
class CEachPnt final : public IPntIndexListener
{
public:
    CEachPnt(const CPntCld& cld, TFn fn) : m_cld(cld), m_fn(fn) {}

    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            PNT_3D pnt;
            m_cld.GetPnt(pIndices[i], pnt);
            m_fn(pIndices[i], pnt);
        }
    }

private:
    const CPntCld& m_cld;
    TFn m_fn;
};

/// Calls `fn` for each live point, in the order in which the cloud delivers.
template <class TFn>
void ForEachPnt(const CPntCld& cld, TFn fn)
{
    CEachPnt<TFn> each(cld, fn);
    FindIndices(cld, &each, c_nBatch);
}

/// @return the places of the ground points, sorted. Points at one place are ground all or none.
std::vector<TKey> FindPlaces(const CPntCld& cld, const CScaledPnts& scaled, IPclProgressListener* pListener)
{
    CPntCld metres(nullptr);
    metres.OnReadType(PntCldType_Pnt);
    static_cast<void>(metres.Init(cld.GetNumPnts() + 1));
    const PNT_3D& org = scaled.GetOrigin();
    static_cast<void>(metres.AddPnt(org.x, org.y, org.z)); // gives the cloud its origin (L6), and goes again
    ForEachPnt(cld,
               [&](int, const PNT_3D& pnt)
               {
                   const PNT_3D place = scaled.Place(pnt);
                   static_cast<void>(metres.AddPnt(place.x, place.y, place.z));
               });
    metres.SelPnt(0, false);
    metres.DelSelPnts();
    metres.Morph(pListener);
    std::vector<TKey> vecPlaces;
    vecPlaces.reserve(static_cast<std::size_t>(metres.GetNumPnts()));
    for (int i = 0; i < metres.GetNumPnts(); ++i)
    {
        PNT_3D place;
        metres.GetPnt(i, place);
        vecPlaces.push_back(scaled.KeyFromPlace(place));
    }
    std::sort(vecPlaces.begin(), vecPlaces.end());
    return vecPlaces;
}

/// @param pnt  of the cloud, in its own units.
bool IsInReach(const PNT_3D& pnt, const PNT_3D& org, const CGroundScale& scale)
{
    return std::max({std::fabs(pnt.x - org.x) * scale.dPlan, std::fabs(pnt.y - org.y) * scale.dPlan,
                     std::fabs(pnt.z - org.z) * scale.dHeight}) < c_dReach - 1.0;
}

} // namespace

std::vector<int> FindGround(const CPntCld& cld, IPclProgressListener* pListener)
{
    return CCldStores::FindGround(cld, pListener);
}

bool FindGround_Scaled(const CPntCld& cld, const CGroundScale& scale, IPclProgressListener* pListener,
                       std::vector<int>& vecGround)
{
    if (scale.IsOne())
    {
        vecGround = FindGround(cld, pListener);
        return true;
    }
    const CPntArrays arrays = GetPntArrays(cld);
    const PNT_3D org = {arrays.fOrgX, arrays.fOrgY, arrays.fOrgZ};
    bool bAny = false;
    bool bInReach = true;
    ForEachPnt(cld,
               [&](int, const PNT_3D& pnt)
               {
                   bAny = true;
                   bInReach = bInReach && IsInReach(pnt, org, scale);
               });
    if (!bInReach)
        return false;
    std::vector<int> vecFound;
    if (bAny)
    {
        const CScaledPnts scaled(scale, org);
        const std::vector<TKey> vecPlaces = FindPlaces(cld, scaled, pListener);
        ForEachPnt(cld,
                   [&](int nIndex, const PNT_3D& pnt)
                   {
                       if (std::binary_search(vecPlaces.begin(), vecPlaces.end(), scaled.KeyFromPnt(pnt)))
                           vecFound.push_back(nIndex);
                   });
    }
    vecGround = std::move(vecFound);
    return true;
}
