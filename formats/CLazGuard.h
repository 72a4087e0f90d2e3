#ifndef FORMATS_CLAZGUARD_H
#define FORMATS_CLAZGUARD_H

#include <formats/CLazTable.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
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
    ///
    /// @return false when the points must not be handed to the reading library.
    bool Check(std::int64_t nPos, std::uint16_t nSize);

    /// Why `Check` has returned false, see CLasGuard.
    const std::string& GetCause() const noexcept { return m_sCause; }

    /// Where the first point stands, which is not compressed. REQUIRES: Check has returned true.
    std::int64_t GetPosFirst() const noexcept { return m_nPosFirst; }

    /// The most points that can be read; of one stream, more than any holds.
    std::int64_t GetMaxNumPnts() const noexcept { return m_nMaxNumPnts; }

    /// Points that the chunks hold at least. Only chunks of a fixed size, but for the last of them all full,
    /// do not say how many the last one holds: then it counts as one. -1: of one stream, which does not tell.
    std::int64_t GetLeastNumPnts() const noexcept { return m_nLeastNumPnts; }

    /// Where the last such chunk ends, 0 where the number of points is known: behind the last point the
    /// reading library has come to this place.
    std::int64_t GetPosEnd() const noexcept { return m_nPosEnd; }

private:
    bool CheckCompressor(std::int64_t nPos, std::uint16_t nSize);
    bool CheckItems(std::int64_t nPos, std::uint16_t nNumItems);
    bool FindTable();
    bool CheckTable();
    bool CheckChunks();
    bool CheckLayers(std::int64_t nPos, CLazChunk& chunk);

    bool Refuse(std::string sCause)
    {
        m_sCause = std::move(sCause);
        return false;
    }

    CSizedFile& m_file;
    std::string m_sCause;
    std::int64_t m_nPosPnts;
    std::uint16_t m_nPntSize;
    std::int64_t m_nPosFirst = 0;
    std::uint16_t m_nCompressor = 0;
    std::uint32_t m_nChunkSize = 0;          // in points
    bool m_bLayered = false;                 // every part of a point has streams of its own
    bool m_bVariable = false;                // the chunks differ in their number of points
    std::vector<std::uint32_t> m_vecNumbers; // of a chunk in layers: points, then bytes of each layer
    std::int64_t m_nPosTable = 0;            // where the chunks end and their table begins
    std::uint32_t m_nNumChunks = 0;
    std::int64_t m_nMaxNumPnts = std::numeric_limits<std::int64_t>::max();
    std::int64_t m_nLeastNumPnts = -1;
    std::int64_t m_nPosEnd = 0;
};

#endif
