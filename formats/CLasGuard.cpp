#include <formats/CLasGuard.h>

#include <cerrno>
#include <cstring>

/// Behind the points, of which more are not looked at.
static constexpr int c_nMaxLaterRecords = 1000;

CLasGuard::CLasGuard(const char* pPath) : m_file(pPath), m_laz(m_file)
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
    for (CLasRecord record; records.Next(record); ++m_nNumRecords)
        if (record.IsCompressor() && !CheckCompressor(record))
            return false;
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
    if (!m_laz.Check(record.GetPos(), record.GetSize(), m_header.nPosPnts, m_header.nPntSize))
        return Refuse(m_laz.GetCause());
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

bool CLasGuard::HasCoordSystem()
{
    using namespace LasLayout;
    const auto isOne = [](const std::string& sUser, std::uint16_t nId)
    { return sUser == c_acProjection && (nId == c_nGeoKeysId || nId == c_nWktId); };
    CLasRecords records = GetRecords();
    for (CLasRecord record; records.Next(record);)
        if (isOne(record.GetUser(), record.GetId()))
            return true;
    std::array<unsigned char, c_nLaterRecordHeadSize> acHead{};
    std::int64_t nPos = m_header.nPosLaterRecords;
    for (int i = 0; i < c_nMaxLaterRecords && nPos > 0 && m_file.ReadAt(nPos, acHead); ++i)
    {
        if (isOne(GetText(acHead.data(), c_sRecordUser), Get(acHead.data(), c_nRecordId)))
            return true;
        const std::int64_t nSize = Get(acHead.data(), c_nLaterRecordSize);
        if (nSize < 0 || nSize > m_file.GetSize())
            return false;
        nPos += c_nLaterRecordHeadSize + nSize;
    }
    return false;
}
