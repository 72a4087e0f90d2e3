#ifndef HOST_OUTPUT_CPNTSUMMARY_H
#define HOST_OUTPUT_CPNTSUMMARY_H

#include <zor3geom/PNT_3D.h>
#include <zor3geom/RECT_3D.h>

#include <algorithm>
#include <cstdint>

namespace zorcld
{

/// What must be known of points before the first one is written.
struct CPntSummary
{
    void Add(const zor::geom::PNT_3D& pnt)
    {
        if (nNumPnts++ == 0)
            box = zor::geom::RECT_3D(pnt.x, pnt.y, pnt.z, pnt.x, pnt.y, pnt.z);
        box = zor::geom::RECT_3D(std::min(box.xmin, pnt.x), std::min(box.ymin, pnt.y),
                                 std::min(box.zmin, pnt.z), std::max(box.xmax, pnt.x),
                                 std::max(box.ymax, pnt.y), std::max(box.zmax, pnt.z));
    }

    /// @return the longest side of the box.
    double CalcExtent() const
    {
        return std::max({box.xmax - box.xmin, box.ymax - box.ymin, box.zmax - box.zmin});
    }

    std::int64_t nNumPnts = 0;
    zor::geom::RECT_3D box; ///< undefined while there is no point
    bool bColor = false;
};

} // namespace zorcld

#endif
