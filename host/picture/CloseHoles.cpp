#include <host/picture/CloseHoles.h>

#include <host/picture/FindSurround.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace zorcld
{

namespace
{

using TMask = std::vector<unsigned char>;

/// Sets the pixels at most `nRadius` away from a set one: a disc around each that has an unset neighbour.
TMask Grow(const TMask& mask, int nWidth, int nHeight, int nRadius)
{
    std::vector<int> vecReach; // along a row, by its distance from the disc's middle
    for (int dy = 0; dy <= nRadius; ++dy)
        vecReach.push_back(static_cast<int>(std::sqrt(static_cast<double>(nRadius * nRadius - dy * dy))));
    const auto getIndex = [nWidth](int x, int y)
    { return static_cast<std::size_t>(y) * static_cast<std::size_t>(nWidth) + static_cast<std::size_t>(x); };
    const auto isRim = [&](int x, int y)
    {
        return (x > 0 && mask[getIndex(x - 1, y)] == 0) ||
               (x + 1 < nWidth && mask[getIndex(x + 1, y)] == 0) ||
               (y > 0 && mask[getIndex(x, y - 1)] == 0) || (y + 1 < nHeight && mask[getIndex(x, y + 1)] == 0);
    };
    TMask grown(mask);
    for (int y = 0; y < nHeight; ++y)
        for (int x = 0; x < nWidth; ++x)
        {
            if (mask[getIndex(x, y)] == 0 || !isRim(x, y))
                continue;
            for (int ySide = std::max(0, y - nRadius); ySide <= std::min(nHeight - 1, y + nRadius); ++ySide)
            {
                const int nReach = vecReach[static_cast<std::size_t>(std::abs(ySide - y))];
                const int xBegin = std::max(0, x - nReach);
                const int xEnd = std::min(nWidth - 1, x + nReach) + 1;
                std::fill_n(grown.begin() + static_cast<std::ptrdiff_t>(getIndex(xBegin, ySide)),
                            xEnd - xBegin, static_cast<unsigned char>(1));
            }
        }
    return grown;
}

void Invert(TMask& mask)
{
    for (unsigned char& uc : mask)
        uc = uc == 0 ? 1 : 0;
}

} // namespace

void CloseHoles(CPntRaster& raster, int nRadius)
{
    // All around there is room for empty discs: what lies between the points and the edge is no hole.
    const int nWidth = raster.nWidth + 2 * nRadius;
    const int nHeight = raster.nHeight + 2 * nRadius;
    const auto getIndex = [&](int x, int y)
    {
        return static_cast<std::size_t>(y + nRadius) * static_cast<std::size_t>(nWidth) +
               static_cast<std::size_t>(x + nRadius);
    };
    TMask mask(static_cast<std::size_t>(nWidth) * static_cast<std::size_t>(nHeight));
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
            mask[getIndex(x, y)] = raster.vecDepth[raster.GetIndex(x, y)] == CPntRaster::c_fEmpty ? 0 : 1;
    TMask open = Grow(mask, nWidth, nHeight, nRadius);
    Invert(open); // centres of empty discs
    open = Grow(open, nWidth, nHeight, nRadius);

    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            if (mask[getIndex(x, y)] != 0 || open[getIndex(x, y)] != 0)
                continue;
            const auto isSeen = [&](int xSide, int ySide) { return mask[getIndex(xSide, ySide)] != 0; };
            const CSurround surround = FindSurround(raster, x, y, 3 * nRadius, isSeen); // closed ones are not
            if (surround.GetNumSides() == 0)
                continue;
            const std::size_t i = raster.GetIndex(x, y);
            raster.vecDepth[i] = surround.GetDepth();
            raster.vecColor[i] = surround.GetColor();
        }
}

} // namespace zorcld
