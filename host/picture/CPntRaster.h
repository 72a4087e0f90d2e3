#ifndef HOST_PICTURE_CPNTRASTER_H
#define HOST_PICTURE_CPNTRASTER_H

#include <host/picture/CRgb.h>

#include <cstddef>
#include <limits>
#include <vector>

namespace zorcld
{

/// A picture of points before it is shaded: what is seen at each pixel and how far away. Seven bytes a
/// pixel: large pictures must fit into memory, several times where they are worked upon.
struct CPntRaster
{
    static constexpr float c_fEmpty = std::numeric_limits<float>::infinity();

    CPntRaster(int nW, int nH)
        : nWidth(nW), nHeight(nH),
          vecDepth(static_cast<std::size_t>(nW) * static_cast<std::size_t>(nH), c_fEmpty),
          vecColor(vecDepth.size())
    {
    }

    std::size_t GetIndex(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(nWidth) + static_cast<std::size_t>(x);
    }

    bool IsInside(int x, int y) const { return x >= 0 && y >= 0 && x < nWidth && y < nHeight; }

    int nWidth;
    int nHeight;
    std::vector<float> vecDepth; ///< c_fEmpty: nothing is seen
    std::vector<CRgbBytes> vecColor;
};

} // namespace zorcld

#endif
