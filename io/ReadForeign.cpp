#include <io/ReadForeign.h>

#include <io/grid/CAsciiGridReader.h>
#include <io/las/CLasReader.h>
#include <io/ply/CPlyReader.h>

bool ReadForeign(IPntCldReadListener& listener, IDlgProgress* pProgress, enumPntCldFile eType,
                 const zor::String& sPath, std::int64_t nMaxWaiting)
{
    if (eType == PntCldFile_Ply)
        return CPlyReader(listener).Read(pProgress, sPath);
    if (eType == PntCldFile_AsciiGrid)
        return CAsciiGridReader(listener, nMaxWaiting).Read(sPath);
    if (eType == PntCldFile_Las)
        return CLasReader(listener).Read(pProgress, sPath);
    return false;
}
