#include <host/picture/FillGaps.h>

#include <host/picture/FindSurround.h>

namespace zorcld
{

void FillGaps(CPntRaster& raster, int nReach, int nSidesNeeded)
{
    const CPntRaster before = raster;
    const float fBehind = 4.0F * static_cast<float>(nReach); // a slope of more is not a gap's neighbour
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const std::size_t i = raster.GetIndex(x, y);
            const float fDepth = before.vecDepth[i];
            if (fDepth == CPntRaster::c_fEmpty)
                continue;
            const CSurround surround = FindSurround(before, x, y, nReach, fDepth - fBehind, nSidesNeeded);
            if (surround.GetNumSides() < nSidesNeeded)
                continue;
            raster.vecDepth[i] = surround.GetDepth();
            raster.vecColor[i] = surround.GetColor();
        }
}

} // namespace zorcld
