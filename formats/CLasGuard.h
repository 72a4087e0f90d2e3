#ifndef FORMATS_CLASGUARD_H
#define FORMATS_CLASGUARD_H

#include <formats/CLasHeader.h>
#include <formats/CLasRecords.h>
#include <formats/CSizedFile.h>
#include <formats/FindLasCoordSystem.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>

/// Looks at a LAS or LAZ file before the reading library does, which takes positions, counts and sizes in
/// the file as they stand. Call `Check`, then ask.
///
/// It judges neither the points nor whether the header makes sense, only whether all that the file points at
/// lies inside it. What it lets through is what the library takes.
class CLasGuard
{
public:
    /// @param pPath  not null.
    explicit CLasGuard(const char* pPath);

    /// @return false when the file cannot be opened, is not a LAS or LAZ file, or must not be handed to the
    ///         reading library.
    bool Check();

    /// Why `Check` has returned false: one line of English without path and full stop; empty: it has not.
    const std::string& GetCause() const noexcept { return m_sCause; }

    /// @return whether nothing but a record that runs past the start of the points has made `Check` return
    ///         false: the points of such a file, which is not compressed, can be read without the records.
    bool HasBadRecordsOnly() const noexcept { return m_bBadRecordsOnly; }

    /// What the file says of itself, also of one that is not let through.
    const CLasHeader& GetHeader() const noexcept { return m_header; }

    /// The most points that the file can hold; the largest int64 where its size does not tell.
    /// REQUIRES: Check has returned true, or HasBadRecordsOnly.
    std::int64_t GetMaxNumPnts() const noexcept { return m_nMaxNumPnts; }

    /// The records before the points, from the first on. REQUIRES: Check has returned true.
    CLasRecords GetRecords() { return {m_file, m_header}; }

    /// @return the coordinate system that the records state; none where they state none that can be read.
    /// REQUIRES: Check has returned true.
    CCoordSystem ReadCoordSystem() { return FindLasCoordSystem(m_file, m_header); }

    /// The file for LASzip, see CLazFile; null when it could not be opened. Not owned.
    std::FILE* GetStream() noexcept { return m_file.GetStream(); }

    /// @return x, y and z of the first point; where the file holds none, numbers that mean nothing.
    /// REQUIRES: Check has returned true.
    std::array<double, 3> ReadFirstPnt();

private:
    bool CheckRecords();
    bool CheckCompressor(const CLasRecord& record);

    bool Refuse(std::string sCause)
    {
        m_sCause = std::move(sCause);
        return false;
    }

    CSizedFile m_file;
    std::string m_sCause;
    CLasHeader m_header;
    bool m_bHasCompressor = false;
    bool m_bBadRecordsOnly = false;
    std::int64_t m_nPosFirst = 0; // of the points: a compressed file too begins with a whole one
    std::int64_t m_nMaxNumPnts = std::numeric_limits<std::int64_t>::max();
};

#endif
