#include <host/picture/CPntRaster.h>
#include <host/picture/Surround.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{

using TMask = std::vector<unsigned char>;

/// For every pixel how far away, along its row, the nearest set one is.
std::vector<int> CalcRowDistances(const TMask& mask, int nWidth, int nHeight)
{
    constexpr int c_nFar = std::numeric_limits<int>::max() / 2;
    std::vector<int> vecDistances(mask.size());
    std::size_t iRow = 0;
    for (int y = 0; y < nHeight; ++y, iRow += static_cast<std::size_t>(nWidth))
    {
        int nDistance = c_nFar;
        for (std::size_t i = iRow; i < iRow + static_cast<std::size_t>(nWidth); ++i)
            vecDistances[i] = nDistance = mask[i] != 0 ? 0 : nDistance + 1;
        nDistance = c_nFar;
        for (std::size_t i = iRow + static_cast<std::size_t>(nWidth); i-- > iRow;)
        {
            nDistance = mask[i] != 0 ? 0 : nDistance + 1;
            vecDistances[i] = std::min(vecDistances[i], nDistance);
        }
    }
    return vecDistances;
}

/// Sets the pixels at most `nRadius` away from a set one.
TMask Grow(const TMask& mask, int nWidth, int nHeight, int nRadius)
{
    std::vector<int> vecReach; // along a row, by its distance from the pixel's
    for (int dy = 0; dy <= nRadius; ++dy)
        vecReach.push_back(static_cast<int>(std::sqrt(static_cast<double>(nRadius * nRadius - dy * dy))));
    const std::vector<int> vecDistances = CalcRowDistances(mask, nWidth, nHeight);
    const auto isNear = [&](int x, int y)
    {
        for (int dy = 0; dy <= nRadius; ++dy)
            for (const int ySide : {y - dy, y + dy})
                if (ySide >= 0 && ySide < nHeight &&
                    vecDistances[static_cast<std::size_t>(ySide) * static_cast<std::size_t>(nWidth) +
                                 static_cast<std::size_t>(x)] <= vecReach[static_cast<std::size_t>(dy)])
                    return true;
        return false;
    };
    TMask grown(mask);
    std::size_t i = 0;
    for (int y = 0; y < nHeight; ++y)
        for (int x = 0; x < nWidth; ++x, ++i)
            if (mask[i] == 0 && isNear(x, y))
                grown[i] = 1;
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
    TMask mask(raster.vecDepth.size());
    for (std::size_t i = 0; i < mask.size(); ++i)
        mask[i] = raster.vecDepth[i] == CPntRaster::c_fEmpty ? 0 : 1;
    TMask open = Grow(mask, raster.nWidth, raster.nHeight, nRadius);
    Invert(open); // centres of empty discs
    open = Grow(open, raster.nWidth, raster.nHeight, nRadius);

    const CPntRaster before = raster;
    std::size_t i = 0;
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x, ++i)
        {
            if (mask[i] != 0 || open[i] != 0)
                continue;
            const CSurround surround = FindSurround(before, x, y, 3 * nRadius, CPntRaster::c_fEmpty, 1);
            if (surround.GetNumSides() == 0)
                continue;
            raster.vecDepth[i] = surround.GetDepth();
            raster.vecColor[i] = surround.GetColor();
        }
}
