#include <zor4data/CalcCntWithin.h>

#include <analysis/outline/CalcCnt.h>
#include <cloud/CCldStores.h>

enumOutline CalcCntWithin(const CPntCld& cld, IDlgProgress* pProgress, IPntCldListener* pListener, double d,
                          std::int64_t nMaxLooks)
{
    return CCldStores::Ask(cld, Outline_None,
                           [=](const auto& store)
                           { return CalcCntWithin(store, pProgress, pListener, d, nMaxLooks); });
}
