#include <host/picture/FindSurround.h>

#include <array>

namespace zorcld
{

namespace
{

struct CStep
{
    int x;
    int y;
};

constexpr std::array<CStep, 8> c_steps = {
    {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}};

} // namespace

CSurround FindSurround(const CPntRaster& raster, int x, int y, int nReach, float fNearer, int nSidesNeeded)
{
    CSurround surround;
    for (std::size_t k = 0; k < c_steps.size(); ++k)
    {
        if (static_cast<int>(k) - surround.GetNumSides() > static_cast<int>(c_steps.size()) - nSidesNeeded)
            break; // can no longer be enough
        for (int n = 1; n <= nReach; ++n)
        {
            const int xSide = x + n * c_steps[k].x;
            const int ySide = y + n * c_steps[k].y;
            if (!raster.IsInside(xSide, ySide))
                break;
            const std::size_t i = raster.GetIndex(xSide, ySide);
            if (!(raster.vecDepth[i] < fNearer))
                continue;
            surround.Add(raster.vecDepth[i], raster.vecColor[i], n);
            break;
        }
    }
    return surround;
}

} // namespace zorcld
