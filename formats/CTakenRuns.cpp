#include <formats/CTakenRuns.h>

#include <cstddef>

namespace
{

constexpr std::uint64_t c_nWordBits = 64;

std::size_t WordOf(std::uint64_t nBit) noexcept
{
    return static_cast<std::size_t>(nBit / c_nWordBits);
}

/// The bits of one word from `nFirst` on. The place counts modulo the size of a word.
std::uint64_t BitsFrom(std::uint64_t nFirst) noexcept
{
    return ~std::uint64_t{0} << nFirst % c_nWordBits;
}

/// The bits of one word up to `nLast`, which is one of them.
std::uint64_t BitsTo(std::uint64_t nLast) noexcept
{
    return ~std::uint64_t{0} >> (c_nWordBits - 1 - nLast % c_nWordBits);
}

/// One level for the bits, and coarser ones up to one of a single word; all clear.
std::vector<std::vector<std::uint64_t>> MakeLevels(std::uint64_t nNumBits)
{
    std::vector<std::vector<std::uint64_t>> vecLevels;
    do
    {
        nNumBits = (nNumBits + c_nWordBits - 1) / c_nWordBits;
        vecLevels.emplace_back(static_cast<std::size_t>(nNumBits));
    } while (nNumBits > 1);
    return vecLevels;
}

} // namespace

/// Takes a run that has slots and lies inside the array, but does not follow the runs before it.
bool CTakenRuns::TakeApart(std::uint64_t nFirst, std::uint64_t nEnd)
{
    if (m_vecLevels.empty())
    {
        if (nFirst < m_nTiledEnd)
            return false;
        m_vecLevels = MakeLevels(m_nNumSlots);
        if (m_nTiledEnd > 0)
            Mark(0, m_nTiledEnd);
    }
    if (IsAnyTaken(nFirst, nEnd))
        return false;
    Mark(nFirst, nEnd);
    return true;
}

// Of the words that the range covers the first and the last are looked at here, those between them by their
// bits one level up.
bool CTakenRuns::IsAnyTaken(std::uint64_t nFirst, std::uint64_t nEnd) const noexcept
{
    for (const TWords& words : m_vecLevels)
    {
        const std::size_t nFirstWord = WordOf(nFirst);
        const std::size_t nLastWord = WordOf(nEnd - 1);
        if (nFirstWord == nLastWord)
            return (words[nFirstWord] & BitsFrom(nFirst) & BitsTo(nEnd - 1)) != 0;
        if ((words[nFirstWord] & BitsFrom(nFirst)) != 0 || (words[nLastWord] & BitsTo(nEnd - 1)) != 0)
            return true;
        nFirst = nFirstWord + 1;
        nEnd = nLastWord;
        if (nFirst == nEnd)
            return false;
    }
    return false;
}

void CTakenRuns::Mark(std::uint64_t nFirst, std::uint64_t nEnd) noexcept
{
    for (TWords& words : m_vecLevels)
    {
        const std::size_t nFirstWord = WordOf(nFirst);
        const std::size_t nLastWord = WordOf(nEnd - 1);
        for (std::size_t i = nFirstWord; i <= nLastWord; ++i)
            words[i] |= (i == nFirstWord ? BitsFrom(nFirst) : BitsFrom(0)) &
                        (i == nLastWord ? BitsTo(nEnd - 1) : BitsFrom(0));
        nFirst = nFirstWord;
        nEnd = nLastWord + 1;
    }
}
