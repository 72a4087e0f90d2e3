#include <io/las/CLazGuard.h>

#include <algorithm>
#include <iterator>

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

/// The library takes sizes of chunks for signed.
constexpr std::int64_t c_nMaxChunkSize = std::numeric_limits<std::int32_t>::max();

/// A part of a point, of one type and version.
struct CLazItem
{
    std::uint16_t m_nType;
    std::uint16_t m_nSize;
    std::uint16_t m_nVersion;
};

/// What is known of a type of items. The types from 10 on are in layers.
struct CLazItemType
{
    std::uint16_t m_nSize;       ///< 0: any
    std::uint16_t m_nMaxVersion; ///< 0: no such type
};

constexpr CLazItemType c_aItemTypes[] = {{0, 2}, {0, 0},  {0, 0},  {0, 0}, {0, 0}, {0, 0},  {20, 2}, {8, 2},
                                         {6, 2}, {29, 1}, {30, 4}, {6, 4}, {8, 4}, {29, 4}, {0, 4}};

/// @return whether the item is one that the reading library knows: of another it lets go what it never had.
bool IsKnown(const CLazItem& item, bool bLayered)
{
    if (item.m_nType >= std::size(c_aItemTypes) || bLayered != (item.m_nType >= 10))
        return false;
    const CLazItemType& type = c_aItemTypes[item.m_nType];
    return item.m_nSize > 0 && (type.m_nSize == 0 || type.m_nSize == item.m_nSize) &&
           item.m_nVersion >= (bLayered ? 2 : 1) && item.m_nVersion <= type.m_nMaxVersion;
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
    std::uint16_t nCoder = 0; // there is one only
    std::uint32_t nChunkSize = 0;
    std::uint16_t nNumItems = 0;
    if (nSize < c_nSize || !m_file.ReadAt(nPos, nCompressor) || !m_file.ReadAt(nPos + 2, nCoder) ||
        !m_file.ReadAt(nPos + 12, nChunkSize) || !m_file.ReadAt(nPos + 32, nNumItems) ||
        nSize != c_nSize + static_cast<std::int64_t>(sizeof(CLazItem)) * nNumItems)
        return false;
    if (nCompressor < c_nOneStream || nCompressor > c_nLayered || nCoder != 0 || nNumItems == 0)
        return false;
    m_bLayered = nCompressor == c_nLayered;
    if (!CheckItems(nPos + c_nSize, nNumItems))
        return false;
    if (nCompressor < c_nChunked)
    {
        // Behind so many the library takes another chunk to begin.
        m_nMaxNumPnts = std::numeric_limits<std::uint32_t>::max();
        return CLazCode::BeginsAt(m_file, m_nPosPnts + m_nPntSize);
    }
    return FindTable() && CheckTable(nChunkSize) && CheckChunks();
}

/// The parts of a point: together as many bytes as a point, and of the kind that the compressor takes.
bool CLazGuard::CheckItems(std::int64_t nPos, std::uint16_t nNumItems)
{
    std::uint32_t nSumSizes = 0;
    std::size_t nNumLayers = 0;
    for (std::uint16_t i = 0; i < nNumItems; ++i, nPos += sizeof(CLazItem))
    {
        CLazItem item{};
        if (!m_file.ReadAt(nPos, item) || !IsKnown(item, m_bLayered))
            return false;
        nSumSizes += item.m_nSize;
        if (m_bLayered)
            nNumLayers += CountLayers(item);
    }
    m_vecNumbers.resize(1 + nNumLayers);
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
    m_bVariable = nChunkSize == c_nVariableChunks;
    if (!m_bVariable)
        m_nMaxNumPnts = static_cast<std::int64_t>(std::min<std::uint64_t>(
            std::uint64_t{m_nNumChunks} * nChunkSize, std::numeric_limits<std::int64_t>::max()));
    return true;
}

/// The chunks follow each other up to the table, as the table says, and each begins with a point that is not
/// compressed. The library looks for a chunk where it
/// has come to, and compares that with the table as far as it understands it.
bool CLazGuard::CheckChunks()
{
    CLazTable table(m_file, m_nPosTable + c_nPosSize, m_bVariable);
    std::int64_t nPos = m_nPosPnts + c_nPosSize;
    std::int64_t nSumPnts = 0;
    for (std::uint32_t i = 0; i < m_nNumChunks; ++i)
    {
        CLazChunk chunk{};
        if (!table.ReadEntry(chunk) || chunk.m_nNumBytes < m_nPntSize ||
            chunk.m_nNumBytes > std::min(m_nPosTable - nPos, c_nMaxChunkSize))
            return false;
        if (m_bLayered ? !CheckLayers(nPos, chunk) : !CLazCode::BeginsAt(m_file, nPos + m_nPntSize))
            return false;
        nSumPnts += chunk.m_nNumPnts;
        nPos += chunk.m_nNumBytes;
    }
    if (m_bVariable || m_bLayered)
        m_nMaxNumPnts = std::min(m_nMaxNumPnts, nSumPnts);
    return true;
}

/// A chunk in layers: a point as it is, the number of points, the size of each layer, the layers. The library
/// allocates what these sizes say.
///
/// @param chunk  where the table does not have its number of points, it gets it.
bool CLazGuard::CheckLayers(std::int64_t nPos, CLazChunk& chunk)
{
    const std::int64_t nEnd = nPos + chunk.m_nNumBytes;
    nPos += m_nPntSize;
    if (!m_file.ReadAt(nPos, m_vecNumbers.data(), m_vecNumbers.size()))
        return false;
    nPos += static_cast<std::int64_t>(m_vecNumbers.size() * sizeof m_vecNumbers.front());
    for (auto itSize = m_vecNumbers.begin() + 1; itSize != m_vecNumbers.end(); nPos += *itSize++)
        if (*itSize > 0 && !CLazCode::BeginsAt(m_file, nPos))
            return false;
    if (!m_bVariable)
        chunk.m_nNumPnts = m_vecNumbers.front();
    return nPos == nEnd && chunk.m_nNumPnts == m_vecNumbers.front();
}
