#ifndef IO_CLAZTABLE_H
#define IO_CLAZTABLE_H

#include <io/CLazCode.h>

/// The entries of a LAZ file's table of chunks: how many points and how many bytes each chunk has. Only the
/// table of chunks of variable size has the points.
class CLazTable
{
public:
    /// @param file  kept, not owned.
    /// @param nPos  where the first entry begins.
    CLazTable(CSizedFile& file, std::int64_t nPos);

    /// Reads the next entry.
    /// @return false when the file has ended within the table.
    bool ReadEntry(std::uint32_t& nNumPnts, std::uint32_t& nNumBytes);

private:
    std::uint32_t ReadDifference(CLazModel& modelNumBits);

    CLazCode m_code;
    CLazModel m_modelNumBitsPnts;
    CLazModel m_modelNumBitsBytes;
    CLazBitModel m_modelOneBit;
    std::vector<CLazModel> m_vecModelsLeading; // by the number of bits, from 1
    std::uint32_t m_nNumPnts = 0;              // of the last entry
    std::uint32_t m_nNumBytes = 0;
};

#endif
