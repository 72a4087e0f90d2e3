#include <zor4data/LoadNative.h>

#include <cloud/CCldStores.h>

bool LoadNative(CPntCld& cld, IDlgProgress* pProgress, const zor::String& sPath)
{
    return CCldStores::LoadNative(cld, pProgress, sPath);
}
