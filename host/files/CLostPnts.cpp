#include <host/files/CLostPnts.h>

#include <formats/Compact.h>
#include <host/files/CInputFile.h>
#include <host/files/LoadCloud.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace zorcld
{

namespace
{

using TPlace = std::array<std::int32_t, 3>; // steps of 1/10000 from the origin

/// The places that a cloud gives to points which are not numbers, and to points that were never there: such a
/// point may be kept, and is then no point of the file.
class CFalsePlaces
{
public:
    void Add(const CSourcePnt& pnt)
    {
        if (m_nNumPnts++ == 0)
            m_origin = {SaturateToFloat(pnt.x), SaturateToFloat(pnt.y), SaturateToFloat(pnt.z)};
        const TPlace place = {CompactFromCoord(pnt.x, m_origin[0]), CompactFromCoord(pnt.y, m_origin[1]),
                              CompactFromCoord(pnt.z, m_origin[2])};
        if (pnt.IsFinite())
            m_bTrueAtOrigin = m_bTrueAtOrigin || place == TPlace{};
        else
            AddFalse(place);
    }

    std::int64_t GetNumPnts() const { return m_nNumPnts; }

    /// @return how many points of the cloud are at such a place, and no other point of the file is known to
    /// be.
    /// @param bNeverThere  points that were announced lie at the origin.
    std::int64_t CountKept(const CPntCld& cloud, bool bNeverThere)
    {
        if (bNeverThere)
            m_vecPlaces.push_back({});
        if (m_vecPlaces.empty())
            return 0;
        std::sort(m_vecPlaces.begin(), m_vecPlaces.end());
        std::int64_t nNumKept = 0;
        for (int i = 0; i < cloud.GetNumPnts(); ++i)
        {
            const TPlace place = FindPlace(cloud, i);
            const bool bTrue = m_bTrueAtOrigin && place == TPlace{};
            nNumKept += !bTrue && std::binary_search(m_vecPlaces.begin(), m_vecPlaces.end(), place) ? 1 : 0;
        }
        return nNumKept;
    }

private:
    /// Most often all three are none, and the place is the origin.
    void AddFalse(const TPlace& place)
    {
        if (m_vecPlaces.empty() || m_vecPlaces.back() != place)
            m_vecPlaces.push_back(place);
    }

    TPlace FindPlace(const CPntCld& cloud, int nIndex) const
    {
        zor::geom::PNT_3D pnt;
        cloud.GetPnt(nIndex, pnt);
        const auto find = [](double d, float fOrigin)
        { return SaturateToInt32(std::round((d - static_cast<double>(fOrigin)) * c_dCompactScale)); };
        return {find(pnt.x, m_origin[0]), find(pnt.y, m_origin[1]), find(pnt.z, m_origin[2])};
    }

    std::int64_t m_nNumPnts = 0;
    std::array<float, 3> m_origin{};
    bool m_bTrueAtOrigin = false;
    std::vector<TPlace> m_vecPlaces;
};

/// @param nMax  points that the library has read.
/// @return false when that cannot be done.
bool ReadPlaces(CInputFile& file, std::int64_t nMax, CFalsePlaces& places)
{
    return file.ReadTaken(
        [&](const CSourcePnt& pnt)
        {
            if (places.GetNumPnts() < nMax)
                places.Add(pnt);
        });
}

} // namespace

CLostPnts CountLostPnts(const CPntCld& cloud, CInputFile& file, const CLoadFacts& facts)
{
    CLostPnts lost;
    const std::int64_t nAnnounced = file.GetFileFacts().nAnnounced;
    if (nAnnounced >= 0)
        lost.nNeverThere = std::max<std::int64_t>(nAnnounced - facts.nNumRead, 0);
    if (!file.GetFacts().bDuplicates)
        return lost;
    lost.nNotNumbers = facts.nNotNumbers;
    CFalsePlaces places;
    const bool bHasFalse = lost.nNotNumbers > 0 || lost.nNeverThere > 0;
    if (bHasFalse && cloud.GetNumPnts() > 0 && !ReadPlaces(file, facts.nNumRead, places) &&
        lost.nNotNumbers > 0)
        return lost;
    const std::int64_t nNumTrue = facts.nNumRead - lost.nNotNumbers;
    const std::int64_t nNumKept = cloud.GetNumPnts() - places.CountKept(cloud, lost.nNeverThere > 0);
    lost.nDuplicates = std::max<std::int64_t>(nNumTrue - nNumKept, 0);
    return lost;
}

} // namespace zorcld
