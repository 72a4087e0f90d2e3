#include <octree/contour/QueryPolygons.h>

#include <octree/HasRoot.h>
#include <octree/contour/WalkPolygons.h>
#include <zor3geom/CPolygonIndex.h>

using zor::geom::CPolygonIndex;
using zor::geom::TMultiPartPolygon;

namespace
{

template <class T, class Visitor>
void ScanAll(const COcTreeData<T>& store, Visitor& listener, const CPolygonIndex& polygons, bool bOutside)
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

template <class T, class Visitor>
void QueryPolygons(const COcTreeData<T>& store, typename Visitor::IHost* pListener,
                   const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch)
{
    Visitor listener(pListener, store, nBatch);
    if (store.m_pTree == nullptr)
        ScanAll(store, listener, CPolygonIndex(vecPolygons), bOutside);
    else if (HasRoot(store))
        CWalkPolygons<T, Visitor>(store, listener, vecPolygons, bOutside).Walk();
    listener.OnLeafEnd();
}

template void QueryPolygons<CTruncPnt, COcTreeListener<CTruncPnt>>(
    const COcTreeData<CTruncPnt>& store, IPntCldListener* pListener,
    const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
template void QueryPolygons<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>(
    const COcTreeData<CTruncPnt_Color>& store, IPntCldListener* pListener,
    const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
template void QueryPolygons<CTruncPnt, CIndexVisitor<CTruncPnt>>(
    const COcTreeData<CTruncPnt>& store, IPntIndexListener* pListener,
    const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
template void QueryPolygons<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>(
    const COcTreeData<CTruncPnt_Color>& store, IPntIndexListener* pListener,
    const std::vector<TMultiPartPolygon>& vecPolygons, bool bOutside, int nBatch);
