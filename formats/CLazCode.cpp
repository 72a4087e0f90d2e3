#include <formats/CLazCode.h>

#include <algorithm>

namespace
{

constexpr unsigned c_nModelBits = 15;
constexpr unsigned c_nBitModelBits = 13;

/// The whole, of which the shares are parts, never gets shorter.
constexpr std::uint32_t c_nMinLength = 1U << 24U;

/// @return `nPart` of `nTotal` as a part of 2^nBits.
std::uint32_t CalcShare(std::uint32_t nPart, std::uint32_t nTotal, unsigned nBits)
{
    // Rounded twice, as the code is written.
    return (0x80000000U / nTotal * nPart) >> (31 - nBits);
}

} // namespace

CLazModel::CLazModel(std::uint32_t nNumSymbols)
    : m_vecCounts(nNumSymbols, 1), m_vecStarts(nNumSymbols), m_nInterval(nNumSymbols)
{
    Update();
    m_nInterval = m_nNumLeft = (nNumSymbols + 6) / 2;
}

void CLazModel::Count(std::uint32_t nSymbol)
{
    ++m_vecCounts[nSymbol];
    if (--m_nNumLeft == 0)
        Update();
}

void CLazModel::Update()
{
    m_nTotal += m_nInterval;
    if (m_nTotal > 1U << c_nModelBits)
    {
        m_nTotal = 0;
        for (std::uint32_t& nCount : m_vecCounts)
            m_nTotal += nCount = (nCount + 1) / 2;
    }
    std::uint32_t nSum = 0;
    for (std::size_t i = 0; i < m_vecCounts.size(); ++i)
    {
        m_vecStarts[i] = CalcShare(nSum, m_nTotal, c_nModelBits);
        nSum += m_vecCounts[i];
    }
    const auto nMaxInterval = static_cast<std::uint32_t>(8 * (m_vecCounts.size() + 6));
    m_nInterval = m_nNumLeft = std::min(m_nInterval * 5 / 4, nMaxInterval);
}

void CLazBitModel::Count(std::uint32_t nBit)
{
    m_nNumZeros += 1 - nBit;
    if (--m_nNumLeft != 0)
        return;
    m_nTotal += m_nInterval;
    if (m_nTotal > 1U << c_nBitModelBits)
    {
        m_nTotal = (m_nTotal + 1) / 2;
        m_nNumZeros = (m_nNumZeros + 1) / 2;
        m_nTotal += m_nNumZeros == m_nTotal ? 1 : 0;
    }
    m_nStart = CalcShare(m_nNumZeros, m_nTotal, c_nBitModelBits);
    m_nInterval = m_nNumLeft = std::min(m_nInterval * 5 / 4, 64U);
}

bool CLazCode::BeginsAt(CSizedFile& file, std::int64_t nPos)
{
    std::uint32_t nFirst = 0;
    return !file.ReadAt(nPos, nFirst) || nFirst != c_nWhole; // the same in any byte order
}

CLazCode::CLazCode(CSizedFile& file, std::int64_t nPos)
    : m_file(file), m_nPos(nPos), m_bGood(BeginsAt(file, nPos))
{
    for (int i = 0; i < 4; ++i)
        m_nValue = m_nValue << 8U | ReadByte();
}

std::uint32_t CLazCode::ReadSymbol(CLazModel& model)
{
    const std::vector<std::uint32_t>& vecStarts = model.GetStarts();
    const std::uint32_t nUnit = m_nLength >> c_nModelBits;
    const auto itNext = std::upper_bound(vecStarts.begin(), vecStarts.end(), m_nValue / nUnit);
    const auto nSymbol = static_cast<std::uint32_t>(itNext - vecStarts.begin() - 1); // the first start is 0
    Take(vecStarts[nSymbol] * nUnit, itNext == vecStarts.end() ? m_nLength : *itNext * nUnit);
    model.Count(nSymbol);
    return nSymbol;
}

std::uint32_t CLazCode::ReadBit(CLazBitModel& model)
{
    const std::uint32_t nStart = model.GetStart() * (m_nLength >> c_nBitModelBits);
    const std::uint32_t nBit = m_nValue >= nStart ? 1 : 0;
    Take(nBit == 0 ? 0 : nStart, nBit == 0 ? nStart : m_nLength);
    model.Count(nBit);
    return nBit;
}

std::uint32_t CLazCode::ReadBits(unsigned nNumBits)
{
    constexpr unsigned c_nMaxBits = 16; // of one step; the lower ones come first
    if (nNumBits > 19)
    {
        const std::uint32_t nLow = ReadBits(c_nMaxBits);
        return ReadBits(nNumBits - c_nMaxBits) << c_nMaxBits | nLow;
    }
    const std::uint32_t nUnit = m_nLength >> nNumBits;
    const std::uint32_t n = m_nValue / nUnit;
    Take(n * nUnit, (n + 1) * nUnit);
    return n & ((1U << nNumBits) - 1); // a damaged code exceeds it
}

/// Goes on within the share from `nStart` to `nEnd` of the whole.
void CLazCode::Take(std::uint32_t nStart, std::uint32_t nEnd)
{
    m_nValue -= nStart;
    m_nLength = nEnd - nStart;
    for (; m_nLength < c_nMinLength; m_nLength <<= 8U)
        m_nValue = m_nValue << 8U | ReadByte();
}

std::uint32_t CLazCode::ReadByte()
{
    std::uint8_t n = 0;
    m_bGood = m_file.ReadAt(m_nPos++, n) && m_bGood;
    return n;
}
