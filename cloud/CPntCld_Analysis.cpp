#include <zor4data/CPntCld.h>

#include <analysis/ground/CPclManager.h>
#include <analysis/outline/CalcCnt.h>
#include <cloud/CCldStores.h>

bool CPntCld::CalcCnt(IDlgProgress* pProgress, IPntCldListener* pListener, double d) const
{
    return ForStore(m_eType, m_cld, m_cldColor, false,
                    [=](const auto& store) { return ::CalcCnt(store, pProgress, pListener, d); });
}

// KEPT: the filter numbers the live points, and its numbers are taken as indices of the store: with points
// marked deleted and not yet removed the two differ (Morph_PositionsAmongTheLiveAreIndicesOfAll_Kept).
std::vector<int> CCldStores::FindGround(const CPntCld& cld, IPclProgressListener* pListener)
{
    CPclManager manager;
    manager.CreateCloud();
    constexpr int c_nBatch = 4096;
    cld.GetPnts(&manager, c_nBatch);
    std::vector<int> vecGround;
    manager.Filter(pListener, vecGround);
    return vecGround;
}

void CPntCld::Morph(IPclProgressListener* pListener)
{
    CCldStores::KeepPnts(*this, CCldStores::FindGround(*this, pListener));
}
