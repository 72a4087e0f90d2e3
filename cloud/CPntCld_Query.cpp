#include <zor4data/CPntCld.h>

#include <cloud/ForStore.h>
#include <octree/Query3D.h>

using zor::geom::PLANE_3D;

namespace
{

template <class T>
CQuery3D<T> MakeQuery(const COcTree<T>& store, IPntCldListener* pListener, int nBatch)
{
    return CQuery3D<T>(store, pListener, nBatch);
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
