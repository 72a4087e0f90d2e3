#include <formats/CLasGuard.h>
#include <tests/io/CMemFile.h>
#include <tests/support/LasBytes.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
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

/// @return why it is not.
template <class T>
std::string FindCauseWith(std::string sBytes, std::size_t nPos, T value)
{
    std::memcpy(sBytes.data() + nPos, &value, sizeof value);
    const CMemFile file(sBytes);
    CLasGuard guard(file.GetPath());
    const bool bLet = guard.Check();
    EXPECT_EQ(bLet, guard.GetCause().empty());
    return guard.GetCause();
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
    }
    for (const int nFormat : {11, 63, 64, 127, 128, 255})
        EXPECT_FALSE(IsLetWith(LasOf(0, 2).GetBytes(), c_nFormatAt, static_cast<U8>(nFormat))) << nFormat;
}

// The reading library goes on with the points of the format.
TEST(CLasGuard, Check_PntSizeBelowItsFormat)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
    {
        const CLasFile file = LasOf(nFormat, 2);
        const auto nSize = static_cast<U16>(file.GetPntSize());
        for (const U16 nBelow : {static_cast<U16>(nSize - 1), U16{0}})
        {
            std::string sBytes = file.GetBytes();
            std::memcpy(sBytes.data() + c_nPntSizeAt, &nBelow, sizeof nBelow);
            const CMemFile memFile(sBytes);
            CLasGuard guard(memFile.GetPath());
            EXPECT_TRUE(guard.Check()) << nFormat;
            EXPECT_EQ(2, guard.GetMaxNumPnts()) << nFormat;
            EXPECT_EQ(nSize, guard.GetHeader().CalcPntSize()) << nFormat;
        }
    }
}

// The records end at the points, however many are announced and however long the last one says that it is.
TEST(CLasGuard, Check_RecordsEndAtThePnts)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {"abc", "defg"};
    const std::string sBytes = file.GetBytes();
    EXPECT_TRUE(IsLet(sBytes));
    for (const U32 nNum : {0U, 1U, 2U, 3U, 1069128089U, 0xFFFFFFFFU})
        EXPECT_TRUE(IsLetWith(sBytes, c_nNumRecordsAt, nNum)) << nNum;

    const std::size_t nFirst = file.GetHeaderSize() + 20;
    const std::size_t nSecond = nFirst + 54 + 3;
    EXPECT_TRUE(IsLetWith(sBytes, nSecond, U16{0}));
    EXPECT_TRUE(IsLetWith(sBytes, nSecond, U16{5}));
    EXPECT_TRUE(IsLetWith(sBytes, nFirst, U16{65535}));
}

// What the header announces beyond what is there, LASzip gets as it is.
TEST(CLasGuard, GetPatches_CountOfRecordsAndSizeOfPnts)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {"abc", "defg"};
    std::string sBytes = file.GetBytes();
    const auto GetPatches = [&]
    {
        const CMemFile memFile(sBytes);
        CLasGuard guard(memFile.GetPath());
        EXPECT_TRUE(guard.Check());
        return guard.GetPatches();
    };
    EXPECT_TRUE(GetPatches().empty());
    sBytes[c_nNumRecordsAt + 3] = '\x7f';
    sBytes[c_nPntSizeAt] = 1;
    const std::vector<CFilePatch> vecPatches = GetPatches();
    ASSERT_EQ(2U, vecPatches.size());
    EXPECT_EQ(100, vecPatches[0].nPos);
    EXPECT_EQ(4U, vecPatches[0].nSize);
    EXPECT_EQ(2, vecPatches[0].acBytes[0]);
    EXPECT_EQ(105, vecPatches[1].nPos);
    EXPECT_EQ(2U, vecPatches[1].nSize);
    EXPECT_EQ(20, vecPatches[1].acBytes[0]);
}

// Of another major version the reading library takes what every version has.
TEST(CLasGuard, Check_LaterVersions)
{
    for (const int nFormat : {0, 6})
        for (const int nMajor : {0, 2, 4, 255})
            for (const int nMinor : {0, 3, 4, 5, 255})
            {
                std::string sBytes = LasOf(nFormat, 3).GetBytes();
                sBytes[24] = static_cast<char>(nMajor);
                sBytes[25] = static_cast<char>(nMinor);
                const CMemFile memFile(sBytes);
                CLasGuard guard(memFile.GetPath());
                EXPECT_TRUE(guard.Check()) << nFormat << ", " << nMajor << "." << nMinor;
                EXPECT_EQ(nFormat == 0 ? 3 : 0, guard.GetHeader().nNumPnts) << nMajor << "." << nMinor;
            }
    EXPECT_TRUE(IsLetWith(LasOf(6, 3).GetBytes(), 25, U8{5}));
    EXPECT_FALSE(IsLetWith(LasOf(0, 3).GetBytes(), 25, U8{5})); // its header is too short
}

