#include <zor3geom/CPolygonIndex.h>

#include <zor3geom/IsUsableRing.h>

#include <algorithm>

namespace zor::geom
{

using enumPlace = CRingIndex::enumPlace;

CPolygonIndex::CPolygonIndex(const std::vector<TMultiPartPolygon>& vecPolygons)
{
    for (const TMultiPartPolygon& polygon : vecPolygons)
    {
        if (!IsUsableRing(polygon.outer))
            continue;
        m_vecParts.push_back({CRingIndex(polygon.outer), {}});
        for (const std::vector<PNT_2D>& hole : polygon.holes)
            if (IsUsableRing(hole))
                m_vecParts.back().vecHoles.emplace_back(hole);
    }
}

enumPlace CPolygonIndex::CPart::Find(const PNT_2D& pnt) const noexcept
{
    enumPlace ePlace = outer.Find(pnt);
    for (const CRingIndex& hole : vecHoles)
    {
        const enumPlace eInHole = hole.Find(pnt);
        if (ePlace == enumPlace::OnEdge || eInHole == enumPlace::OnEdge)
            return enumPlace::OnEdge;
        if (eInHole == enumPlace::Inside)
            ePlace = enumPlace::Outside;
    }
    return ePlace;
}

bool CPolygonIndex::Contains(const PNT_2D& pnt) const noexcept
{
    return std::any_of(m_vecParts.begin(), m_vecParts.end(),
                       [&](const CPart& part) { return part.Find(pnt) != enumPlace::Outside; });
}

} // namespace zor::geom
