#include <zor4data/FindIndices.h>

#include <cloud/CCldStores.h>
#include <octree/Query2D.h>
#include <octree/Query3D.h>
#include <octree/contour/QueryPolygons.h>

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;

namespace
{

template <class T>
CQuery3D<T, CIndexVisitor<T>> MakeQuery(const COcTree<T>& store, IPntIndexListener* pListener, int nBatch)
{
    return {store, pListener, nBatch};
}

template <class T>
CQuery2D<T, CIndexVisitor<T>> MakeQuery2D(const COcTree<T>& store, IPntIndexListener* pListener, int nBatch)
{
    return {store, pListener, nBatch};
}

/// Runs `operation` on the live store, if there is one.
template <class Operation>
void Ask(const CPntCld& cld, Operation operation)
{
    CCldStores::Ask(cld, 0,
                    [&](const auto& store)
                    {
                        operation(store);
                        return 0;
                    });
}

} // namespace

void FindIndices(const CPntCld& cld, IPntIndexListener* pListener, int nBatch)
{
    Ask(cld, [=](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts(); });
}

void FindIndices_Lod(const CPntCld& cld, IPntIndexListener* pListener, double dLod, int nBatch)
{
    Ask(cld, [=](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts_Lod(dLod); });
}

void FindIndices_Clip(const CPntCld& cld, IPntIndexListener* pListener,
                      const std::vector<PLANE_3D>& vecPlanes, int nBatch)
{
    Ask(cld, [&](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts_Clip(vecPlanes); });
}

void FindIndices_LodClip(const CPntCld& cld, IPntIndexListener* pListener, double dLod,
                         const std::vector<PLANE_3D>& vecPlanes, int nBatch)
{
    Ask(cld,
        [&](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts_LodClip(dLod, vecPlanes); });
}

void FindIndices2D(const CPntCld& cld, IPntIndexListener* pListener, double xmin, double ymin, double xmax,
                   double ymax, int nBatch)
{
    Ask(cld,
        [=](const auto& store) { MakeQuery2D(store, pListener, nBatch).GetPnts2D(xmin, ymin, xmax, ymax); });
}

void FindIndices2D_NearLine(const CPntCld& cld, IPntIndexListener* pListener, const PNT_2D& p1,
                            const PNT_2D& p2, double dist, bool bStart, bool bEnd, int nBatch)
{
    Ask(cld, [&](const auto& store)
        { MakeQuery2D(store, pListener, nBatch).FindPnts2D_NearLine(p1, p2, dist, bStart, bEnd); });
}

void FindIndicesInPolygons(const CPntCld& cld, IPntIndexListener* pListener,
                           const std::vector<TMultiPartPolygon>& polygons, bool bOutside, int nBatch)
{
    Ask(cld,
        [&](const auto& store)
        {
            using T = std::decay_t<decltype(store.m_pPnts[0])>;
            QueryPolygons<T, CIndexVisitor<T>>(store, pListener, polygons, bOutside, nBatch);
        });
}
