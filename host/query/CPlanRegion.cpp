#include <host/query/CPlanRegion.h>

#include <algorithm>
#include <limits>

namespace zorcld
{

using zor::geom::CRingIndex;
using zor::geom::PNT_2D;
using zor::geom::RECT_2D;
using zor::geom::TMultiPartPolygon;

CPlanRegion::CPlanRegion(const std::vector<TMultiPartPolygon>& vecPolygons)
{
    for (const TMultiPartPolygon& polygon : vecPolygons)
    {
        CPart part{CRingIndex(polygon.outer), {}};
        for (const std::vector<PNT_2D>& hole : polygon.holes)
            part.vecHoles.emplace_back(hole);
        m_vecParts.push_back(std::move(part));
    }
}

bool CPlanRegion::Contains(const PNT_2D& pnt) const
{
    using enumPlace = CRingIndex::enumPlace;
    return std::any_of(m_vecParts.begin(), m_vecParts.end(),
                       [&](const CPart& part)
                       {
                           return part.outer.Find(pnt) != enumPlace::Outside &&
                                  std::none_of(part.vecHoles.begin(), part.vecHoles.end(),
                                               [&](const CRingIndex& hole)
                                               { return hole.Find(pnt) == enumPlace::Inside; });
                       });
}

RECT_2D CPlanRegion::GetBox() const
{
    constexpr double c_dMax = std::numeric_limits<double>::max();
    RECT_2D box(c_dMax, c_dMax, -c_dMax, -c_dMax);
    for (const CPart& part : m_vecParts)
    {
        const RECT_2D& other = part.outer.GetBox();
        if (other.xmin <= other.xmax)
            box = RECT_2D(std::min(box.xmin, other.xmin), std::min(box.ymin, other.ymin),
                          std::max(box.xmax, other.xmax), std::max(box.ymax, other.ymax));
    }
    return box;
}

} // namespace zorcld
