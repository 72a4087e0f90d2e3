#include <formats/CLazTable.h>

#include <algorithm>

namespace
{

/// Most bits of a difference, and of these the leading ones, which have a model.
constexpr unsigned c_nMaxBits = 32;
constexpr unsigned c_nMaxLeading = 8;

} // namespace

CLazTable::CLazTable(CSizedFile& file, std::int64_t nPos, bool bHasPnts)
    : m_code(file, nPos), m_bHasPnts(bHasPnts), m_modelNumBitsPnts(c_nMaxBits + 1),
      m_modelNumBitsBytes(c_nMaxBits + 1)
{
    for (unsigned nNumBits = 1; nNumBits < c_nMaxBits; ++nNumBits)
        m_vecModelsLeading.emplace_back(1U << std::min(nNumBits, c_nMaxLeading));
}

bool CLazTable::ReadEntry(CLazChunk& chunk)
{
    if (m_bHasPnts)
        m_chunk.nNumPnts += ReadDifference(m_modelNumBitsPnts);
    m_chunk.nNumBytes += ReadDifference(m_modelNumBitsBytes);
    chunk = m_chunk;
    return m_code.IsGood();
}

/// A difference to the entry before, two's complement: first how many bits k it has, then which of the 2^k
/// numbers it is that need so many: those from -(2^k - 1) to -2^(k-1) and from 2^(k-1) + 1 to 2^k.
std::uint32_t CLazTable::ReadDifference(CLazModel& modelNumBits)
{
    const unsigned k = m_code.ReadSymbol(modelNumBits);
    if (k == 0)
        return m_code.ReadBit(m_modelOneBit); // 0 or 1
    if (k == c_nMaxBits)
        return 0x80000000U;
    std::uint32_t n = m_code.ReadSymbol(m_vecModelsLeading[k - 1]);
    if (k > c_nMaxLeading)
        n = n << (k - c_nMaxLeading) | m_code.ReadBits(k - c_nMaxLeading);
    return n >= 1U << (k - 1) ? n + 1 : n - ((1U << k) - 1);
}
