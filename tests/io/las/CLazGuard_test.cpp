// What the guard takes from LAZ files that LASzip has written: long tables of chunks, versions of the parts
// of a point.

#include <formats/CLasGuard.h>
#include <formats/CLazGuard.h>
#include <formats/CSizedFile.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CRandom.h>
#include <tests/support/LazBytes.h>

#include <gtest/gtest.h>

#include <cstring>

namespace
{

template <class T>
T ValueAt(const std::string& sBytes, std::size_t nPos)
{
    T value{};
    std::memcpy(&value, sBytes.data() + nPos, sizeof value);
    return value;
}

bool IsLet(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    return CLasGuard(file.GetPath()).Check();
}

constexpr std::int64_t c_nRecordHead = 54;
constexpr std::size_t c_nFirstItem = 34; // in the record

/// Points whose chunks differ in size.
CLasFile MakeScattered(int nNumPnts)
{
    CLasFile file = LasOf(0, nNumPnts);
    CRandom random(5);
    for (CLasPnt& pnt : file.vecPnts)
    {
        const std::int64_t nSize = std::int64_t{1} << random.Int(0, 20);
        pnt.x = static_cast<std::int32_t>(random.Int(-nSize, nSize));
        pnt.nIntensity = static_cast<std::uint16_t>(random.Int(0, 9));
    }
    return file;
}

/// The guard finds the chunks where they are: each begins with its first point as it is.
void ExpectStarts(const CLasFile& file, unsigned nChunkSize)
{
    const std::string sBytes = LazBytes(file, nChunkSize);
    const CMemFile memFile(sBytes);
    CSizedFile sized(memFile.GetPath());
    CLazGuard guard(sized);
    const auto nPosPnts = std::int64_t{ValueAt<std::uint32_t>(sBytes, 96)};
    const std::int64_t nPosRecord = static_cast<std::int64_t>(file.GetHeaderSize()) + c_nRecordHead;
    ASSERT_TRUE(guard.Check(nPosRecord, static_cast<std::uint16_t>(c_nFirstItem + 6), nPosPnts, 20));
    const std::vector<std::int64_t>& vecStarts = guard.GetStarts();
    ASSERT_EQ(vecStarts.size(), file.vecPnts.size() / nChunkSize + 1);
    for (std::size_t i = 0; i + 1 < vecStarts.size(); ++i)
        ASSERT_EQ(ValueAt<std::int32_t>(sBytes, static_cast<std::size_t>(vecStarts[i])),
                  file.vecPnts[nChunkSize * i].x)
            << i;
    EXPECT_EQ(vecStarts.back(), ValueAt<std::int64_t>(sBytes, static_cast<std::size_t>(nPosPnts)));
}

} // namespace

// Counts of symbols are halved when they have come to 32768, of bits to 8192: a table has to be longer.
TEST(CLazGuard, GetStarts_OfATableSoLongThatCountsAreHalved)
{
    ExpectStarts(MakeScattered(67000), 2);
}

// Of chunks of one size all differences are 0, but the share of the other bit never comes to nothing: the
// last chunk differs.
TEST(CLazGuard, GetStarts_OfALongTableOfEqualChunks)
{
    CLasFile file = LasOf(0, 18000);
    for (CLasPnt& pnt : file.vecPnts)
        pnt = {};
    file.vecPnts.back() = {1000000, -2000000, 3000000, {}};
    ExpectStarts(file, 2);
}

// Every part of a point in every version: of another one the library knows nothing.
TEST(CLazGuard, Check_VersionOfEveryPart)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
    {
        CLasFile file = LasOf(nFormat, 3);
        file.nNumExtra = 5;
        const std::string sBytes = LazBytes(file, 16);
        const std::size_t nPosRecord = file.GetHeaderSize() + c_nRecordHead;
        const auto nNumItems = ValueAt<std::uint16_t>(sBytes, nPosRecord + c_nFirstItem - 2);
        ASSERT_GE(nNumItems, 2U);
        for (std::size_t i = 0; i < nNumItems; ++i)
        {
            const std::size_t nPos = nPosRecord + c_nFirstItem + 6 * i;
            const auto nType = ValueAt<std::uint16_t>(sBytes, nPos);
            const int nMin = nFormat >= 6 ? 2 : 1;
            const int nMax = nFormat >= 6 ? 4 : nType == 9 ? 1 : 2; // 9: waveforms
            for (std::uint16_t nVersion = 0; nVersion < 7; ++nVersion)
            {
                std::string sChanged = sBytes;
                std::memcpy(sChanged.data() + nPos + 4, &nVersion, sizeof nVersion);
                EXPECT_EQ(IsLet(sChanged), nVersion >= nMin && nVersion <= nMax)
                    << "format " << nFormat << ", type " << nType << ", version " << nVersion;
            }
        }
    }
}
