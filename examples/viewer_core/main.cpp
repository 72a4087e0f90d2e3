// The core of a viewer without its window: a camera flies towards a cloud, and every frame fills one vertex
// buffer.

#include "../common/CFileColors.h"
#include "../common/FillHills.h"
#include "CCamera.h"
#include "CVertexBuffer.h"
#include "CViewer.h"

#include <zor4data/CFileFacts.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char** argv)
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (argc > 1 ? !cld.ReadFromFile(nullptr, FindFileFacts(argv[1]).eType, argv[1]) : !FillHills(cld))
        return std::fprintf(stderr, "usage: viewer_core [FILE]\n"), 1;
    zor::geom::RECT_3D box;
    if (!cld.GetBdry(box))
        return std::fprintf(stderr, "viewer_core: no points\n"), 1;

    // [frames]
    std::vector<CVertex> vertices(argc > 1 ? 2000000 : 20000); // for the graphics card to read
    CVertexBuffer buffer(vertices.data(), vertices.size());
    CViewer viewer(cld);

    const zor::geom::PNT_3D target(0.5 * (box.xmin + box.xmax), 0.5 * (box.ymin + box.ymax), box.zmin);
    const double dSize = std::max({box.xmax - box.xmin, box.ymax - box.ymin, 1.0});
    for (int nFrame = 0; nFrame < 8; ++nFrame)
    {
        const double dAway = dSize * (2.0 - 0.25 * nFrame); // ends within the cloud
        const zor::geom::PNT_3D eye(target.x - 0.8 * dAway, target.y - 0.6 * dAway, box.zmax + 0.4 * dAway);
        const bool bWhole = viewer.FillFrame(CCamera(eye, target, 0.8, 1280, 720), buffer);
        std::printf("frame %d: %zu vertices, bands: %d, %.1f pixels apart%s\n", nFrame, buffer.GetSize(),
                    viewer.GetNumBands(), viewer.GetSpacing(), bWhole ? "" : ", and more than fit");
    }
    // [/frames]
}
