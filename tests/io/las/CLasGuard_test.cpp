#include <gtest/gtest.h>

#include <io/las/CLasGuard.h>
#include <tests/io/las/ReadLas.h>

#include <cstring>
#include <limits>

namespace
{

bool IsLet(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    return CLasGuard(file.GetPath()).Check();
}

/// @return whether the file is let through with `value` at `nPos`.
template <class T>
bool IsLetWith(std::string sBytes, std::size_t nPos, T value)
{
    std::memcpy(sBytes.data() + nPos, &value, sizeof value);
    return IsLet(sBytes);
}

using U8 = std::uint8_t;
using U16 = std::uint16_t;
using U32 = std::uint32_t;

constexpr std::size_t c_nHeaderSizeAt = 94;
constexpr std::size_t c_nPosPntsAt = 96;
constexpr std::size_t c_nNumRecordsAt = 100;
constexpr std::size_t c_nFormatAt = 104;
constexpr std::size_t c_nPntSizeAt = 105;

TEST(CLasGuard, Check_HeaderLiesInTheFile)
{
    const std::string sBytes = LasOf(0, 2).GetBytes();
    EXPECT_TRUE(IsLet(sBytes));
    EXPECT_TRUE(IsLet(sBytes.substr(0, 227)));
    EXPECT_FALSE(IsLet(sBytes.substr(0, 226)));
    EXPECT_FALSE(IsLetWith(sBytes, 0, 'l'));
    EXPECT_FALSE(IsLetWith(sBytes, c_nHeaderSizeAt, U16{226}));
    EXPECT_FALSE(IsLetWith(sBytes, c_nHeaderSizeAt, U16{228})); // behind the first point
    EXPECT_FALSE(IsLetWith(sBytes, c_nHeaderSizeAt, U16{65535}));
}

TEST(CLasGuard, Check_HeaderSizeByVersion)
{
    for (int nMinor = 0; nMinor <= 4; ++nMinor)
    {
        CLasFile file = LasOf(0, 1);
        file.nMinor = nMinor;
        file.sGap = std::string(300, ' ');
        const std::string sBytes = file.GetBytes();
        EXPECT_TRUE(IsLet(sBytes)) << nMinor;
        EXPECT_TRUE(IsLetWith(sBytes, c_nHeaderSizeAt, static_cast<U16>(file.GetHeaderSize() + 1))) << nMinor;
        EXPECT_FALSE(IsLetWith(sBytes, c_nHeaderSizeAt, static_cast<U16>(file.GetHeaderSize() - 1)))
            << nMinor;
    }
}

TEST(CLasGuard, Check_PntsBeginInTheFile)
{
    const std::string sBytes = LasOf(0, 2).GetBytes();
    const U32 nSize = static_cast<U32>(sBytes.size());
    EXPECT_TRUE(IsLetWith(sBytes, c_nPosPntsAt, nSize));
    EXPECT_FALSE(IsLetWith(sBytes, c_nPosPntsAt, nSize + 1));
    EXPECT_FALSE(IsLetWith(sBytes, c_nPosPntsAt, U32{226}));
    EXPECT_FALSE(IsLetWith(sBytes, c_nPosPntsAt, U32{0}));
    EXPECT_FALSE(IsLetWith(sBytes, c_nPosPntsAt, std::numeric_limits<U32>::max()));
}

TEST(CLasGuard, Check_PntHoldsItsFormat)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
    {
        const CLasFile file = LasOf(nFormat, 2);
        const U16 nSize = static_cast<U16>(file.GetPntSize());
        EXPECT_TRUE(IsLetWith(file.GetBytes(), c_nPntSizeAt, nSize)) << nFormat;
        EXPECT_TRUE(IsLetWith(file.GetBytes(), c_nPntSizeAt, static_cast<U16>(nSize + 1))) << nFormat;
        EXPECT_FALSE(IsLetWith(file.GetBytes(), c_nPntSizeAt, static_cast<U16>(nSize - 1))) << nFormat;
        EXPECT_FALSE(IsLetWith(file.GetBytes(), c_nPntSizeAt, U16{0})) << nFormat;
    }
    for (const int nFormat : {11, 63, 64, 127, 128, 255})
        EXPECT_FALSE(IsLetWith(LasOf(0, 2).GetBytes(), c_nFormatAt, static_cast<U8>(nFormat))) << nFormat;
}

TEST(CLasGuard, Check_RecordsFitBeforeThePnts)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {"abc", "defg"};
    const std::string sBytes = file.GetBytes();
    EXPECT_TRUE(IsLet(sBytes));
    for (const U32 nNum : {0U, 1U, 2U})
        EXPECT_TRUE(IsLetWith(sBytes, c_nNumRecordsAt, nNum)) << nNum;
    for (const U32 nNum : {3U, 1069128089U, 0xFFFFFFFFU})
        EXPECT_FALSE(IsLetWith(sBytes, c_nNumRecordsAt, nNum)) << nNum;

    const std::size_t nFirst = file.GetHeaderSize() + 20;
    const std::size_t nSecond = nFirst + 54 + 3;
    EXPECT_TRUE(IsLetWith(sBytes, nSecond, U16{0}));
    EXPECT_FALSE(IsLetWith(sBytes, nSecond, U16{5}));
    EXPECT_FALSE(IsLetWith(sBytes, nFirst, U16{65535}));
}

// The library stops reading records where none fits any more.
TEST(CLasGuard, Check_MoreRecordsAnnouncedThanThereAre)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {std::string(60, 'x')};
    EXPECT_TRUE(IsLetWith(file.GetBytes(), c_nNumRecordsAt, U32{2}));
    EXPECT_EQ(LasCalls(file), ReadLas(file.GetBytes()).m_vecCalls);
}

TEST(CLasGuard, Check_CompressionIsMarkedAndDescribed)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {std::string(46, '\0')};
    std::string sBytes = file.GetBytes();
    EXPECT_TRUE(IsLet(sBytes));
    sBytes.replace(file.GetHeaderSize() + 2, 14, "laszip encoded");
    EXPECT_FALSE(IsLet(sBytes));                                            // described, not marked
    EXPECT_FALSE(IsLetWith(LasOf(0, 2).GetBytes(), c_nFormatAt, U8{0x80})); // marked, not described
}

TEST(CLasGuard, GetMaxNumPnts_WholePnts)
{
    CLasFile file = LasOf(3, 7);
    file.nAnnounced = 2000000000;
    std::string sBytes = file.GetBytes();
    sBytes.pop_back();
    const CMemFile memFile(sBytes);
    CLasGuard guard(memFile.GetPath());
    ASSERT_TRUE(guard.Check());
    EXPECT_EQ(6, guard.GetMaxNumPnts());
}

TEST(CLasGuard, Check_NoFile)
{
    for (const char* sPath : {"", "/no/such/file.las", "/", "/dev/null"})
        EXPECT_FALSE(CLasGuard(sPath).Check()) << sPath;
}

} // namespace
