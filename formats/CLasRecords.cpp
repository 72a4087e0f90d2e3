#include <formats/CLasRecords.h>

#include <formats/CLasHeader.h>
#include <formats/CSizedFile.h>

#include <cstring>

bool CLasRecord::IsCompressor() const
{
    constexpr CLasTextField field = LasLayout::c_sRecordUser;
    return std::strncmp(reinterpret_cast<const char*>(m_acHead.data() + field.nPos),
                        LasLayout::c_acCompressor, field.nSize) == 0;
}

CLasRecords::CLasRecords(CSizedFile& file, const CLasHeader& header)
    : m_file(file), m_nPos(header.nHeaderSize), m_nEnd(header.nPosPnts), m_nNumLeft(header.nNumRecords)
{
}

bool CLasRecords::Next(CLasRecord& record)
{
    if (!m_bGood || m_nNumLeft == 0 || m_nEnd - m_nPos < LasLayout::c_nRecordHeadSize)
        return false;
    --m_nNumLeft;
    m_bGood = m_file.ReadAt(m_nPos, record.m_acHead) &&
              record.GetSize() <= m_nEnd - m_nPos - LasLayout::c_nRecordHeadSize;
    record.m_nPos = m_nPos + LasLayout::c_nRecordHeadSize;
    m_nPos = record.m_nPos + record.GetSize();
    return m_bGood;
}
