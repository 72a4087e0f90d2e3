#ifndef OCTREE_CONTOUR_QUERYPOLYGONS_H
#define OCTREE_CONTOUR_QUERYPOLYGONS_H

#include <octree/CIndexVisitor.h>
#include <octree/COcTreeListener.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <vector>

/// Delivers exactly the live points of one store inside polygons, or outside all of them:
/// `FindPntsInPolygons`. What is inside is said in `CPolygonIndex`. Without a tree every point is looked at,
/// in index order; with one without a root, nothing is delivered.
///
/// @tparam Visitor  as for `CQuery3D`.
template <class T, class Visitor = COcTreeListener<T>>
void QueryPolygons(const COcTreeData<T>& store, typename Visitor::IHost* pListener,
                   const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);

extern template void QueryPolygons<CTruncPnt, COcTreeListener<CTruncPnt>>(
    const COcTreeData<CTruncPnt>& store, IPntCldListener* pListener,
    const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
extern template void QueryPolygons<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>(
    const COcTreeData<CTruncPnt_Color>& store, IPntCldListener* pListener,
    const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
extern template void QueryPolygons<CTruncPnt, CIndexVisitor<CTruncPnt>>(
    const COcTreeData<CTruncPnt>& store, IPntIndexListener* pListener,
    const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
extern template void QueryPolygons<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>(
    const COcTreeData<CTruncPnt_Color>& store, IPntIndexListener* pListener,
    const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);

#endif
