#ifndef IO_CLAZCODE_H
#define IO_CLAZCODE_H

#include <io/CSizedFile.h>

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

    /// @return whether bytes behind the end of the file have been read.
    bool HasEnded() const noexcept { return m_bEnded; }

private:
    void Take(std::uint32_t nStart, std::uint32_t nEnd);
    std::uint32_t ReadByte();

    CSizedFile& m_file;
    std::int64_t m_nPos;
    bool m_bEnded = false;
    std::uint32_t m_nValue = 0; // below m_nLength
    std::uint32_t m_nLength = 0xFFFFFFFF;
};

#endif
