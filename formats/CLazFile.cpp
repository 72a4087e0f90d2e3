#include <formats/CLazFile.h>

#include <formats/LasLayout.h>

#include <algorithm>
#include <cstring>

namespace
{

constexpr std::size_t c_nBlockSize = std::size_t{1} << 18U;

/// Bytes that are given out at a time. LASzip gets up to 350 calls of 48 bytes deeper with each: 130 KB.
constexpr std::ptrdiff_t c_nWindow = 8;

/// On files that are not damaged LASzip has been seen 448 bytes deep.
constexpr std::uintptr_t c_nMaxDepth = std::uintptr_t{1} << 16U;

} // namespace

CLazBuf::CLazBuf(std::FILE* pFile, bool bHideRecords)
    : m_pFile(pFile), m_bHideRecords(bHideRecords), m_nStart(GetStackPos()), m_vecBlock(c_nBlockSize),
      m_pEnd(m_vecBlock.data())
{
    setg(m_pEnd, m_pEnd, m_pEnd);
    if (m_pFile == nullptr)
        return;
    if (fseeko(m_pFile, 0, SEEK_END) == 0)
        m_nSize = static_cast<std::int64_t>(ftello(m_pFile));
    static_cast<void>(fseeko(m_pFile, 0, SEEK_SET));
}

bool CLazBuf::IsTooDeep() const noexcept
{
    const std::uintptr_t nHere = GetStackPos();
    return std::max(nHere, m_nStart) - std::min(nHere, m_nStart) > c_nMaxDepth;
}

/// Reads the next block, of which nothing is given out yet.
bool CLazBuf::ReadBlock()
{
    char* const pStart = m_vecBlock.data();
    m_nPosBlock += m_pEnd - pStart;
    const std::size_t nNum = m_pFile != nullptr ? std::fread(pStart, 1, m_vecBlock.size(), m_pFile) : 0;
    m_pEnd = pStart + nNum;
    setg(pStart, pStart, pStart);
    if (m_bHideRecords)
        HideRecords();
    return nNum > 0;
}

/// Puts zeros over what the block holds of the header's count of records.
void CLazBuf::HideRecords()
{
    constexpr std::int64_t c_nFrom = LasLayout::c_nNumRecords.nPos;
    constexpr std::int64_t c_nTo = c_nFrom + static_cast<std::int64_t>(sizeof(std::uint32_t));
    const std::int64_t nNum = m_pEnd - m_vecBlock.data();
    for (std::int64_t n = std::max(c_nFrom - m_nPosBlock, std::int64_t{0});
         n < std::min(c_nTo - m_nPosBlock, nNum); ++n)
        m_vecBlock[static_cast<std::size_t>(n)] = '\0';
}

CLazBuf::int_type CLazBuf::underflow()
{
    if (IsTooDeep() || (egptr() == m_pEnd && !ReadBlock()))
        return traits_type::eof();
    char* const pNext = egptr();
    setg(pNext, pNext, pNext + std::min(m_pEnd - pNext, c_nWindow));
    return traits_type::to_int_type(*pNext);
}

std::streamsize CLazBuf::xsgetn(char* pBytes, std::streamsize nNum)
{
    std::streamsize nDone = 0;
    while (nDone < nNum && (gptr() != m_pEnd || ReadBlock()))
    {
        const std::streamsize n = std::min<std::streamsize>(nNum - nDone, m_pEnd - gptr());
        std::memcpy(pBytes + nDone, gptr(), static_cast<std::size_t>(n));
        nDone += n;
        char* const pNext = gptr() + n;
        setg(pNext, pNext, pNext);
    }
    return nDone;
}

CLazBuf::pos_type CLazBuf::seekoff(off_type nOffset, std::ios_base::seekdir eFrom,
                                   std::ios_base::openmode eWhich)
{
    if (eFrom == std::ios_base::cur)
        nOffset += m_nPosBlock + (gptr() - m_vecBlock.data());
    else if (eFrom == std::ios_base::end)
        nOffset += m_nSize;
    return seekpos(nOffset, eWhich);
}

CLazBuf::pos_type CLazBuf::seekpos(pos_type nPos, std::ios_base::openmode /*eWhich*/)
{
    const std::int64_t nTo = nPos;
    char* const pStart = m_vecBlock.data();
    if (nTo < 0 || nTo > m_nSize)
        return pos_type(off_type(-1));
    if (nTo < m_nPosBlock || nTo > m_nPosBlock + (m_pEnd - pStart))
    {
        if (fseeko(m_pFile, static_cast<off_t>(nTo), SEEK_SET) != 0)
            return pos_type(off_type(-1));
        m_nPosBlock = nTo;
        m_pEnd = pStart;
    }
    char* const pNext = pStart + (nTo - m_nPosBlock);
    setg(pNext, pNext, pNext);
    return nPos;
}
