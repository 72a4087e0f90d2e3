#ifndef BENCH_CNANOFLANNPNTS_H
#define BENCH_CNANOFLANNPNTS_H

#include <octree/CTruncPnt.h>
#include <zor3geom/PNT_3D.h>

#include <nanoflann.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

/// Points as nanoflann wants to see them: compact ones, or coordinates.
template <class TPnt>
struct CNanoflannPnts
{
    std::size_t kdtree_get_point_count() const { return vecPnts.size(); }
    double kdtree_get_pt(std::size_t i, std::size_t nAxis) const { return GetAxis(vecPnts[i], nAxis); }

    template <class TBox>
    bool kdtree_get_bbox(TBox&) const
    {
        return false; // it finds the box itself
    }

    static double GetAxis(const CTruncPnt& pnt, std::size_t nAxis)
    {
        return nAxis == 0 ? pnt.m_nX : nAxis == 1 ? pnt.m_nY : pnt.m_nZ;
    }
    static double GetAxis(const zor::geom::PNT_3D& pnt, std::size_t nAxis)
    {
        return nAxis == 0 ? pnt.x : nAxis == 1 ? pnt.y : pnt.z;
    }

    const std::vector<TPnt>& vecPnts;
};

/// In plan or in space.
template <class TPnt, int NumAxes>
using TNanoflannTree =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, CNanoflannPnts<TPnt>>,
                                        CNanoflannPnts<TPnt>, NumAxes, std::uint32_t>;

#endif
