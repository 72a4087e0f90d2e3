#include <zor4data/FindGround.h>

#include <cloud/CCldStores.h>

std::vector<int> FindGround(const CPntCld& cld, IPclProgressListener* pListener)
{
    return CCldStores::FindGround(cld, pListener);
}
