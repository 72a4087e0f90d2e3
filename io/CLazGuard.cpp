#include <io/CLazGuard.h>

#include <io/CLazTable.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <vector>

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
    // Every chunk begins with a point that is not compressed.
    if (m_nNumChunks > (m_nPosTable - m_nPosPnts - c_nPosSize) / m_nPntSize)
        return false;
    m_bVariable = nChunkSize == c_nVariableChunks;
    if (!m_bVariable)
        m_nMaxNumPnts = static_cast<std::int64_t>(std::min<std::uint64_t>(
            std::uint64_t{m_nNumChunks} * nChunkSize, std::numeric_limits<std::int64_t>::max()));
    return true;
}

/// The chunks follow each other up to the table: a point as it is, the number of points, the size of each
/// layer, the layers. The library allocates what these sizes say.
bool CLazGuard::CheckLayers()
{
    CLazTable table(m_file, m_nPosTable + c_nPosSize);
    std::vector<std::uint32_t> vecNumbers(1 + m_nNumLayers); // of points, then of bytes of each layer
    std::int64_t nPos = m_nPosPnts + c_nPosSize;
    std::int64_t nSumPnts = 0;
    for (std::uint32_t i = 0; i < m_nNumChunks; ++i)
    {
        const std::int64_t nStart = nPos;
        if (!m_file.ReadAt(nPos + m_nPntSize, vecNumbers.data(), vecNumbers.size()))
            return false;
        nPos += m_nPntSize + static_cast<std::int64_t>(vecNumbers.size() * sizeof(std::uint32_t));
        nPos = std::accumulate(vecNumbers.begin() + 1, vecNumbers.end(), nPos);
        if (nPos > m_nPosTable)
            return false;
        nSumPnts += vecNumbers.front();
        // Led by the table into a chunk too early, the library would take the table for the last one.
        std::uint32_t nNumPnts = 0;
        std::uint32_t nNumBytes = 0;
        if (m_bVariable && (!table.ReadEntry(nNumPnts, nNumBytes) || nNumPnts != vecNumbers.front() ||
                            nNumBytes != static_cast<std::uint64_t>(nPos - nStart)))
            return false;
    }
    m_nMaxNumPnts = std::min(m_nMaxNumPnts, nSumPnts);
    return true;
}
