#include <formats/CAsciiGridText.h>

#include <zor0lang/DoubleDaString.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace
{

constexpr std::size_t c_nMinBlock = std::size_t{1} << 16;

constexpr bool IsSeparator(char c) noexcept
{
    return c == ' ' || c == '\n';
}

/// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> c_adPower{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                           1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Takes digits. @return behind the last one.
inline const char* TakeDigits(const char* p, std::uint64_t& nValue) noexcept
{
    for (unsigned nDigit = 0; (nDigit = static_cast<unsigned>(*p) - '0') <= 9; ++p)
        nValue = nValue * 10 + nDigit;
    return p;
}

/// Takes a number of few digits without exponent, exactly: where both its digits as an integer and the
/// power of ten are doubles, one division gives the nearest double.
///
/// @param pToken  ends in a space or a line feed. Moved behind the number on success.
/// @return false when it takes more than that; `d` is then undefined.
inline bool TakePlainNumber(const char*& pToken, double& d) noexcept
{
    constexpr std::ptrdiff_t c_nMaxDigits = 19; // no overflow of 64 bits
    constexpr std::uint64_t c_nMaxExact = std::uint64_t{1} << 53;
    const bool bNegative = *pToken == '-';
    const char* const pStart = pToken + (bNegative ? 1 : 0);
    std::uint64_t nDigits = 0;
    const char* p = TakeDigits(pStart, nDigits);
    std::ptrdiff_t nNumDigits = p - pStart;
    std::ptrdiff_t nNumDecimals = 0;
    if (*p == '.')
    {
        const char* const pDecimals = p + 1;
        p = TakeDigits(pDecimals, nDigits);
        nNumDecimals = p - pDecimals;
        nNumDigits += nNumDecimals;
    }
    if (nNumDigits == 0 || nNumDigits > c_nMaxDigits || nDigits > c_nMaxExact || *p == 'e' || *p == 'E')
        return false;
    d = static_cast<double>(nDigits) / c_adPower[static_cast<std::size_t>(nNumDecimals)];
    d = bNegative ? -d : d;
    pToken = p;
    return true;
}

} // namespace

CAsciiGridText::CAsciiGridText(std::FILE* pFile)
    : m_pFile(pFile), m_nBlockSize(c_nMinBlock), m_pBlock(new char[m_nBlockSize]), m_pPos(m_pBlock.get()),
      m_pWhole(m_pPos), m_pEnd(m_pPos)
{
}

bool CAsciiGridText::GetLine(std::string& sLine)
{
    sLine.clear();
    if (IsAtEnd())
        return false;
    while (*m_pPos != '\n')
    {
        const char* const pStop = std::find(m_pPos, m_pWhole, '\n');
        sLine.append(m_pPos, pStop);
        m_pPos = pStop;
        if (IsAtEnd())
            return true;
    }
    ++m_pPos;
    return true;
}

bool CAsciiGridText::FindLine()
{
    while (!IsAtEnd())
    {
        // Behind a carriage return there is another character: what ends its token.
        const char* const pEnd = *m_pPos == '\r' ? m_pPos + 1 : m_pPos;
        if (*pEnd != '\n')
            return true;
        m_pPos = pEnd + 1;
    }
    return false;
}

double CAsciiGridText::GetNumber()
{
    double d = 0.0;
    if (!TakePlainNumber(m_pPos, d))
        d = GetAnyNumber();
    while (!IsSeparator(*m_pPos))
        ++m_pPos;
    return d;
}

double CAsciiGridText::GetAnyNumber()
{
    m_sToken.assign(m_pPos, std::find_if(m_pPos, m_pWhole, IsSeparator));
    return zor::DoubleDaString(m_sToken);
}

void CAsciiGridText::SkipLine()
{
    const char* pStop = std::find(m_pPos, m_pEnd, '\n');
    while (pStop == m_pEnd)
    {
        m_pPos = m_pEnd; // what is skipped need not be whole
        if (!ReadBlock())
            return;
        pStop = std::find(m_pPos, m_pEnd, '\n');
    }
    m_pPos = pStop + 1;
}

/// Reads on until there is a whole token. @return false at the end of the file.
bool CAsciiGridText::Fill()
{
    while (ReadBlock())
        if (m_pPos != m_pWhole)
            return true;
    return false;
}

/// Moves what is left to the front of the block, which grows when it is full, and reads on behind it. At
/// the end of the file a line feed is added: it ends a last line without one, or makes an empty line.
/// @return false when the file had ended before.
bool CAsciiGridText::ReadBlock()
{
    if (m_bFileEnded)
        return false;
    const std::size_t nNumLeft = static_cast<std::size_t>(m_pEnd - m_pPos);
    if (nNumLeft + 1 < m_nBlockSize)
        std::memmove(m_pBlock.get(), m_pPos, nNumLeft);
    else
    {
        std::unique_ptr<char[]> pLarger(new char[2 * m_nBlockSize]);
        std::memcpy(pLarger.get(), m_pPos, nNumLeft);
        m_pBlock = std::move(pLarger);
        m_nBlockSize *= 2;
    }
    char* const pNew = m_pBlock.get() + nNumLeft;
    const std::size_t nWanted = m_nBlockSize - nNumLeft - 1; // room for a line feed
    const std::size_t nNumRead = std::fread(pNew, 1, nWanted, m_pFile);
    char* pEnd = pNew + nNumRead;
    m_bFileEnded = nNumRead < nWanted;
    if (m_bFileEnded)
        *pEnd++ = '\n';
    const char* pWhole = pEnd;
    while (pWhole != pNew && !IsSeparator(pWhole[-1]))
        --pWhole;
    m_pPos = m_pBlock.get();
    m_pWhole = pWhole == pNew ? m_pPos : pWhole;
    m_pEnd = pEnd;
    return true;
}
