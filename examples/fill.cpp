// Fills a cloud point by point, and tells what it holds.

#include "common/CFileColors.h"
#include "common/FillHills.h"

#include <zor4data/CPntCld.h>

#include <cstdio>

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [ask]
    zor::geom::RECT_3D box;
    cld.GetBdry(box); // false without an octree
    std::printf("%d points, x %.1f to %.1f, y %.1f to %.1f, z %.2f to %.2f\n", cld.GetNumPnts(), box.xmin,
                box.xmax, box.ymin, box.ymax, box.zmin, box.zmax);
    // [/ask]

    // [copy]
    const CPntCld copy(cld); // shares points and octree: costs nothing
    cld.Clear();             // gives up this cloud's share; `copy` goes on with them
    std::printf("%d points left, %d in the copy\n", cld.GetNumPnts(), copy.GetNumPnts());
    // [/copy]
}
