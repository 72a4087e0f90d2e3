#include <zor3geom/IsPntInsidePolygon.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

using zor::geom::IsPntInsidePolygon;
using zor::geom::PNT_2D;

namespace
{

__extension__ typedef __int128 CWide;

struct CPlace
{
    std::int64_t x;
    std::int64_t y;
};

/// Exact, by whole numbers: on an edge, or an odd number of edges crossed on the way to the right.
bool Holds(const std::vector<CPlace>& ring, const CPlace& p)
{
    bool bInside = false;
    for (std::size_t i = 0, k = ring.size() - 1; i < ring.size(); k = i++)
    {
        const CPlace& a = ring[k];
        const CPlace& b = ring[i];
        const CWide n =
            static_cast<CWide>(b.x - a.x) * (p.y - a.y) - static_cast<CWide>(b.y - a.y) * (p.x - a.x);
        if (n == 0 && p.x >= std::min(a.x, b.x) && p.x <= std::max(a.x, b.x) && p.y >= std::min(a.y, b.y) &&
            p.y <= std::max(a.y, b.y))
            return true;
        if ((a.y > p.y) != (b.y > p.y) && (b.y > a.y ? n > 0 : n < 0))
            bInside = !bInside;
    }
    return bInside;
}

void Compare(const std::vector<CPlace>& ring, const CPlace& place, double dScale, double dOff)
{
    std::vector<PNT_2D> ringD;
    const auto toPnt = [&](const CPlace& p)
    { return PNT_2D(static_cast<double>(p.x) * dScale + dOff, static_cast<double>(p.y) * dScale - dOff); };
    for (const CPlace& corner : ring)
        ringD.push_back(toPnt(corner));
    ASSERT_EQ(IsPntInsidePolygon(ringD, toPnt(place)), Holds(ring, place)) << place.x << ' ' << place.y;
}

} // namespace

TEST(IsPntInsidePolygon_Prop, SameAsExact)
{
    std::mt19937_64 random(1);
    for (const std::int64_t nSpan : {2LL, 5LL, 20LL, 1000LL, 2147483647LL})
    {
        std::uniform_int_distribution<std::int64_t> draw(-nSpan, nSpan);
        std::uniform_int_distribution<std::size_t> drawSize(3, 12);
        for (int nRing = 0; nRing < 400; ++nRing)
        {
            std::vector<CPlace> ring(drawSize(random));
            for (CPlace& corner : ring)
                corner = {draw(random), draw(random)};
            for (int i = 0; i < 20; ++i)
            {
                CPlace place{draw(random), draw(random)};
                if (i % 4 == 0) // level with a corner
                    place.y = ring[static_cast<std::size_t>(i) % ring.size()].y;
                if (i % 8 == 0) // at one
                    place.x = ring[static_cast<std::size_t>(i) % ring.size()].x;
                ASSERT_NO_FATAL_FAILURE(Compare(ring, place, 1.0, 0.0));
                ASSERT_NO_FATAL_FAILURE(Compare(ring, place, 0.0009765625, 4194304.0));
            }
        }
    }
}
