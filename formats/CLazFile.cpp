#include <formats/CLazFile.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

constexpr std::size_t c_nBlockSize = std::size_t{1} << 18U;

/// On files that are not damaged LASzip has been seen 448 bytes deep.
constexpr std::uintptr_t c_nMaxDepth = std::uintptr_t{1} << 16U;

} // namespace

CLazBuf::CLazBuf(std::FILE* pFile, std::vector<CFilePatch> vecPatches)
    : m_pFile(pFile), m_vecPatches(std::move(vecPatches)), m_nStart(GetStackPos()), m_vecBlock(c_nBlockSize),
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
    PatchBlock();
    return nNum > 0;
}

/// Puts the patches over what the block holds of their places.
void CLazBuf::PatchBlock()
{
    const std::int64_t nNum = m_pEnd - m_vecBlock.data();
    for (const CFilePatch& patch : m_vecPatches)
        for (std::size_t i = 0; i < patch.nSize; ++i)
        {
            const std::int64_t n = patch.nPos + static_cast<std::int64_t>(i) - m_nPosBlock;
            if (n >= 0 && n < nNum)
                m_vecBlock[static_cast<std::size_t>(n)] = static_cast<char>(patch.acBytes[i]);
        }
}

/// Lets the block begin at `nPos`.
bool CLazBuf::TakeBlockAt(std::int64_t nPos)
{
    if (m_pFile == nullptr || fseeko(m_pFile, static_cast<off_t>(nPos), SEEK_SET) != 0)
        return false;
    m_nPosBlock = nPos;
    m_pEnd = m_vecBlock.data();
    return ReadBlock();
}

/// @return whether the bytes that come next are no code. They are looked at in one block.
bool CLazBuf::IsAtBadCode()
{
    const std::array<unsigned char, 4> acBad = {255, 255, 255, 255};
    const auto nSize = static_cast<std::ptrdiff_t>(acBad.size());
    if (m_pEnd - gptr() < nSize && !TakeBlockAt(m_nPosBlock + (gptr() - m_vecBlock.data())))
        return false;
    return m_pEnd - gptr() >= nSize && std::memcmp(gptr(), acBad.data(), acBad.size()) == 0;
}

/// Makes sure that the block holds the next byte, and that it may be given out.
bool CLazBuf::HasNext()
{
    if (IsTooDeep() || (!m_bByByte && IsAtBadCode()))
        return false;
    m_bByByte = true;
    return gptr() != m_pEnd || ReadBlock();
}

CLazBuf::int_type CLazBuf::underflow()
{
    return HasNext() ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

CLazBuf::int_type CLazBuf::uflow()
{
    if (!HasNext())
        return traits_type::eof();
    char* const pNext = gptr() + 1;
    setg(pNext, pNext, pNext); // nothing is given out without being asked
    return traits_type::to_int_type(pNext[-1]);
}

std::streamsize CLazBuf::xsgetn(char* pBytes, std::streamsize nNum)
{
    m_bByByte = false;
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
    m_bByByte = false;
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
