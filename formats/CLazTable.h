#ifndef FORMATS_CLAZTABLE_H
#define FORMATS_CLAZTABLE_H

#include <formats/CLazCode.h>

struct CLazChunk
{
    std::uint32_t nNumPnts; ///< 0 in a table that does not have it
    std::uint32_t nNumBytes;
};

/// The entries of a LAZ file's table of chunks: how many points and how many bytes each chunk has. Only the
/// table of chunks of variable size has the points.
class CLazTable
{
public:
    /// @param file      kept, not owned.
    /// @param nPos      where the first entry begins.
    /// @param bHasPnts  whether the table has the points.
    CLazTable(CSizedFile& file, std::int64_t nPos, bool bHasPnts);

    /// Reads the next entry.
    /// @return false when there is none: the file has ended within the table, or its code is damaged.
    bool ReadEntry(CLazChunk& chunk);

private:
    std::uint32_t ReadDifference(CLazModel& modelNumBits);

    CLazCode m_code;
    bool m_bHasPnts;
    CLazModel m_modelNumBitsPnts;
    CLazModel m_modelNumBitsBytes;
    CLazBitModel m_modelOneBit;
    std::vector<CLazModel> m_vecModelsLeading; // by the number of bits, from 1
    CLazChunk m_chunk{};                       // the last entry
};

#endif
