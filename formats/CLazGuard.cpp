#include <formats/CLazGuard.h>

#include <formats/LasLayout.h>

#include <algorithm>
#include <array>

namespace
{

/// The table of chunks says how many points each holds.
constexpr std::uint32_t c_nVariableChunks = std::numeric_limits<std::uint32_t>::max();

/// Bytes of the table of chunks before its entries.
constexpr std::int64_t c_nTableHeadSize = 8;

constexpr const char* c_sBadTable = "it is damaged: the table of its compressed points does not fit them";
constexpr const char* c_sBadPnts = "its compressed points are damaged";

/// The library takes sizes of chunks for signed.
constexpr std::int64_t c_nMaxChunkSize = std::numeric_limits<std::int32_t>::max();

/// A part of a point, of one type and version.
struct CLazItem
{
    std::uint16_t nType;
    std::uint16_t nSize;
    std::uint16_t nVersion;
};

/// @return whether the item is one that the reading library knows. For any other, the library frees memory
/// that
///         it has never allocated.
bool IsKnown(const CLazItem& item, bool bLayered)
{
    if (item.nType >= LasLayout::c_aItemTypes.size() ||
        bLayered != (item.nType >= LasLayout::c_nFirstLayeredItem))
        return false;
    const CLazItemType& type = LasLayout::c_aItemTypes[item.nType];
    return item.nSize > 0 && (type.nSize == 0 || type.nSize == item.nSize) &&
           item.nVersion >= (bLayered ? 2 : 1) && item.nVersion <= type.nMaxVersion;
}

/// @return how many layers a chunk has of an item that is in layers.
std::uint32_t CountLayers(const CLazItem& item)
{
    const std::uint16_t nNumLayers = LasLayout::c_aItemTypes[item.nType].nNumLayers;
    return nNumLayers > 0 ? nNumLayers : item.nSize;
}

} // namespace

bool CLazGuard::Check(std::int64_t nPos, std::uint16_t nSize)
{
    if (!CheckCompressor(nPos, nSize))
        return false;
    if (m_nCompressor < LasLayout::c_nChunked)
    {
        // Behind so many the library takes another chunk to begin.
        m_nMaxNumPnts = std::numeric_limits<std::uint32_t>::max();
        m_nPosFirst = m_nPosPnts;
        return CLazCode::BeginsAt(m_file, m_nPosPnts + m_nPntSize) || Refuse(c_sBadPnts);
    }
    m_nPosFirst = m_nPosPnts + LasLayout::c_nTablePosSize;
    return FindTable() && CheckTable() && CheckChunks();
}

/// Checks what the record says; of what lies elsewhere nothing yet.
bool CLazGuard::CheckCompressor(std::int64_t nPos, std::uint16_t nSize)
{
    using namespace LasLayout;
    constexpr const char* c_sBadRecord = "what it says of its compression is damaged";
    std::array<unsigned char, c_nCompressorSize> acBytes{};
    if (nSize < acBytes.size() || !m_file.ReadAt(nPos, acBytes))
        return Refuse(c_sBadRecord);
    m_nCompressor = Get(acBytes.data(), c_nCompressor);
    m_nChunkSize = Get(acBytes.data(), c_nChunkSize);
    m_bLayered = m_nCompressor == c_nLayered;
    if (m_nCompressor < c_nOneStream || m_nCompressor > c_nLayered)
        return Refuse("it is compressed in an unknown way (" + std::to_string(m_nCompressor) + ")");
    const std::uint16_t nNumItems = Get(acBytes.data(), c_nNumItems);
    if (Get(acBytes.data(), c_nCoder) != 0 || nNumItems == 0 ||
        nSize != c_nCompressorSize + sizeof(CLazItem) * nNumItems)
        return Refuse(c_sBadRecord);
    return CheckItems(nPos + static_cast<std::int64_t>(c_nCompressorSize), nNumItems) ||
           Refuse("it is compressed in an unknown way, or what it says of its points is damaged");
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
        nSumSizes += item.nSize;
        if (m_bLayered)
            nNumLayers += CountLayers(item);
    }
    m_vecNumbers.resize(1 + nNumLayers);
    return nSumSizes == m_nPntSize;
}

