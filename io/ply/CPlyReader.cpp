#include <io/ply/CPlyReader.h>

#include <formats/CFilePtr.h>
#include <formats/CPlyHeader.h>
#include <io/ply/CPlyBuffer.h>
#include <io/ply/CPlyElementReader.h>
#include <io/ply/CPlyProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <cstdio>
#include <vector>

namespace
{

bool ReadHeader(CPlyHeader& header, const zor::String& sPath)
{
    const CFilePtr pFile(std::fopen(sPath.c_str(), "rb"));
    return pFile != nullptr && header.Read(pFile.get());
}

bool ReadElements(IPntCldReadListener& listener, IDlgProgress* pProgress, const CPlyHeader& header,
                  const zor::String& sPath)
{
    const CFilePtr pFile(std::fopen(sPath.c_str(), "rb"));
    if (pFile == nullptr)
        return false;
    static_cast<void>(std::setvbuf(pFile.get(), nullptr, _IONBF, 0)); // the window is the buffer
    if (std::fseek(pFile.get(), header.GetDataOffset(), SEEK_SET) != 0)
        return false;

    CPlyBuffer buffer(pFile.get());
    const std::vector<CPlyElement>& vecElements = header.GetElements();
    for (std::size_t i = 0; i < vecElements.size(); ++i)
    {
        const CPlyElement& element = vecElements[i];
        const CPlyProgress progress(pProgress, i, vecElements.size(), element.m_nCount);
        CPlyElementReader reader(listener, buffer, progress, element, header.GetProperties(element));
        if (!reader.Read())
            return false;
    }
    return true;
}

} // namespace

bool CPlyReader::Read(IDlgProgress* pProgress, const zor::String& sPath)
{
    CPlyHeader header;
    if (!ReadHeader(header, sPath) || header.GetElements().empty())
        return false;
    if (!ReadElements(m_listener, pProgress, header, sPath))
        return false;
    // KEPT: the only call for a file without vertices (Read_WithoutVertexElementOnlyEnds_Kept)
    m_listener.OnReadEnd();
    return true;
}
