#include <formats/CLazGuard.h>

#include <formats/LasLayout.h>

#include <algorithm>
#include <array>
#include <bitset>

namespace
{

/// The table of chunks says how many points each holds.
constexpr std::uint32_t c_nVariableChunks = std::numeric_limits<std::uint32_t>::max();

/// Bytes of the table of chunks before its entries.
constexpr std::int64_t c_nTableHeadSize = 8;

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

/// @return whether the item is one that the reading library knows. For any other, the library frees
///         memory that it has never allocated.
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

bool CLazGuard::Check(std::int64_t nPos, std::uint16_t nSize, std::int64_t nPosPnts, std::uint16_t nPntSize)
{
    m_nPosPnts = nPosPnts;
    m_nPntSize = nPntSize;
    if (!CheckCompressor(nPos, nSize))
        return false;
    if (m_nCompressor < LasLayout::c_nChunked)
    {
        // Behind so many the library takes another chunk to begin.
        m_nMaxNumPnts = std::numeric_limits<std::uint32_t>::max();
        m_nPosFirst = m_nPosPnts;
        m_nChunkSize = 0;
        return CLazCode::BeginsAt(m_file, m_nPosPnts + m_nPntSize) || Refuse(FileCause_LazPnts, c_sBadPnts);
    }
    m_nPosFirst = m_nPosPnts + LasLayout::c_nTablePosSize;
    m_bVariable = m_nChunkSize == c_nVariableChunks;
    m_bHasTable = FindTable() && ReadTable();
    if (m_bHasTable)
        return CheckChunks();
    if (m_bVariable)
        return Refuse(
            FileCause_LazNoTable,
            "it is cut off, damaged or was never finished: the table of its compressed points, without "
            "which they cannot be read, is not there");
    TakeChunksWithoutTable();
    if (m_bLayered)
        m_nLeastNumPnts = m_nMaxNumPnts;
    return true;
}

std::vector<CFilePatch> CLazGuard::GetPatches() const
{
    // The position that a table gets while the file is still being written.
    if (m_nCompressor >= LasLayout::c_nChunked && !m_bVariable)
        return {CFilePatch(m_nPosPnts, m_nPosPnts)};
    return {};
}

/// Checks what the record says; of what lies elsewhere nothing yet.
bool CLazGuard::CheckCompressor(std::int64_t nPos, std::uint16_t nSize)
{
    using namespace LasLayout;
    constexpr const char* c_sBadRecord = "what it says of its compression is damaged";
    std::array<unsigned char, c_nCompressorSize> acBytes{};
    if (nSize < acBytes.size() || !m_file.ReadAt(nPos, acBytes))
        return Refuse(FileCause_LazRecord, c_sBadRecord);
    m_nCompressor = Get(acBytes.data(), c_nCompressor);
    m_nChunkSize = Get(acBytes.data(), c_nChunkSize);
    m_bLayered = m_nCompressor == c_nLayered;
    if (m_nCompressor < c_nOneStream || m_nCompressor > c_nLayered)
        return Refuse(FileCause_LazCompressor,
                      "it is compressed in an unknown way (" + std::to_string(m_nCompressor) + ")");
    const std::uint16_t nNumItems = Get(acBytes.data(), c_nNumItems);
    if (m_nCompressor >= c_nChunked && m_nChunkSize == 0)
        return Refuse(FileCause_LazRecord, c_sBadRecord);
    if (Get(acBytes.data(), c_nCoder) != 0 || nNumItems == 0 ||
        nSize != c_nCompressorSize + sizeof(CLazItem) * nNumItems)
        return Refuse(FileCause_LazRecord, c_sBadRecord);
    return CheckItems(nPos + static_cast<std::int64_t>(c_nCompressorSize), nNumItems) ||
           Refuse(FileCause_LazItems,
                  "it is compressed in an unknown way, or what it says of its points is damaged");
}

/// The parts of a point: together as many bytes as a point, of the kind that the compressor takes, and each
/// once: of two parts of extra bytes, the library frees the place of the first and then writes there.
bool CLazGuard::CheckItems(std::int64_t nPos, std::uint16_t nNumItems)
{
    std::uint32_t nSumSizes = 0;
    std::size_t nNumLayers = 0;
    std::bitset<LasLayout::c_aItemTypes.size()> seen;
    for (std::uint16_t i = 0; i < nNumItems; ++i, nPos += sizeof(CLazItem))
    {
        CLazItem item{};
        if (!m_file.ReadAt(nPos, item) || !IsKnown(item, m_bLayered) || seen[item.nType])
            return false;
        seen.set(item.nType);
        nSumSizes += item.nSize;
        if (m_bLayered)
            nNumLayers += CountLayers(item);
    }
    m_vecNumbers.resize(1 + nNumLayers);
    if (m_nPntSize == 0)
        m_nPntSize = static_cast<std::uint16_t>(nSumSizes);
    return nSumSizes == m_nPntSize;
}

/// @return whether the position of the table lies in the file.
bool CLazGuard::FindTable()
{
    constexpr std::int64_t c_nSize = LasLayout::c_nTablePosSize;
    if (!m_file.ReadAt(m_nPosPnts, m_nPosTable))
        return false;
    // Written to where nothing can be filled in afterwards: the position stands at the end of the file.
    if (m_nPosTable == -1 && !m_file.ReadAt(m_file.GetSize() - c_nSize, m_nPosTable))
        return false;
    return m_nPosTable >= m_nPosPnts + c_nSize && m_nPosTable <= m_file.GetSize() - c_nTableHeadSize;
}

/// @return whether what stands at the position of the table is one: its version, and chunks that have room
/// before it.
bool CLazGuard::ReadTable()
{
    std::array<std::uint32_t, 2> anHead{}; // version, number of chunks
    if (!m_file.ReadAt(m_nPosTable, anHead) || anHead[0] != 0)
        return false;
    CLazTable table(m_file, m_nPosTable + c_nTableHeadSize, m_bVariable);
    std::int64_t nPos = m_nPosFirst;
    for (std::uint32_t i = 0; i < anHead[1]; ++i)
    {
        CLazChunk chunk{};
        if (!table.ReadEntry(chunk) || chunk.nNumBytes < m_nPntSize ||
            chunk.nNumBytes > std::min(m_nPosTable - nPos, c_nMaxChunkSize))
            return false;
        m_vecChunks.push_back(chunk);
        nPos += chunk.nNumBytes;
    }
    return true;
}

/// The chunks follow each other as the table says, and each begins with a point that is not compressed. The
/// library looks for a chunk where it has come to.
bool CLazGuard::CheckChunks()
{
    std::int64_t nSumPnts = 0;
    m_vecStarts = {m_nPosFirst};
    for (const CLazChunk& chunk : m_vecChunks)
    {
        std::int64_t nPos = m_vecStarts.back();
        m_vecStarts.push_back(nPos + chunk.nNumBytes);
        if (m_bLayered ? !ReadLayers(nPos) || nPos != m_vecStarts.back()
                       : !CLazCode::BeginsAt(m_file, nPos + m_nPntSize))
            return Refuse(FileCause_LazPnts, c_sBadPnts);
        const std::uint32_t nNumPnts = m_bLayered ? m_vecNumbers.front() : chunk.nNumPnts;
        if (m_bVariable && nNumPnts != chunk.nNumPnts)
            return Refuse(FileCause_LazPnts, c_sBadPnts);
        nSumPnts += nNumPnts;
    }
    if (!m_bVariable)
        m_nMaxNumPnts = static_cast<std::int64_t>(std::min<std::uint64_t>(
            std::uint64_t{m_vecChunks.size()} * m_nChunkSize, std::numeric_limits<std::int64_t>::max()));
    if (m_bVariable || m_bLayered)
    {
        m_nMaxNumPnts = std::min(m_nMaxNumPnts, nSumPnts);
        m_nLeastNumPnts = m_nMaxNumPnts;
    }
    else
    {
        m_nLeastNumPnts = m_vecChunks.empty() ? 0 : m_nMaxNumPnts - m_nChunkSize + 1;
        m_nPosEnd = m_vecChunks.empty() ? 0 : m_vecStarts.back();
    }
    return true;
}

/// Takes the chunks in layers as far as they are in order: only the last one has fewer points than the
/// others.
void CLazGuard::TakeChunksWithoutTable()
{
    if (!m_bLayered)
    {
        if (m_nPosFirst > m_file.GetSize())
            m_nMaxNumPnts = 0;
        return;
    }
    m_nMaxNumPnts = 0;
    std::int64_t nPos = m_nPosFirst;
    for (bool bLast = false; !bLast && ReadLayers(nPos);)
    {
        const std::uint32_t nNumPnts = m_vecNumbers.front();
        if (nNumPnts > m_nChunkSize)
            return;
        bLast = nNumPnts < m_nChunkSize;
        m_nMaxNumPnts += nNumPnts;
    }
}

/// Reads the numbers of a chunk in layers: a point as it is, the number of points, the size of each layer,
/// the layers. The library allocates what these sizes say.
///
/// @param nPos  where the chunk begins; then, where it ends.
/// @return whether it lies in the file, and its codes are codes.
bool CLazGuard::ReadLayers(std::int64_t& nPos)
{
    nPos += m_nPntSize;
    if (!m_file.ReadAt(nPos, m_vecNumbers.data(), m_vecNumbers.size()))
        return false;
    nPos += static_cast<std::int64_t>(m_vecNumbers.size() * sizeof m_vecNumbers.front());
    for (auto itSize = m_vecNumbers.begin() + 1; itSize != m_vecNumbers.end(); nPos += *itSize++)
        if (*itSize > 0 && !CLazCode::BeginsAt(m_file, nPos))
            return false;
    return nPos <= m_file.GetSize();
}
