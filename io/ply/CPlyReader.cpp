#include <io/ply/CPlyReader.h>

#include <formats/CByteReader.h>
#include <formats/CPlyHeader.h>
#include <io/ply/CPlyBuffer.h>
#include <io/ply/CPlyElementReader.h>
#include <io/ply/CPlyProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <cstdio>
#include <utility>
#include <vector>

namespace
{

bool ReadElements(IPntCldReadListener& listener, IDlgProgress* pProgress, const CPlyHeader& header,
                  std::FILE* pFile)
{
    if (fseeko(pFile, static_cast<off_t>(header.GetDataOffset()), SEEK_SET) != 0)
        return false;
    CPlyBuffer buffer(pFile);
    const std::vector<CPlyElement>& vecElements = header.GetElements();
    for (std::size_t i = 0; i < vecElements.size(); ++i)
    {
        const CPlyElement& element = vecElements[i];
        const CPlyProgress progress(pProgress, i, vecElements.size(), element.nCount);
        CPlyElementReader reader(listener, buffer, progress, element, header.GetProperties(element));
        if (!reader.Read())
            return false;
    }
    return true;
}

} // namespace

bool CPlyReader::Read(IDlgProgress* pProgress, const zor::String& sPath)
{
    CFilePtr pFile(std::fopen(sPath.c_str(), "rb"));
    if (pFile == nullptr)
        return false;
    CByteReader reader(std::move(pFile));
    CPlyHeader header;
    if (!header.Read(reader) || header.GetElements().empty())
        return false;
    if (!ReadElements(m_listener, pProgress, header, reader.GetFile()))
        return false;
    // KEPT: the only call for a file without vertices (Read_WithoutVertexElementOnlyEnds_Kept)
    m_listener.OnReadEnd();
    return true;
}
