#ifndef OCTREE_QUERY2D_H
#define OCTREE_QUERY2D_H

#include <octree/CIndexVisitor.h>
#include <octree/COcTreeListener.h>
#include <zor3geom/PNT_2D.h>

/// The queries of rectangles and lines in plan view, on one store: heights are not looked at. Without a tree,
/// or with one without a root, they deliver nothing.
///
/// @tparam Visitor  as for `CQuery3D`.
template <class T, class Visitor = COcTreeListener<T>>
class CQuery2D
{
public:
    using PNT_2D = zor::geom::PNT_2D;
    using IHost = typename Visitor::IHost;

    /// @param nBatch  records, or indices, a call.
    CQuery2D(const COcTreeData<T>& store, IHost* pListener, int nBatch = 1)
        : m_store(store), m_pListener(pListener), m_nBatch(nBatch)
    {
    }

    /// Delivers the points in a rectangle, its edges included. Coordinate units.
    void GetPnts2D(double xmin, double ymin, double xmax, double ymax) const;

    /// Delivers the points along a segment and, on request, those exactly at its ends.
    void FindPnts2D_NearLine(const PNT_2D& p1, const PNT_2D& p2, double dist, bool bStart, bool bEnd) const;

private:
    void FindCorridor(const PNT_2D& p1, const PNT_2D& p2, double dist) const;

    const COcTreeData<T>& m_store;
    IHost* m_pListener;
    int m_nBatch;
};

/// @return five times the mean plan spacing of a store's points, at least 1, coordinate units; 1.7e200, no
/// limit, without a tree or without points; 1 for points on a line along x or y.
template <class T>
double CalcMaxSearchDist(const COcTreeData<T>& store) noexcept;

extern template class CQuery2D<CTruncPnt, COcTreeListener<CTruncPnt>>;
extern template class CQuery2D<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>;
extern template class CQuery2D<CTruncPnt, CIndexVisitor<CTruncPnt>>;
extern template class CQuery2D<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>;
extern template double CalcMaxSearchDist(const COcTreeData<CTruncPnt>& store) noexcept;
extern template double CalcMaxSearchDist(const COcTreeData<CTruncPnt_Color>& store) noexcept;

#endif
