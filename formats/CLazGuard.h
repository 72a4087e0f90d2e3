#ifndef FORMATS_CLAZGUARD_H
#define FORMATS_CLAZGUARD_H

#include <formats/CFileCause.h>
#include <formats/CFilePatch.h>
#include <formats/CLazTable.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// Looks at how the points of a LAZ file are compressed and where their chunks lie, see CLasGuard.
///
/// A file whose table of chunks is missing or points nowhere is read from the first chunk on: chunks in
/// layers say where they end, and are looked at beforehand as far as they are in order; others end where
/// LASzip has come to, and CLazFile looks at their beginnings. Only chunks of variable size cannot be read
/// without it.
class CLazGuard
{
public:
    /// @param file  kept, not owned.
    explicit CLazGuard(CSizedFile& file) : m_file(file) {}

    /// Call it once.
    ///
    /// @param nPos      where the data of the record stand that says how the points are compressed.
    /// @param nSize     how many bytes they are; they lie in the file.
    /// @param nPosPnts  where the compressed points begin.
    /// @param nPntSize  bytes of a point that is not compressed; 0: as many as its parts have.
    ///
    /// @return false when the points must not be handed to the reading library.
    bool Check(std::int64_t nPos, std::uint16_t nSize, std::int64_t nPosPnts, std::uint16_t nPntSize);

    /// Why `Check` has returned false, see CLasGuard.
    const CFileCause& GetCause() const noexcept { return m_cause; }

    /// Where the first point stands, which is not compressed. REQUIRES: Check has returned true.
    std::int64_t GetPosFirst() const noexcept { return m_nPosFirst; }

    /// The most points that can be read; of one stream, and of chunks without a table that are not in layers,
    /// more than any file holds.
    std::int64_t GetMaxNumPnts() const noexcept { return m_nMaxNumPnts; }

    /// @return whether the file has a table of chunks, or needs none: only then can LASzip do
    ///         without the patch and without CLazFile.
    bool HasTable() const noexcept { return m_bHasTable; }

    /// Where the chunks begin, as the table says, and the last one ends; empty: not known.
    const std::vector<std::int64_t>& GetStarts() const noexcept { return m_vecStarts; }

    /// Points of every chunk but the last; 0: chunks of variable size, or none.
    std::uint32_t GetChunkSize() const noexcept { return m_bVariable ? 0 : m_nChunkSize; }

    bool IsOneStream() const noexcept { return !m_bVariable && m_nChunkSize == 0; }

    /// For CLazFile: with it LASzip does not look at the table, of which a damaged one, or a lack of memory
    /// while it is read, is its death. It needs that of chunks of variable size.
    std::vector<CFilePatch> GetPatches() const;
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
    bool ReadTable();
    bool CheckChunks();
    void TakeChunksWithoutTable();
    bool ReadLayers(std::int64_t& nPos);

    bool Refuse(enumFileCause eCause, std::string sText)
    {
        m_cause = {eCause, std::move(sText)};
        return false;
    }

    CSizedFile& m_file;
    CFileCause m_cause;
    std::int64_t m_nPosPnts = 0;
    std::uint16_t m_nPntSize = 0;
    std::int64_t m_nPosFirst = 0;
    std::uint16_t m_nCompressor = 0;
    std::uint32_t m_nChunkSize = 0; // in points
    bool m_bLayered = false;        // every part of a point has streams of its own
    bool m_bVariable = false;       // the chunks differ in their number of points
    bool m_bHasTable = true;
    std::vector<std::uint32_t> m_vecNumbers; // of a chunk in layers: points, then bytes of each layer
    std::int64_t m_nPosTable = 0;            // where the chunks end and their table begins
    std::vector<CLazChunk> m_vecChunks;      // of the table
    std::vector<std::int64_t> m_vecStarts;
    std::int64_t m_nMaxNumPnts = std::numeric_limits<std::int64_t>::max();
    std::int64_t m_nLeastNumPnts = -1;
    std::int64_t m_nPosEnd = 0;
};

#endif
