#ifndef OCTREE_CONTOUR_QUERYPOLYGONS_H
#define OCTREE_CONTOUR_QUERYPOLYGONS_H

#include <octree/COcTreeData.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <vector>

class CTruncPnt;
class CTruncPnt_Color;
class IPntCldListener;

/// Delivers exactly the live points of one store inside polygons, or outside all of them:
/// `FindPntsInPolygons`. What is inside is said in `CPolygonIndex`. Without a tree every point is looked at,
/// in index order; with one without a root, nothing is delivered.
template <class T>
void QueryPolygons(const COcTreeData<T>& store, IPntCldListener* pListener,
                   const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);

extern template void QueryPolygons(const COcTreeData<CTruncPnt>& store, IPntCldListener* pListener,
                                   const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons,
                                   bool bOutside, int nBatch);
extern template void QueryPolygons(const COcTreeData<CTruncPnt_Color>& store, IPntCldListener* pListener,
                                   const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons,
                                   bool bOutside, int nBatch);

#endif
