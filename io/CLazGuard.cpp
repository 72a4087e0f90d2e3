#include <io/CLazGuard.h>

namespace
{

/// How the points are compressed: in one stream, in chunks, or in chunks in which every part of a point has
/// streams of its own.
constexpr std::uint16_t c_nOneStream = 1;
constexpr std::uint16_t c_nChunked = 2;
constexpr std::uint16_t c_nLayered = 3;

/// The table of chunks says how many points each holds.
constexpr std::uint32_t c_nVariableChunks = std::numeric_limits<std::uint32_t>::max();

/// The position of the table of chunks stands before the first chunk.
constexpr std::int64_t c_nPosSize = 8;

/// A part of a point, of one type and version.
struct CLazItem
{
    std::uint16_t m_nType;
    std::uint16_t m_nSize;
    std::uint16_t m_nVersion;
};

/// @return whether the item is one of those that are in layers or, respectively, are not.
bool IsKnown(const CLazItem& item, bool bLayered)
{
    if (bLayered)
        return item.m_nType >= 10 && item.m_nType <= 14 && item.m_nVersion >= 2 && item.m_nVersion <= 4;
    const bool bWaveform = item.m_nType == 9;
    return (item.m_nType == 0 || (item.m_nType >= 6 && item.m_nType <= 9)) && item.m_nVersion >= 1 &&
           item.m_nVersion <= (bWaveform ? 1 : 2);
}

/// @return how many layers a chunk has of an item that is in layers.
std::uint32_t CountLayers(const CLazItem& item)
{
    switch (item.m_nType)
    {
    case 10: // coordinates and what every format has
        return 9;
    case 12: // colour and infrared
        return 2;
    case 14: // bytes of the user's own
        return item.m_nSize;
    default: // colour, waveform
        return 1;
    }
}

} // namespace

bool CLazGuard::Check(std::int64_t nPos, std::uint16_t nSize)
{
    constexpr std::int64_t c_nSize = 34;
    std::uint16_t nCompressor = 0;
    std::uint32_t nChunkSize = 0;
    std::uint16_t nNumItems = 0;
    if (nSize < c_nSize || !m_file.ReadAt(nPos, nCompressor) || !m_file.ReadAt(nPos + 12, nChunkSize) ||
        !m_file.ReadAt(nPos + 32, nNumItems) ||
        nSize < c_nSize + static_cast<std::int64_t>(sizeof(CLazItem)) * nNumItems)
        return false;
    if (nCompressor < c_nOneStream || nCompressor > c_nLayered)
        return false;
    m_bLayered = nCompressor == c_nLayered;
    if (!CheckItems(nPos + c_nSize, nNumItems))
        return false;
    if (nCompressor < c_nChunked)
        return true;
    return FindTable() && CheckTable(nChunkSize) && (!m_bLayered || CheckLayers());
}

/// The parts of a point: together as many bytes as a point, and of the kind that the compressor takes.
bool CLazGuard::CheckItems(std::int64_t nPos, std::uint16_t nNumItems)
{
    std::uint32_t nSumSizes = 0;
    for (std::uint16_t i = 0; i < nNumItems; ++i, nPos += sizeof(CLazItem))
    {
        CLazItem item{};
        if (!m_file.ReadAt(nPos, item) || !IsKnown(item, m_bLayered))
            return false;
        nSumSizes += item.m_nSize;
        if (m_bLayered)
            m_nNumLayers += CountLayers(item);
    }
    return nSumSizes == m_nPntSize;
}

bool CLazGuard::FindTable()
{
    if (!m_file.ReadAt(m_nPosPnts, m_nPosTable))
        return false;
    // Written to where nothing can be filled in afterwards: the position stands at the end of the file.
    if (m_nPosTable == -1 && !m_file.ReadAt(m_file.GetSize() - c_nPosSize, m_nPosTable))
        return false;
    return m_nPosTable >= m_nPosPnts + c_nPosSize;
}

bool CLazGuard::CheckTable(std::uint32_t nChunkSize)
{
    std::uint32_t nVersion = 0;
    if (nChunkSize == 0 || !m_file.ReadAt(m_nPosTable, nVersion) || nVersion != 0 ||
        !m_file.ReadAt(m_nPosTable + 4, m_nNumChunks))
        return false;
    if (nChunkSize != c_nVariableChunks)
        m_nMaxNumPnts = static_cast<std::int64_t>(m_nNumChunks) * nChunkSize;
    // Every chunk begins with a point that is not compressed.
    return m_nNumChunks <= (m_nPosTable - m_nPosPnts - c_nPosSize) / m_nPntSize;
}

/// The chunks follow each other up to the table: a point as it is, the number of points, the size of each
/// layer, the layers.
bool CLazGuard::CheckLayers()
{
    std::int64_t nPos = m_nPosPnts + c_nPosSize;
    for (std::uint32_t i = 0; i < m_nNumChunks; ++i)
    {
        nPos += m_nPntSize + static_cast<std::int64_t>(sizeof(std::uint32_t));
        std::int64_t nEnd = nPos + 4 * static_cast<std::int64_t>(m_nNumLayers);
        for (std::uint32_t k = 0; k < m_nNumLayers; ++k, nPos += 4)
        {
            std::uint32_t nSize = 0;
            if (!m_file.ReadAt(nPos, nSize))
                return false;
            nEnd += nSize;
        }
        if (nEnd > m_nPosTable)
            return false;
        nPos = nEnd;
    }
    return true;
}
