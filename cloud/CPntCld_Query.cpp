#include <zor4data/CPntCld.h>

#include <cloud/ForStore.h>
#include <octree/CPntCldListener_NumPnts.h>
#include <octree/Query2D.h>
#include <octree/Query3D.h>
#include <octree/contour/QueryContour.h>

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;

namespace
{

template <class T>
CQuery3D<T> MakeQuery(const COcTree<T>& store, IPntCldListener* pListener, int nBatch)
{
    return CQuery3D<T>(store, pListener, nBatch);
}

template <class T>
CQuery2D<T> MakeQuery2D(const COcTree<T>& store, IPntCldListener* pListener)
{
    return CQuery2D<T>(store, pListener);
}

template <class T>
CQueryContour<T> MakeQueryContour(const COcTree<T>& store, IPntCldListener* pListener)
{
    return CQueryContour<T>(store, pListener);
}

} // namespace

void CPntCld::GetPnts(IPntCldListener* pListener) const
{
    GetPnts(pListener, 1);
}

void CPntCld::GetPnts(IPntCldListener* pListener, int nBatch) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [=](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts(); });
}

void CPntCld::GetPnts_Lod(IPntCldListener* pListener, double dLod) const
{
    GetPnts_Lod(pListener, dLod, 1);
}

void CPntCld::GetPnts_Lod(IPntCldListener* pListener, double dLod, int nBatch) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [=](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts_Lod(dLod); });
}

void CPntCld::GetPnts_Clip(IPntCldListener* pListener, const std::vector<PLANE_3D>& vecPlanes) const
{
    GetPnts_Clip(pListener, vecPlanes, 1);
}

void CPntCld::GetPnts_Clip(IPntCldListener* pListener, const std::vector<PLANE_3D>& vecPlanes,
                           int nBatch) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [&](const auto& store) { MakeQuery(store, pListener, nBatch).GetPnts_Clip(vecPlanes); });
}

void CPntCld::GetPnts_LodClip(IPntCldListener* pListener, double dLod, const std::vector<PLANE_3D>& vecPlanes,
                              int nBatch) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [&](const auto& store)
             { MakeQuery(store, pListener, nBatch).GetPnts_LodClip(dLod, vecPlanes); });
}

void CPntCld::GetPnts2D(IPntCldListener* pListener, double xmin, double ymin, double xmax, double ymax) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [=](const auto& store) { MakeQuery2D(store, pListener).GetPnts2D(xmin, ymin, xmax, ymax); });
}

int CPntCld::GetNumPnts2D(double xmin, double ymin, double xmax, double ymax) const
{
    CPntCldListener_NumPnts listener;
    GetPnts2D(&listener, xmin, ymin, xmax, ymax);
    return listener.GetNumPnts();
}

void CPntCld::FindPnts2D_NearLine(IPntCldListener* pListener, const PNT_2D& p1, const PNT_2D& p2, double dist,
                                  bool bStart, bool bEnd) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [&](const auto& store)
             { MakeQuery2D(store, pListener).FindPnts2D_NearLine(p1, p2, dist, bStart, bEnd); });
}

void CPntCld::FindPnts2D_IntCnt(IPntCldListener* pListener, const std::vector<PNT_2D>& contour) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [&](const auto& store) { MakeQueryContour(store, pListener).FindPnts2D_IntCnt(contour); });
}

void CPntCld::FindPnts2D_Cnts(IPntCldListener* pListener, const std::vector<PNT_2D>& outer,
                              const std::vector<std::vector<PNT_2D>>& holes) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [&](const auto& store) { MakeQueryContour(store, pListener).FindPnts2D_Cnts(outer, holes); });
}

double CPntCld::CalcMaxSearchDist() const
{
    return ForStore(m_eType, m_cld, m_cldColor, zor::geom::c_dUndefined,
                    [](const auto& store) { return ::CalcMaxSearchDist(store); });
}
