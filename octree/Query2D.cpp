#include <octree/Query2D.h>

#include <octree/FindExactPnt.h>
#include <octree/HasRoot.h>
#include <octree/Query3D.h>
#include <zor3geom/CalcRectPlanes.h>
#include <zor3geom/PAR_LINE_2D.h>

#include <algorithm>
#include <cmath>

using zor::geom::PAR_LINE_2D;
using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

namespace
{

constexpr double c_dQuarterTurn = -1.5707963267948966; // radians

template <class T, class Visitor>
void FindEnd(const COcTreeData<T>& store, Visitor& listener, const PNT_2D& pnt)
{
    if (!HasRoot(store))
        return;
    const COcTreeIndex& tree = *store.m_pTree;
    const std::int32_t nFound =
        FindExactPnt(*tree.m_pRoot, tree.GetRootCube(), listener, CompactFromCoord(pnt.x, store.m_fOrgX),
                     CompactFromCoord(pnt.y, store.m_fOrgY));
    if (nFound != -1)
        listener.OnPnt(nFound);
}

/// Calculates the two places at parameters ±t of the line from `from` to `to` after a quarter turn about
/// `from`.
void CalcAcross(const PNT_2D& from, const PNT_2D& to, double t, PNT_3D& plus, PNT_3D& minus)
{
    PAR_LINE_2D line(from, to);
    line.Rotate(from, c_dQuarterTurn);
    PNT_2D pnt;
    line.calcPt(t, pnt);
    plus = PNT_3D(pnt.x, pnt.y, 0.0);
    line.calcPt(-t, pnt);
    minus = PNT_3D(pnt.x, pnt.y, 0.0);
}

} // namespace

template <class T, class Visitor>
void CQuery2D<T, Visitor>::GetPnts2D(double xmin, double ymin, double xmax, double ymax) const
{
    CQuery3D<T, Visitor>(m_store, m_pListener, m_nBatch)
        .GetPnts_Clip({PLANE_3D(-1.0, 0.0, 0.0, xmin), PLANE_3D(0.0, -1.0, 0.0, ymin),
                       PLANE_3D(1.0, 0.0, 0.0, -xmax), PLANE_3D(0.0, 1.0, 0.0, -ymax)});
}

// KEPT: a point at an end of the line is delivered by the end search and again by the corridor, and the
// corridor, a query of its own, tells the colour listener the height range a second time
// (NearLine_EndsInTheCorridorComeTwice_Kept, NearLine_SecondSetZRangeForTheCorridor_Kept).
template <class T, class Visitor>
void CQuery2D<T, Visitor>::FindPnts2D_NearLine(const PNT_2D& p1, const PNT_2D& p2, double dist, bool bStart,
                                               bool bEnd) const
{
    Visitor listener(m_pListener, m_store, m_nBatch);
    if (bStart)
        FindEnd(m_store, listener, p1);
    listener.OnLeafEnd(); // the corridor has a buffer of its own
    if (dist > 0.0)
        FindCorridor(p1, p2, dist);
    if (bEnd)
        FindEnd(m_store, listener, p2);
    listener.OnLeafEnd();
}

/// Delivers the points in the rectangle that reaches `dist` to either side of the segment and ends with it. A
/// line without length has no corridor; a corridor whose corners are not finite numbers holds nothing.
template <class T, class Visitor>
void CQuery2D<T, Visitor>::FindCorridor(const PNT_2D& p1, const PNT_2D& p2, double dist) const
{
    const double dLength = PAR_LINE_2D(p1, p2).length();
    if (dLength == 0.0)
        return;
    PNT_3D a;
    PNT_3D b;
    PNT_3D c;
    PNT_3D d;
    CalcAcross(p1, p2, dist / dLength, a, b);
    CalcAcross(p2, p1, dist / dLength, c, d);
    std::vector<PLANE_3D> vecPlanes;
    zor::geom::CalcRectPlanes(a, b, c, d, vecPlanes);
    CQuery3D<T, Visitor>(m_store, m_pListener, m_nBatch).GetPnts_Clip(vecPlanes);
}

template <class T>
double CalcMaxSearchDist(const COcTreeData<T>& store) noexcept
{
    if (store.m_pTree == nullptr || store.m_nNumPnts == 0)
        return zor::geom::c_dUndefined;
    const double dX = store.m_pTree->m_nExtentX / c_dCompactScale;
    const double dY = store.m_pTree->m_nExtentY / c_dCompactScale;
    if (dX <= 0.0 || dY <= 0.0)
        return 1.0;
    return std::max(1.0, 5.0 * dX / std::sqrt(store.m_nNumPnts / (dY / dX)));
}

template class CQuery2D<CTruncPnt, COcTreeListener<CTruncPnt>>;
template class CQuery2D<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>;
template class CQuery2D<CTruncPnt, CIndexVisitor<CTruncPnt>>;
template class CQuery2D<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>;
template double CalcMaxSearchDist(const COcTreeData<CTruncPnt>& store) noexcept;
template double CalcMaxSearchDist(const COcTreeData<CTruncPnt_Color>& store) noexcept;
