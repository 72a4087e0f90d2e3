#include <zor4data/CPntCld.h>

#include <analysis/ground/CPclManager.h>
#include <analysis/outline/CalcCnt.h>
#include <cloud/ForStore.h>

bool CPntCld::CalcCnt(IDlgProgress* pProgress, IPntCldListener* pListener, double d) const
{
    return ForStore(m_eType, m_cld, m_cldColor, false,
                    [=](const auto& store) { return ::CalcCnt(store, pProgress, pListener, d); });
}

// KEPT: the filter numbers the live points, and its numbers are taken as indices of the store: with points
// marked deleted and not yet removed the two differ (Morph_PositionsAmongTheLiveAreIndicesOfAll_Kept).
void CPntCld::Morph(IPclProgressListener* pListener)
{
    CPclManager manager;
    manager.CreateCloud();
    constexpr int c_nBatch = 4096;
    GetPnts(&manager, c_nBatch);
    std::vector<int> vecGround;
    manager.Filter(pListener, vecGround);
    ForStore(m_eType, m_cld, m_cldColor, [&](auto& store) { store.KeepPnts(vecGround); });
}
