#include <zor4data/KeepPnts.h>

#include <cloud/CCldStores.h>

void KeepPnts(CPntCld& cld, const std::vector<int>& vecIndices)
{
    CCldStores::KeepPnts(cld, vecIndices);
}
