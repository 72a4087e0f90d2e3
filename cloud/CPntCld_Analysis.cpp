#include <zor4data/CPntCld.h>

#include <analysis/CalcCnt.h>
#include <cloud/ForStore.h>

bool CPntCld::CalcCnt(IDlgProgress* pProgress, IPntCldListener* pListener, double d) const
{
    return ForStore(m_eType, m_cld, m_cldColor, false,
                    [=](const auto& store) { return ::CalcCnt(store, pProgress, pListener, d); });
}
