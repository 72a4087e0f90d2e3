#ifndef TESTS_COMPANIONS_CEXACTPOLYGONS_H
#define TESTS_COMPANIONS_CEXACTPOLYGONS_H

#include <tests/support/WholeFromDouble.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <algorithm>
#include <cmath>
#include <vector>

/// Tells by the rules, word for word and in whole numbers, whether places lie inside polygons. Shares no code
/// with the library.
class CExactPolygons
{
public:
    using PNT_2D = zor::geom::PNT_2D;
    using TMultiPartPolygon = zor::geom::TMultiPartPolygon;

    explicit CExactPolygons(const std::vector<TMultiPartPolygon>& vecPolygons) : m_vecPolygons(vecPolygons) {}

    bool IsInside(const PNT_2D& p) const
    {
        return std::any_of(m_vecPolygons.begin(), m_vecPolygons.end(),
                           [&](const TMultiPartPolygon& polygon) { return IsInside(polygon, p); });
    }

private:
    enum class enumPlace
    {
        Out,
        On,
        In
    };

    static bool IsInside(const TMultiPartPolygon& polygon, const PNT_2D& p)
    {
        if (!IsThere(polygon.outer))
            return false;
        enumPlace ePlace = FindPlace(polygon.outer, p);
        bool bOnEdge = ePlace == enumPlace::On;
        bool bInHole = false;
        for (const std::vector<PNT_2D>& hole : polygon.holes)
        {
            ePlace = IsThere(hole) ? FindPlace(hole, p) : enumPlace::Out;
            bOnEdge = bOnEdge || ePlace == enumPlace::On;
            bInHole = bInHole || ePlace == enumPlace::In;
        }
        return bOnEdge || (FindPlace(polygon.outer, p) == enumPlace::In && !bInHole);
    }

    static bool IsThere(const std::vector<PNT_2D>& ring)
    {
        return ring.size() >= 3 &&
               std::none_of(ring.begin(), ring.end(),
                            [](const PNT_2D& p) { return !std::isfinite(p.x) || !std::isfinite(p.y); });
    }

    /// Counts the edges that a ray to the right leaves through; a corner at its height counts as below it.
    static enumPlace FindPlace(const std::vector<PNT_2D>& ring, const PNT_2D& p)
    {
        bool bOdd = false;
        for (std::size_t i = 0; i < ring.size(); ++i)
        {
            PNT_2D low = ring[i];
            PNT_2D high = ring[(i + 1) % ring.size()];
            if (low.y > high.y)
                std::swap(low, high);
            if (p.y < low.y || p.y > high.y || p.x > std::max(low.x, high.x))
                continue;
            const bool bLeftOfAll = p.x < std::min(low.x, high.x);
            const int nSide = bLeftOfAll ? 1 : CalcSide(low, high, p);
            if (nSide == 0)
                return enumPlace::On;
            if (nSide > 0 && low.y <= p.y && p.y < high.y)
                bOdd = !bOdd;
        }
        return bOdd ? enumPlace::In : enumPlace::Out;
    }

    /// @return above 0 where the triangle turns left, below where right, 0 where it has no area.
    static int CalcSide(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p)
    {
        const TWhole x = WholeFromDouble(a.x);
        const TWhole y = WholeFromDouble(a.y);
        const TWhole left = (WholeFromDouble(b.x) - x) * (WholeFromDouble(p.y) - y);
        const TWhole right = (WholeFromDouble(b.y) - y) * (WholeFromDouble(p.x) - x);
        return left.compare(right);
    }

    const std::vector<TMultiPartPolygon>& m_vecPolygons;
};

#endif
