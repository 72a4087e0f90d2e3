#include <host/shapes/TRing.h>

#include <cmath>
#include <stdexcept>

namespace zorcld
{

bool IsClosed(const TRing& ring)
{
    return ring.size() > 1 && ring.front().x == ring.back().x && ring.front().y == ring.back().y;
}

TRing MakeClosed(TRing ring)
{
    if (ring.size() > 1 && !IsClosed(ring))
        ring.push_back(ring.front());
    return ring;
}

void ExpectCorners(const TRing& ring)
{
    if (ring.size() < (IsClosed(ring) ? 4U : 3U))
        throw std::runtime_error("holds a polygon of fewer than three corners");
}

double CalcLength(const TRing& ring)
{
    double dLength = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        const zor::geom::PNT_2D& next = ring[(i + 1) % ring.size()];
        dLength += std::hypot(next.x - ring[i].x, next.y - ring[i].y);
    }
    return dLength;
}

double CalcSignedArea(const TRing& ring)
{
    double dTwice = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) // against the first corner: small numbers
        dTwice += (ring[i].x - ring[0].x) * (ring[i + 1].y - ring[0].y) -
                  (ring[i + 1].x - ring[0].x) * (ring[i].y - ring[0].y);
    return dTwice / 2.0;
}

} // namespace zorcld
