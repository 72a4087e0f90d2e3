#ifndef FORMATS_CLASGUARD_H
#define FORMATS_CLASGUARD_H

#include <formats/CFileCause.h>
#include <formats/CFilePatch.h>
#include <formats/CLasHeader.h>
#include <formats/CLasRecords.h>
#include <formats/CLazGuard.h>
#include <formats/CSizedFile.h>
#include <formats/FindLasCoordSystem.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>

/// Looks at a LAS or LAZ file before the reading library does, which takes positions, counts and sizes in
/// the file as they stand. Call `Check`, then ask.
///
/// It judges neither the points nor whether the header makes sense, only whether what the file points at
/// would lead the library outside its memory. What it lets through is what the library takes.
class CLasGuard
{
public:
    /// @param pPath  not null.
    explicit CLasGuard(const char* pPath);

    CLasGuard(const CLasGuard&) = delete;
    CLasGuard& operator=(const CLasGuard&) = delete;

    /// @return false when the file cannot be opened, is not a LAS or LAZ file, or must not be handed to the
    ///         reading library.
    bool Check();

    /// Why `Check` has returned false; empty: it has not.
    const CFileCause& GetCause() const noexcept { return m_cause; }

    /// What the file says of itself, also of one that is not let through.
    const CLasHeader& GetHeader() const noexcept { return m_header; }

    /// The most points that the file can hold; the largest int64 where its size does not tell.
    /// REQUIRES: Check has returned true.
    std::int64_t GetMaxNumPnts() const noexcept { return m_nMaxNumPnts; }

    /// Points that are there at least, whatever the header announces; -1: nothing but reading them tells.
    /// REQUIRES: Check has returned true.
    std::int64_t GetLeastNumPnts() const noexcept { return m_nLeastNumPnts; }

    /// Where compressed points end, of which only that is known, see CLazGuard; 0: their number is known.
    std::int64_t GetPosEnd() const noexcept { return m_nPosEnd; }

    /// Are the points compressed as one stream, which does not tell how many they are?
    /// REQUIRES: Check has returned true.
    bool IsOneStream() const noexcept { return m_bHasCompressor && m_laz.IsOneStream(); }

    /// The records before the points, from the first on. REQUIRES: Check has returned true.
    CLasRecords GetRecords() { return {m_file, m_header}; }

    /// Of a compressed file: how its points are compressed. REQUIRES: Check has returned true.
    const CLazGuard& GetLaz() const noexcept { return m_laz; }

    /// @return what LASzip is to get in place of bytes of the file, so that it takes what does no
    ///         harm without a word and without allocating what the file does not hold. REQUIRES: Check has
    ///         returned true.
    std::vector<CFilePatch> GetPatches() const;

    /// @return whether a reading library that opens the file itself copes with it: it says a word
    ///         about what it finds, and reads it. REQUIRES: Check has returned true.
    bool IsSafeAsItStands() const noexcept
    {
        return m_header.nNumRecords - m_nNumRecords <= c_nMaxMissingRecords && m_laz.HasTable();
    }

    /// @return whether a record before or behind the points tells the coordinate system.
    /// REQUIRES: Check has returned true.
    bool HasCoordSystem() { return HasLasCoordSystem(m_file, m_header); }

    /// @return the coordinate system that the records state; none where they state none that can be read.
    /// REQUIRES: Check has returned true.
    CCoordSystem ReadCoordSystem() { return FindLasCoordSystem(m_file, m_header); }

    /// The file for LASzip, see CLazFile; null when it could not be opened. Not owned.
    std::FILE* GetStream() noexcept { return m_file.GetStream(); }

    /// @return x, y and z of the first point; where the file holds none, numbers that mean nothing.
    /// REQUIRES: Check has returned true.
    std::array<double, 3> ReadFirstPnt();

private:
    /// Records for each of which a reading library may well allocate a place in vain.
    static constexpr std::uint32_t c_nMaxMissingRecords = 65536;

    bool CheckRecords();
    bool CheckCompressor(const CLasRecord& record);

    bool Refuse(enumFileCause eCause, std::string sText)
    {
        m_cause = {eCause, std::move(sText)};
        return false;
    }

    CSizedFile m_file;
    CFileCause m_cause;
    CLasHeader m_header;
    CLazGuard m_laz;
    std::uint32_t m_nNumRecords = 0; // that are there, of those announced
    bool m_bHasCompressor = false;
    std::int64_t m_nPosFirst = 0; // of the points: a compressed file too begins with a whole one
    std::int64_t m_nMaxNumPnts = std::numeric_limits<std::int64_t>::max();
    std::int64_t m_nLeastNumPnts = -1;
    std::int64_t m_nPosEnd = 0;
};

#endif
