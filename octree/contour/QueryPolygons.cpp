#include <octree/contour/QueryPolygons.h>

#include <octree/HasRoot.h>
#include <octree/contour/WalkPolygons.h>
#include <zor3geom/CPolygonIndex.h>

using zor::geom::CPolygonIndex;
using zor::geom::TMultiPartPolygon;

namespace
{

template <class T>
void ScanAll(const COcTreeData<T>& store, COcTreeListener<T>& listener, const CPolygonIndex& polygons,
             bool bOutside)
{
    for (std::int32_t i = 0; i < store.m_nNumPnts; ++i)
    {
        if (store.IsDeleted(i))
            continue;
        const T& rec = listener.GetRecord(i);
        const bool bInside = polygons.Contains(
            {CoordFromCompact(rec.m_nX, store.m_fOrgX), CoordFromCompact(rec.m_nY, store.m_fOrgY)});
        if (bInside != bOutside)
            listener.OnPnt(i);
    }
}

} // namespace

template <class T>
void QueryPolygons(const COcTreeData<T>& store, IPntCldListener* pListener,
                   const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch)
{
    COcTreeListener<T> listener(pListener, store, nBatch);
    if (store.m_pTree == nullptr)
        ScanAll(store, listener, CPolygonIndex(vecPolygons), bOutside);
    else if (HasRoot(store))
        CWalkPolygons<T>(store, listener, vecPolygons, bOutside).Walk();
    listener.OnLeafEnd();
}

template void QueryPolygons(const COcTreeData<CTruncPnt>& store, IPntCldListener* pListener,
                            const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
template void QueryPolygons(const COcTreeData<CTruncPnt_Color>& store, IPntCldListener* pListener,
                            const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