bool CLazGuard::FindTable()
{
    constexpr const char* c_sNoTable =
        "it is cut off or was never finished: the table of its compressed points is not in the file";
    constexpr std::int64_t c_nSize = LasLayout::c_nTablePosSize;
    if (!m_file.ReadAt(m_nPosPnts, m_nPosTable))
        return Refuse(c_sNoTable);
    // Written to where nothing can be filled in afterwards: the position stands at the end of the file.
    if (m_nPosTable == -1 && !m_file.ReadAt(m_file.GetSize() - c_nSize, m_nPosTable))
        return Refuse(c_sNoTable);
    const bool bInFile =
        m_nPosTable >= m_nPosPnts + c_nSize && m_nPosTable <= m_file.GetSize() - c_nTableHeadSize;
    return bInFile || Refuse(c_sNoTable);
}

/// Checks what stands before the entries of the table: its version and the number of chunks.
bool CLazGuard::CheckTable()
{
    std::array<std::uint32_t, 2> anHead{};
    if (m_nChunkSize == 0 || !m_file.ReadAt(m_nPosTable, anHead) || anHead[0] != 0)
        return Refuse(c_sBadTable);
    m_nNumChunks = anHead[1];
    m_bVariable = m_nChunkSize == c_nVariableChunks;
    if (!m_bVariable)
        m_nMaxNumPnts = static_cast<std::int64_t>(std::min<std::uint64_t>(
            std::uint64_t{m_nNumChunks} * m_nChunkSize, std::numeric_limits<std::int64_t>::max()));
    return true;
}

/// The chunks follow each other up to the table, as the table says, and each begins with a point that is not
/// compressed. The library looks for a chunk where it has come to, and compares that with the table as far as
/// it understands it.
bool CLazGuard::CheckChunks()
{
    CLazTable table(m_file, m_nPosTable + c_nTableHeadSize, m_bVariable);
    std::int64_t nPos = m_nPosFirst;
    std::int64_t nSumPnts = 0;
    for (std::uint32_t i = 0; i < m_nNumChunks; ++i)
    {
        CLazChunk chunk{};
        if (!table.ReadEntry(chunk) || chunk.nNumBytes < m_nPntSize ||
            chunk.nNumBytes > std::min(m_nPosTable - nPos, c_nMaxChunkSize))
            return Refuse(c_sBadTable);
        if (m_bLayered ? !CheckLayers(nPos, chunk) : !CLazCode::BeginsAt(m_file, nPos + m_nPntSize))
            return Refuse(c_sBadPnts);
        nSumPnts += chunk.nNumPnts;
        nPos += chunk.nNumBytes;
    }
    if (m_bVariable || m_bLayered)
    {
        m_nMaxNumPnts = std::min(m_nMaxNumPnts, nSumPnts);
        m_nLeastNumPnts = m_nMaxNumPnts;
    }
    else
    {
        m_nLeastNumPnts = m_nNumChunks > 0 ? m_nMaxNumPnts - m_nChunkSize + 1 : 0;
        m_nPosEnd = m_nNumChunks > 0 ? nPos : 0;
    }
    return true;
}

/// A chunk in layers: a point as it is, the number of points, the size of each layer, the layers. The library
/// allocates what these sizes say.
///
/// @param chunk  where the table does not have its number of points, it gets it.
bool CLazGuard::CheckLayers(std::int64_t nPos, CLazChunk& chunk)
{
    const std::int64_t nEnd = nPos + chunk.nNumBytes;
    nPos += m_nPntSize;
    if (!m_file.ReadAt(nPos, m_vecNumbers.data(), m_vecNumbers.size()))
        return false;
    nPos += static_cast<std::int64_t>(m_vecNumbers.size() * sizeof m_vecNumbers.front());
    for (auto itSize = m_vecNumbers.begin() + 1; itSize != m_vecNumbers.end(); nPos += *itSize++)
        if (*itSize > 0 && !CLazCode::BeginsAt(m_file, nPos))
            return false;
    if (!m_bVariable)
        chunk.nNumPnts = m_vecNumbers.front();
    return nPos == nEnd && chunk.nNumPnts == m_vecNumbers.front();
}
