#include <zor4data/CPntCld.h>

#include <io/ReadForeign.h>

bool CPntCld::ReadFromFile(IDlgProgress* pProgress, enumPntCldFile eType, const zor::String& sPath)
{
    m_sFilePath = sPath; // first, since it can fail
    m_eFileType = eType;
    return ReadForeign(*this, pProgress, eType, sPath);
}
