// Asks for the points inside polygons with holes, and for those outside.

#include "common/CFileColors.h"
#include "common/FillHills.h"
#include "common/TPntListener.h"

#include <zor4data/CPntCld.h>
#include <zor4data/FindPntsInPolygons.h>

#include <cstdio>
#include <vector>

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [ask]
    const double x = CHills::c_dWest;
    const double y = CHills::c_dSouth;
    zor::geom::TMultiPartPolygon parcel; // rings are closed by themselves, and run either way round
    parcel.outer = {{x + 30.2, y + 20.2}, {x + 70.2, y + 20.2}, {x + 60.2, y + 50.2}, {x + 30.2, y + 50.2}};
    parcel.holes = {{{x + 39.9, y + 29.9}, {x + 52.1, y + 29.9}, {x + 52.1, y + 38.1}, {x + 39.9, y + 38.1}}};

    int nInside = 0;
    double dSum = 0.0;
    TPntListener inside(
        [&](const CCldCadPnt& pnt)
        {
            ++nInside;
            dSum += pnt.m_pnt.z;
        });
    FindPntsInPolygons(cld, &inside, {parcel}, false, 4096);
    std::printf("%d points in the parcel, house left out; mean height %.2f m\n", nInside, dSum / nInside);

    int nOutside = 0;
    TPntListener outside([&](const CCldCadPnt&) { ++nOutside; });
    FindPntsInPolygons(cld, &outside, {parcel}, true, 4096);
    std::printf("%d points outside, %d in all\n", nOutside, nInside + nOutside);
    // [/ask]
}
