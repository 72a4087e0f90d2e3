#include <zor3geom/IsPntInsidePolygon.h>

#include <zor3geom/CalcOrientation.h>
#include <zor3geom/IsUsableRing.h>

#include <algorithm>

namespace zor::geom
{

bool IsPntInsidePolygon(const std::vector<PNT_2D>& ring, const PNT_2D& pnt) noexcept
{
    if (!IsUsableRing(ring) || !IsFinitePnt(pnt))
        return false;
    bool bInside = false;
    const PNT_2D* pStart = &ring.back();
    for (const PNT_2D& end : ring)
    {
        const PNT_2D& start = *pStart;
        pStart = &end;
        const bool bUp = start.y <= pnt.y && end.y > pnt.y;
        const bool bDown = end.y <= pnt.y && start.y > pnt.y;
        const bool bInRange = pnt.y >= std::min(start.y, end.y) && pnt.y <= std::max(start.y, end.y) &&
                              pnt.x <= std::max(start.x, end.x);
        if (!bInRange)
            continue;
        const int nSide = CalcOrientation(start, end, pnt);
        if (nSide == 0 && pnt.x >= std::min(start.x, end.x))
            return true; // on the ring
        if ((bUp && nSide > 0) || (bDown && nSide < 0))
            bInside = !bInside;
    }
    return bInside;
}

} // namespace zor::geom
