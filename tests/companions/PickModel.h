#ifndef COMPANIONS_PICKMODEL_H
#define COMPANIONS_PICKMODEL_H

#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_3D.h>

#include <algorithm>
#include <cmath>
#include <vector>

/// What picking is said to find, by looking at every point: the text of the header once more, no code of the
/// library.
namespace PickModel
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

struct CBest
{
    int nIndex = -1;
    double dKey = 0.0;

    void Offer(int i, double d)
    {
        if (nIndex != -1 && !(d < dKey))
            return;
        nIndex = i;
        dKey = d;
    }
};

inline bool IsPlace(double d)
{
    return d >= -1e150 && d <= 1e150;
}

inline bool IsFinite(const PNT_3D& pnt)
{
    return std::isfinite(pnt.x) && std::isfinite(pnt.y) && std::isfinite(pnt.z);
}

/// @param vecPnts  the cloud's, in index order; isLive(i) says which count.
template <class IsLive>
int Pick(const std::vector<PNT_3D>& vecPnts, IsLive isLive, const PNT_3D& from, const PNT_3D& direction,
         double dTan, const std::vector<PLANE_3D>& planes)
{
    const double dLargest =
        std::max({std::fabs(direction.x), std::fabs(direction.y), std::fabs(direction.z)});
    if (!IsFinite(direction) || dLargest == 0.0 || !(dTan >= 0.0) || !IsPlace(from.x) || !IsPlace(from.y) ||
        !IsPlace(from.z))
        return -1;
    double x = direction.x / dLargest;
    double y = direction.y / dLargest;
    double z = direction.z / dLargest;
    const double dLength = std::sqrt(x * x + y * y + z * z);
    x /= dLength;
    y /= dLength;
    z /= dLength;
    CBest best;
    for (std::size_t i = 0; i < vecPnts.size(); ++i)
    {
        const PNT_3D& p = vecPnts[i];
        const double vx = p.x - from.x;
        const double vy = p.y - from.y;
        const double vz = p.z - from.z;
        const double t = vx * x + vy * y + vz * z;
        const double sx = vy * z - vz * y;
        const double sy = vz * x - vx * z;
        const double sz = vx * y - vy * x;
        const bool bWanted =
            t > 0.0 && sx * sx + sy * sy + sz * sz <= dTan * t * (dTan * t) &&
            std::none_of(planes.begin(), planes.end(),
                         [&](const PLANE_3D& plane)
                         { return plane.a * p.x + plane.b * p.y + plane.c * p.z + plane.d > 0.0; });
        if (bWanted && isLive(static_cast<int>(i)))
            best.Offer(static_cast<int>(i), t);
    }
    return best.nIndex;
}

template <class IsLive>
int FindNearest(const std::vector<PNT_3D>& vecPnts, IsLive isLive, const PNT_3D& from, double dMax,
                bool bPlan)
{
    if (!(dMax >= 0.0) || !IsPlace(from.x) || !IsPlace(from.y) || !(bPlan || IsPlace(from.z)))
        return -1;
    CBest best;
    for (std::size_t i = 0; i < vecPnts.size(); ++i)
    {
        const double x = vecPnts[i].x - from.x;
        const double y = vecPnts[i].y - from.y;
        const double z = vecPnts[i].z - from.z;
        const double d = bPlan ? x * x + y * y : x * x + y * y + z * z;
        if (d <= dMax * dMax && isLive(static_cast<int>(i)))
            best.Offer(static_cast<int>(i), d);
    }
    return best.nIndex;
}

} // namespace PickModel

#endif
