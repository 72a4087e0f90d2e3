#include <formats/CLasRecords.h>

#include <formats/CLasHeader.h>
#include <formats/CSizedFile.h>

#include <algorithm>
#include <cstring>

bool CLasRecord::IsCompressor() const
{
    const CLasTextField& field = LasLayout::c_sRecordUser;
    return GetId() == LasLayout::c_nCompressorId &&
           std::strncmp(reinterpret_cast<const char*>(m_acHead.data() + field.nPos),
                        LasLayout::c_acCompressor, field.nSize) == 0;
}

CLasRecords::CLasRecords(CSizedFile& file, const CLasHeader& header)
    : m_file(file), m_nPos(header.nHeaderSize), m_nEnd(header.nPosPnts), m_nNumLeft(header.nNumRecords)
{
}

bool CLasRecords::Next(CLasRecord& record)
{
    constexpr std::int64_t c_nHeadSize = LasLayout::c_nRecordHeadSize;
    if (m_nNumLeft == 0 || m_nEnd - m_nPos < c_nHeadSize || !m_file.ReadAt(m_nPos, record.m_acHead))
        return false;
    --m_nNumLeft;
    record.m_nPos = m_nPos + c_nHeadSize;
    record.m_nSize = static_cast<std::uint16_t>(std::min<std::int64_t>(
        LasLayout::Get(record.m_acHead.data(), LasLayout::c_nRecordSize), m_nEnd - record.m_nPos));
    m_nPos = record.m_nPos + record.m_nSize;
    return true;
}
