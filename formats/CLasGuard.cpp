#include <formats/CLasGuard.h>

#include <formats/CLazGuard.h>

#include <cerrno>
#include <cstring>

CLasGuard::CLasGuard(const char* pPath) : m_file(pPath)
{
    if (!m_file.IsOpen())
        m_sCause = std::string("cannot be opened: ") + std::strerror(errno);
}

bool CLasGuard::Check()
{
    if (!m_file.IsOpen())
        return false;
    m_sCause = m_header.Read(m_file);
    if (!m_sCause.empty())
        return false;
    m_nPosFirst = m_header.nPosPnts;
    if (!m_header.bCompressed)
        m_nMaxNumPnts = m_header.CalcNumHeld();
    m_nLeastNumPnts = m_header.CalcNumThere();
    return CheckRecords();
}

bool CLasGuard::CheckRecords()
{
    CLasRecords records = GetRecords();
    CLasRecord record;
    while (records.Next(record))
        if (record.IsCompressor() && !CheckCompressor(record))
            return false;
    if (!records.IsGood())
    {
        // A cut off record may still say that the points are compressed, whatever the mark says.
        m_bBadRecordsOnly = !m_header.bCompressed && !m_bHasCompressor && !record.IsCompressor();
        return Refuse("its header is damaged: one of its records does not end before the points");
    }
    if (m_header.bCompressed && !m_bHasCompressor)
        return Refuse("it is marked as compressed, but does not say how");
    if (!m_header.bCompressed && m_bHasCompressor)
        return Refuse("it says how its points are compressed, but is not marked as compressed");
    return true;
}

bool CLasGuard::CheckCompressor(const CLasRecord& record)
{
    if (m_bHasCompressor)
        return Refuse("it says twice how its points are compressed");
    m_bHasCompressor = true;
    CLazGuard guard(m_file, m_header.nPosPnts, m_header.nPntSize);
    if (!guard.Check(record.GetPos(), record.GetSize()))
        return Refuse(guard.GetCause());
    m_nPosFirst = guard.GetPosFirst();
    m_nMaxNumPnts = guard.GetMaxNumPnts();
    m_nLeastNumPnts = guard.GetLeastNumPnts();
    m_nPosEnd = guard.GetPosEnd();
    return true;
}

std::array<double, 3> CLasGuard::ReadFirstPnt()
{
    std::array<std::int32_t, 3> anCoords{};
    if (!m_file.ReadAt(m_nPosFirst, anCoords))
        anCoords = {};
    std::array<double, 3> adCoords{};
    for (std::size_t i = 0; i < adCoords.size(); ++i)
        adCoords[i] = static_cast<double>(anCoords[i]) * m_header.adScale[i] + m_header.adOffset[i];
    return adCoords;
}