TEST(CLasGuard, Check_CompressionIsMarkedAndDescribed)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {std::string(46, '\0')};
    std::string sBytes = file.GetBytes();
    EXPECT_TRUE(IsLet(sBytes));
    sBytes.replace(file.GetHeaderSize() + 2, 14, "laszip encoded");
    EXPECT_TRUE(IsLet(sBytes)); // the number of another record
    sBytes.replace(file.GetHeaderSize() + 18, 2, "\xbc\x56");
    EXPECT_FALSE(IsLet(sBytes));                                            // described, not marked
    EXPECT_FALSE(IsLetWith(LasOf(0, 2).GetBytes(), c_nFormatAt, U8{0x80})); // marked, not described
    EXPECT_EQ("it is marked as compressed, but does not say how",
              FindCauseWith(LasOf(0, 2).GetBytes(), c_nFormatAt, U8{0x80}));
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

TEST(CLasGuard, GetHeader_AlsoOfWhatIsRefused)
{
    std::string sBytes = LasOf(7, 3).GetBytes();
    sBytes[99] = 1; // the points begin behind the end of the file
    const CMemFile memFile(sBytes);
    CLasGuard guard(memFile.GetPath());
    EXPECT_FALSE(guard.Check());
    EXPECT_EQ("it is cut off or damaged: its points begin at byte 16777591, but it has 483 bytes",
              guard.GetCause());
    EXPECT_EQ(7, guard.GetHeader().nFormat);
    EXPECT_EQ(3, guard.GetHeader().nNumPnts);
}

TEST(CLasGuard, GetRecords_InTheirOrder)
{
    CLasFile file = LasOf(0, 1);
    file.vecRecords = {"abc", ""};
    const CMemFile memFile(file.GetBytes());
    CLasGuard guard(memFile.GetPath());
    ASSERT_TRUE(guard.Check());
    CLasRecords records = guard.GetRecords();
    CLasRecord record;
    ASSERT_TRUE(records.Next(record));
    EXPECT_EQ("test", record.GetUser());
    EXPECT_EQ(7, record.GetId());
    EXPECT_EQ(3, record.GetSize());
    EXPECT_EQ(227 + 54, record.GetPos());
    EXPECT_EQ("", record.GetDescription());
    ASSERT_TRUE(records.Next(record));
    EXPECT_EQ(0, record.GetSize());
    EXPECT_FALSE(records.Next(record));
}

TEST(CLasGuard, ReadFirstPnt)
{
    CLasFile file = LasOf(3, 2);
    file.vecPnts[0] = {-7, 8, 9, {}};
    file.adScale = {0.5, 0.25, 2.0};
    file.adOffset = {100.0, 0.0, -1.0};
    file.sGap = "gap";
    const CMemFile memFile(file.GetBytes());
    CLasGuard guard(memFile.GetPath());
    ASSERT_TRUE(guard.Check());
    EXPECT_EQ((std::array<double, 3>{96.5, 2.0, 17.0}), guard.ReadFirstPnt());
}

struct CRealFile
{
    const char* sName;
    const char* sCause; ///< a part of it; empty: none
};

TEST(CLasGuard, RealFiles)
{
    const std::filesystem::path folder = GetRealFolder();
    if (!std::filesystem::exists(folder / "las"))
        GTEST_SKIP() << "no " << folder << "; ZOR4DATA_TEST_DATA says where real files are";
    for (const CRealFile& file : {CRealFile{"ahn3_delft.laz", ""},
                                  {"fullwave.laz", ""},
                                  {"laszip-1.2r0.laz", ""},
                                  {"1.2-with-color.copc.laz", ""},
                                  {"pdrf10-1.5.las", ""},
                                  {"bad/bad_vlr_count.las", ""},
                                  {"bad/lots_of_vlr.las", ""},
                                  {"bad/1.2-no-points.las", ""},
                                  {"bad/garbage_nVariableLength.las", ""},
                                  {"bad/broken_compressor.laz", "unknown way (16)"},
                                  {"bad/header_size_0.laz", "never finished"}})
    {
        CLasGuard guard((folder / "las" / file.sName).c_str());
        EXPECT_EQ(*file.sCause == '\0', guard.Check()) << file.sName << ": " << guard.GetCause();
        EXPECT_NE(std::string::npos, guard.GetCause().sText.find(file.sCause)) << guard.GetCause();
    }
}

TEST(CLasGuard, Check_NoFile)
{
    for (const char* sPath : {"", "/no/such/file.las", "/", "/dev/null"})
        EXPECT_FALSE(CLasGuard(sPath).Check()) << sPath;
    EXPECT_EQ("cannot be opened: No such file or directory", CLasGuard("/no/such/file.las").GetCause());
}

} // namespace
