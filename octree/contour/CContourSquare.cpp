#include <octree/contour/CContourSquare.h>

#include <formats/Compact.h>

#include <algorithm>
#include <cmath>

using zor::geom::PNT_2D;
using zor::geom::TPlanBox;

namespace
{

/// Farther out, where a step of double exceeds a compact unit, the room grows with the step.
double CalcRoom(const TPlanBox<double>& box) noexcept
{
    const double dFarthest =
        std::max({std::fabs(box.xmin), std::fabs(box.xmax), std::fabs(box.ymin), std::fabs(box.ymax)});
    return 0.01 + dFarthest * 1e-14;
}

double CalcCoord(std::int64_t n, float fOrg) noexcept
{
    return static_cast<double>(n) / c_dCompactScale + static_cast<double>(fOrg);
}

} // namespace

CContourSquare::CContourSquare(const TPlanBox<double>& boxOfSquare) noexcept
    : box(boxOfSquare), centre((box.xmin + box.xmax) / 2.0, (box.ymin + box.ymax) / 2.0),
      around(box.GetGrown(CalcRoom(box)))
{
}

std::vector<PNT_2D> CContourSquare::GetRing() const
{
    return {PNT_2D(box.xmin, box.ymin), PNT_2D(box.xmin, box.ymax), PNT_2D(box.xmax, box.ymax),
            PNT_2D(box.xmax, box.ymin)};
}

template <class T>
CContourSquare CalcContourSquare(const COcTreeData<T>& store, const COcTreeCube& cube) noexcept
{
    const std::int64_t nHalf = cube.GetHalfEdge();
    return CContourSquare(
        {CalcCoord(cube.nX - nHalf, store.m_fOrgX), CalcCoord(cube.nY - nHalf, store.m_fOrgY),
         CalcCoord(cube.nX + nHalf, store.m_fOrgX), CalcCoord(cube.nY + nHalf, store.m_fOrgY)});
}

template CContourSquare CalcContourSquare(const COcTreeData<CTruncPnt>& store,
                                          const COcTreeCube& cube) noexcept;
template CContourSquare CalcContourSquare(const COcTreeData<CTruncPnt_Color>& store,
                                          const COcTreeCube& cube) noexcept;
