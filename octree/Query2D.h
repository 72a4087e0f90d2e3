#ifndef OCTREE_QUERY2D_H
#define OCTREE_QUERY2D_H

#include <octree/COcTreeData.h>
#include <zor3geom/PNT_2D.h>

class CTruncPnt;
class CTruncPnt_Color;
class IPntCldListener;

/// The queries of rectangles and lines in plan view, on one store: heights are not looked at, one record a
/// call. Without a tree, or with one without a root, they deliver nothing.
template <class T>
class CQuery2D
{
public:
    using PNT_2D = zor::geom::PNT_2D;

    CQuery2D(const COcTreeData<T>& store, IPntCldListener* pListener) : m_store(store), m_pListener(pListener)
    {
    }

    /// Delivers the points in a rectangle, its edges included. Coordinate units.
    void GetPnts2D(double xmin, double ymin, double xmax, double ymax) const;

    /// Delivers the points along a segment and, on request, those exactly at its ends.
    void FindPnts2D_NearLine(const PNT_2D& p1, const PNT_2D& p2, double dist, bool bStart, bool bEnd) const;

private:
    void FindCorridor(const PNT_2D& p1, const PNT_2D& p2, double dist) const;

    const COcTreeData<T>& m_store;
    IPntCldListener* m_pListener;
};

/// @return five times the mean plan spacing of a store's points, at least 1, coordinate units; 1.7e200, no
/// limit, without a tree or without points; 1 for points on a line along x or y.
template <class T>
double CalcMaxSearchDist(const COcTreeData<T>& store) noexcept;

extern template class CQuery2D<CTruncPnt>;
extern template class CQuery2D<CTruncPnt_Color>;
extern template double CalcMaxSearchDist(const COcTreeData<CTruncPnt>& store) noexcept;
extern template double CalcMaxSearchDist(const COcTreeData<CTruncPnt_Color>& store) noexcept;

#endif
