#include <formats/CLasGuard.h>

#include <cerrno>
#include <cstring>

CLasGuard::CLasGuard(const char* pPath) : m_file(pPath), m_laz(m_file)
{
    if (!m_file.IsOpen())
        m_cause = {FileCause_NotOpened, std::string("cannot be opened: ") + std::strerror(errno)};
}

bool CLasGuard::Check()
{
    if (!m_file.IsOpen())
        return false;
    m_cause = m_header.Read(m_file);
    if (!m_cause.empty())
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
    for (CLasRecord record; records.Next(record); ++m_nNumRecords)
        if (record.IsCompressor() && !CheckCompressor(record))
            return false;
    if (m_header.bCompressed && !m_bHasCompressor)
        return Refuse(FileCause_LasNotSaidHow, "it is marked as compressed, but does not say how");
    if (!m_header.bCompressed && m_bHasCompressor)
        return Refuse(FileCause_LasNotMarked,
                      "it says how its points are compressed, but is not marked as compressed");
    return true;
}

bool CLasGuard::CheckCompressor(const CLasRecord& record)
{
    if (m_bHasCompressor)
        return Refuse(FileCause_LasSaidTwice, "it says twice how its points are compressed");
    m_bHasCompressor = true;
    if (!m_laz.Check(record.GetPos(), record.GetSize(), m_header.nPosPnts, m_header.nPntSize))
    {
        m_cause = m_laz.GetCause();
        return false;
    }
    m_nPosFirst = m_laz.GetPosFirst();
    m_nMaxNumPnts = m_laz.GetMaxNumPnts();
    m_nLeastNumPnts = m_laz.GetLeastNumPnts();
    m_nPosEnd = m_laz.GetPosEnd();
    return true;
}

std::vector<CFilePatch> CLasGuard::GetPatches() const
{
    std::vector<CFilePatch> vecPatches = m_laz.GetPatches();
    if (m_nNumRecords < m_header.nNumRecords)
        vecPatches.emplace_back(LasLayout::c_nNumRecords.nPos, m_nNumRecords);
    if (m_header.CalcPntSize() != m_header.nPntSize)
        vecPatches.emplace_back(LasLayout::c_nPntSize.nPos,
                                static_cast<std::uint16_t>(m_header.CalcPntSize()));
    return vecPatches;
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
