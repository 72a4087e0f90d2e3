#include <io/las/CLasGuard.h>

#include <io/las/CLazGuard.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

/// Bytes of a point at least, by point format.
constexpr std::array<std::uint16_t, 11> c_anPntSize = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};

/// Bytes of the header at least, by minor version from 1.0 on; later versions as the last.
constexpr std::array<std::uint16_t, 5> c_anHeaderSize = {227, 227, 227, 235, 375};

/// What stands before the data of a record of variable length.
constexpr std::int64_t c_nRecordHeadSize = 54;

/// In this name's place in a record's head: the record says how the points are compressed.
constexpr char c_acCompressorName[] = "laszip encoded";

} // namespace

bool CLasGuard::Check()
{
    return CheckHeader() && CheckRecords();
}

bool CLasGuard::CheckHeader()
{
    std::array<char, 4> acMagic{};
    std::uint8_t nMinor = 0;
    std::uint32_t nPosPnts = 0;
    std::uint8_t nFormat = 0;
    if (!m_file.ReadAt(0, acMagic) || std::memcmp(acMagic.data(), "LASF", acMagic.size()) != 0 ||
        !m_file.ReadAt(25, nMinor) || !m_file.ReadAt(94, m_nHeaderSize) || !m_file.ReadAt(96, nPosPnts) ||
        !m_file.ReadAt(100, m_nNumRecords) || !m_file.ReadAt(104, nFormat) || !m_file.ReadAt(105, m_nPntSize))
        return false;

    m_nPosPnts = nPosPnts;
    m_bCompressed = (nFormat & 0xC0U) != 0; // compressors mark the format by its highest bits
    const std::size_t nPlainFormat = nFormat & 0x3FU;
    if (nPlainFormat >= c_anPntSize.size() || m_nPntSize < c_anPntSize[nPlainFormat])
        return false;
    if (!m_bCompressed)
        m_nMaxNumPnts = (m_file.GetSize() - m_nPosPnts) / m_nPntSize;
    return m_nHeaderSize >= c_anHeaderSize[std::min<std::size_t>(nMinor, c_anHeaderSize.size() - 1)] &&
           m_nHeaderSize <= m_nPosPnts && m_nPosPnts <= m_file.GetSize();
}

/// The records follow each other between the header and the points.
bool CLasGuard::CheckRecords()
{
    if (m_nNumRecords > (m_nPosPnts - m_nHeaderSize) / c_nRecordHeadSize)
        return false;
    bool bHasCompressor = false;
    std::int64_t nPos = m_nHeaderSize;
    // A count above the records that there are does no harm: reading them stops at the points.
    for (std::uint32_t i = 0; i < m_nNumRecords && m_nPosPnts - nPos >= c_nRecordHeadSize; ++i)
    {
        std::array<char, 16> acName{};
        std::uint16_t nSize = 0;
        if (!m_file.ReadAt(nPos + 2, acName) || !m_file.ReadAt(nPos + 20, nSize))
            return false;
        nPos += c_nRecordHeadSize;
        if (nSize > m_nPosPnts - nPos)
            return false;
        if (std::strncmp(acName.data(), c_acCompressorName, acName.size()) == 0)
        {
            CLazGuard guard(m_file, m_nPosPnts, m_nPntSize);
            if (bHasCompressor || !guard.Check(nPos, nSize))
                return false;
            bHasCompressor = true;
            m_nMaxNumPnts = guard.GetMaxNumPnts();
        }
        nPos += nSize;
    }
    return bHasCompressor == m_bCompressed;
}
