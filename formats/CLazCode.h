#ifndef FORMATS_CLAZCODE_H
#define FORMATS_CLAZCODE_H

#include <formats/CSizedFile.h>

#include <array>
#include <cstdint>
#include <vector>

/// How often each symbol of an alphabet has come in an arithmetic code, and the share of the code that it
/// has therefore. The shares follow the counts at growing intervals.
class CLazModel
{
public:
    /// @param nNumSymbols  from 2 on; symbols are 0 to nNumSymbols - 1.
    explicit CLazModel(std::uint32_t nNumSymbols);

    void Count(std::uint32_t nSymbol);

    /// Where the shares of the symbols begin, ascending from 0, in units of 1/32768 of the whole.
    const std::vector<std::uint32_t>& GetStarts() const noexcept { return m_vecStarts; }

private:
    void Update();

    std::vector<std::uint32_t> m_vecCounts;
    std::vector<std::uint32_t> m_vecStarts;
    std::uint32_t m_nTotal = 0;
    std::uint32_t m_nInterval;
    std::uint32_t m_nNumLeft = 0; // symbols until the shares follow the counts
};

/// The same for an alphabet of 0 and 1, with its own rules.
class CLazBitModel
{
public:
    void Count(std::uint32_t nBit);

    /// Where the share of 1 begins, in units of 1/8192 of the whole.
    std::uint32_t GetStart() const noexcept { return m_nStart; }

private:
    std::uint32_t m_nNumZeros = 1;
    std::uint32_t m_nTotal = 2;
    std::uint32_t m_nStart = 4096;
    std::uint32_t m_nInterval = 4;
    std::uint32_t m_nNumLeft = 4;
};

/// Reads the adaptive arithmetic code of LAZ files. Behind the end of the file it reads zeros.
class CLazCode
{
public:
    CLazCode(CSizedFile& file, std::int64_t nPos);

    std::uint32_t ReadSymbol(CLazModel& model);
    std::uint32_t ReadBit(CLazBitModel& model);

    /// @param nNumBits  1 to 31.
    std::uint32_t ReadBits(unsigned nNumBits);

    /// @return false when the file has ended within the code, or the code is none, see BeginsAt.
    bool IsGood() const noexcept { return m_bGood; }

    /// A code is a number below 1, to which the first bytes come closest when they are all 255 but for the
    /// last bit. Where it is 1, symbols are found outside their alphabet.
    ///
    /// @return false when what stands at `nPos` is no code. Where the file ends there it may be one.
    static bool BeginsAt(CSizedFile& file, std::int64_t nPos);

private:
    static constexpr std::uint32_t c_nWhole = 0xFFFFFFFF;

    void Take(std::uint32_t nStart, std::uint32_t nEnd);
    std::uint32_t ReadByte();

    CSizedFile& m_file;
    std::int64_t m_nPos;
    bool m_bGood;
    std::uint32_t m_nValue = 0; // below m_nLength in a code
    std::uint32_t m_nLength = c_nWhole;
};

#endif
