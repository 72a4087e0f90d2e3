#include <zor4data/CPntCld.h>

#include <io/ReadForeign.h>

bool CPntCld::ReadFromFile(IDlgProgress* pProgress, enumPntCldFile eType, const zor::String& sPath)
{
    m_eFileType = eType;
    m_sFilePath = sPath;
    return ReadForeign(*this, pProgress, eType, sPath);
}
