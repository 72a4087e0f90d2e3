#ifndef IO_LAS_CLASGUARD_H
#define IO_LAS_CLASGUARD_H

#include <formats/CSizedFile.h>

#include <cstdint>
#include <limits>

/// Looks at a LAS or LAZ file before the reading library does, which takes positions, counts and sizes in
/// the file as they stand. Call `Check`, then ask.
///
/// It judges neither the points nor whether the header makes sense, only whether all that the file points at
/// lies inside it.
class CLasGuard
{
public:
    /// @param pPath  not null.
    explicit CLasGuard(const char* pPath) : m_file(pPath) {}

    /// @return false when the file cannot be opened, is not a LAS or LAZ file, or must not be handed to the
    ///         reading library.
    bool Check();

    /// The most points that the file can hold; the largest int64 where its size does not tell.
    /// REQUIRES: Check has returned true.
    std::int64_t GetMaxNumPnts() const noexcept { return m_nMaxNumPnts; }

private:
    bool CheckHeader();
    bool CheckRecords();

    CSizedFile m_file;
    std::uint16_t m_nHeaderSize = 0;
    std::uint32_t m_nNumRecords = 0; // records of variable length, between header and points
    std::int64_t m_nPosPnts = 0;
    std::uint16_t m_nPntSize = 0;
    bool m_bCompressed = false;
    std::int64_t m_nMaxNumPnts = std::numeric_limits<std::int64_t>::max();
};

#endif
