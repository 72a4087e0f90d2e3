// Finds the point under a cursor, and the one nearest to a place on a map.

#include "common/CFileColors.h"
#include "common/FillHills.h"

#include <zor4data/CPntCld.h>
#include <zor4data/PickPnt.h>

#include <cmath>
#include <cstdio>

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [pick]
    // The eye, and the direction in which the pixel under the cursor looks; any length above 0 will do.
    const zor::geom::PNT_3D eye(CHills::c_dWest + 10.0, CHills::c_dSouth + 3.0, 160.0);
    const zor::geom::PNT_3D direction(35.0, 31.0, -38.0);

    // How wide a cursor of 5 pixels is at distance 1, in a picture of 1080 lines that shows 60 degrees.
    const double dPixel = 2.0 * std::tan(0.5 * 60.0 / 180.0 * 3.14159265358979) / 1080.0;
    const int nPicked = PickPnt(cld, eye, direction, 5.0 * dPixel, {}); // {}: no clip planes
    if (nPicked < 0)
        return std::printf("nothing there\n"), 0;

    zor::geom::PNT_3D pnt;
    cld.GetPnt(nPicked, pnt);
    std::printf("picked %.2f %.2f %.2f\n", pnt.x, pnt.y, pnt.z);
    // [/pick]

    // [select]
    cld.SelPnt(nPicked, false); // from now on it comes with m_bSel set
    cld.DelSelPnts();           // a compaction: every index kept from before means another point now
    std::printf("%d points left\n", cld.GetNumPnts());
    // [/select]

    // [nearest]
    const zor::geom::PNT_2D place(CHills::c_dWest + 20.2, CHills::c_dSouth + 70.1);
    const int nNearest = FindNearestPnt2D(cld, place, 1.0); // -1: none within 1 m
    if (nNearest >= 0)
    {
        cld.GetPnt(nNearest, pnt);
        std::printf("the ground there is at %.2f m\n", pnt.z);
    }
    // [/nearest]
}
