#include <zor4data/ReadPnts.h>

#include <io/ReadForeign.h>

bool ReadPnts(IPntCldReadListener& listener, IDlgProgress* pProgress, enumPntCldFile eType,
              const zor::String& sPath)
{
    constexpr std::int64_t c_nMaxWaiting = std::int64_t{1} << 22; // values of 8 bytes: 32 MiB
    return ReadForeign(listener, pProgress, eType, sPath, c_nMaxWaiting);
}
