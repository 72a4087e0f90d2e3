// Finds the outline of a cloud, and the area that it holds.

#include "common/CFileColors.h"
#include "common/FillHills.h"
#include "common/TPntListener.h"

#include <zor4data/CPntCld.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [outline]
    std::vector<zor::geom::PNT_3D> corners; // the first one comes again at the end
    TPntListener listener([&](const CCldCadPnt& pnt) { corners.push_back(pnt.m_pnt); });
    const double dDistance = cld.CalcMaxSearchDist(); // points so far apart belong together
    if (!cld.CalcCnt(nullptr, &listener, dDistance))
        return std::printf("no outline\n"), 1;

    double dTwice = 0.0;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i)
    {
        // From the first corner: products of full coordinates would lose the metres.
        const double ax = corners[i].x - corners[0].x;
        const double ay = corners[i].y - corners[0].y;
        const double bx = corners[i + 1].x - corners[0].x;
        const double by = corners[i + 1].y - corners[0].y;
        dTwice += ax * by - bx * ay;
    }
    std::printf("distance %.1f m: %zu corners, %.1f m2\n", dDistance, corners.size() - 1,
                0.5 * std::fabs(dTwice));
    // [/outline]
}
