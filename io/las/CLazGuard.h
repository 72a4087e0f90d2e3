#ifndef IO_LAS_CLAZGUARD_H
#define IO_LAS_CLAZGUARD_H

#include <io/las/CLazTable.h>

#include <cstdint>
#include <limits>
#include <vector>

/// Looks at how the points of a LAZ file are compressed and where their chunks lie, see CLasGuard.
class CLazGuard
{
public:
    /// @param file      kept, not owned.
    /// @param nPosPnts  where the compressed points begin.
    /// @param nPntSize  bytes of a point that is not compressed, above 0.
    CLazGuard(CSizedFile& file, std::int64_t nPosPnts, std::uint16_t nPntSize)
        : m_file(file), m_nPosPnts(nPosPnts), m_nPntSize(nPntSize)
    {
    }

    /// @param nPos   where the data of the record stand that says how the points are compressed.
    /// @param nSize  how many bytes they are; they lie in the file.
    bool Check(std::int64_t nPos, std::uint16_t nSize);

    /// The most points that can be read; of one stream, more than any holds.
    std::int64_t GetMaxNumPnts() const noexcept { return m_nMaxNumPnts; }

private:
    bool CheckItems(std::int64_t nPos, std::uint16_t nNumItems);
    bool FindTable();
    bool CheckTable(std::uint32_t nChunkSize);
    bool CheckChunks();
    bool CheckLayers(std::int64_t nPos, CLazChunk& chunk);

    CSizedFile& m_file;
    std::int64_t m_nPosPnts;
    std::uint16_t m_nPntSize;
    bool m_bLayered = false;
    bool m_bVariable = false;                // the chunks differ in their number of points
    std::vector<std::uint32_t> m_vecNumbers; // of a chunk in layers: points, then bytes of each layer
    std::int64_t m_nPosTable = 0;            // where the chunks end and their table begins
    std::uint32_t m_nNumChunks = 0;
    std::int64_t m_nMaxNumPnts = std::numeric_limits<std::int64_t>::max();
};

#endif
