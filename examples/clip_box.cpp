// Asks for the points in a box that stands askew.

#include "common/CFileColors.h"
#include "common/FillHills.h"
#include "common/TPntListener.h"

#include <zor3geom/CalcRectPlanes.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

// [planes]
/// The six planes of an upright box: normals point outwards, a point in front of none is inside.
///
/// @param dAngle  radians, counter-clockwise.
std::vector<PLANE_3D> CalcBoxPlanes(const PNT_3D& centre, double dLength, double dWidth, double dHeight,
                                    double dAngle)
{
    const double dCos = std::cos(dAngle);
    const double dSin = std::sin(dAngle);
    const auto calcCorner = [&](double u, double v)
    {
        return PNT_3D(centre.x + 0.5 * (u * dLength * dCos - v * dWidth * dSin),
                      centre.y + 0.5 * (u * dLength * dSin + v * dWidth * dCos), centre.z);
    };

    std::vector<PLANE_3D> planes;
    zor::geom::CalcRectPlanes(calcCorner(-1, -1), calcCorner(1, -1), calcCorner(1, 1), calcCorner(-1, 1),
                              planes);
    planes.emplace_back(0.0, 0.0, 1.0, -(centre.z + 0.5 * dHeight)); // above the top
    planes.emplace_back(0.0, 0.0, -1.0, centre.z - 0.5 * dHeight);   // below the bottom
    return planes;
}
// [/planes]

} // namespace

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [ask]
    const PNT_3D centre(CHills::c_dWest + 46.0, CHills::c_dSouth + 34.0, 120.0);
    int nNumPnts = 0;
    double dLowest = 1e9;
    TPntListener listener(
        [&](const CCldCadPnt& pnt)
        {
            ++nNumPnts;
            dLowest = std::min(dLowest, pnt.m_pnt.z);
        });
    cld.GetPnts_Clip(&listener, CalcBoxPlanes(centre, 20.0, 15.0, 10.0, 0.4), 4096);
    std::printf("%d points in the box, the lowest at %.2f m\n", nNumPnts, dLowest);
    // [/ask]
}
