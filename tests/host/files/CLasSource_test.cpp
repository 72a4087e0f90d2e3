// The points of LAS and LAZ files as the host reads them: all of them, with the colours of every format.
#include <formats/IPntSource.h>
#include <host/files/CInputOptions.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CFailure.h>
#include <tests/host/files/ExpectSamePlaces.h>
#include <tests/io/CMemFile.h>
#include <tests/support/LazBytes.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>

namespace zorcld
{

namespace
{

/// What came of reading a file.
struct CReading
{
    bool bColor = false;
    std::vector<CSourcePnt> vecPnts;
    std::vector<CFinding> vecFindings;
};

/// @throws CFailure as the source does.
CReading ReadSource(const std::string& sPath)
{
    const std::unique_ptr<CInputFile> pFile = OpenInputFile({sPath, "las"});
    const std::unique_ptr<IPntSource> pSource = pFile->MakeSource();
    CReading reading;
    reading.bColor = pSource->HasColor();
    for (int i = 0; i < 2; ++i) // it may be asked several times
    {
        reading.vecPnts.clear();
        pSource->ForEach([&](const CSourcePnt& pnt) { reading.vecPnts.push_back(pnt); });
    }
    reading.vecFindings = pSource->GetFindings();
    ExpectSamePlaces(*pSource);
    return reading;
}

CReading ReadSourceBytes(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    return ReadSource(file.GetPath());
}

bool HasColors(int nFormat)
{
    return nFormat == 2 || nFormat == 3 || nFormat == 5 || nFormat == 7 || nFormat == 8 || nFormat == 10;
}

void ExpectPnts(const CLasFile& las, const std::string& sBytes)
{
    const CReading reading = ReadSourceBytes(sBytes);
    EXPECT_EQ(reading.bColor, HasColors(las.nFormat));
    EXPECT_TRUE(reading.vecFindings.empty());
    ASSERT_EQ(reading.vecPnts.size(), las.vecPnts.size());
    for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
    {
        const CSourcePnt& pnt = reading.vecPnts[i];
        const CLasPnt& expected = las.vecPnts[i];
        EXPECT_EQ(pnt.x, expected.x * las.adScale[0] + las.adOffset[0]) << i;
        EXPECT_EQ(pnt.y, expected.y * las.adScale[1] + las.adOffset[1]) << i;
        EXPECT_EQ(pnt.z, expected.z * las.adScale[2] + las.adOffset[2]) << i;
        const decltype(expected.anColor) anNone{};
        const auto& anColor = reading.bColor ? expected.anColor : anNone;
        EXPECT_EQ(pnt.r, anColor[0]) << i;
        EXPECT_EQ(pnt.g, anColor[1]) << i;
        EXPECT_EQ(pnt.b, anColor[2]) << i;
    }
}

/// Points of which some share a place, one is far away, and whose colours have 16 bits.
CLasFile MakeLas(int nFormat)
{
    CLasFile las = LasOf(nFormat, 100);
    las.adScale = {0.001, 0.5, 3.0};
    las.adOffset = {-1000.0, 4000000.25, 1e-3};
    las.vecPnts[50] = las.vecPnts[7];
    las.vecPnts[51].x = las.vecPnts[7].x;
    las.vecPnts[51].y = las.vecPnts[7].y;
    las.vecPnts[90] = {2000000000, -2000000000, 2000000000, {0xFFFF, 0x1234, 1}};
    return las;
}

} // namespace

TEST(CLasSource, ForEach_AllPntsAndColorsOfEveryFormat)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
    {
        SCOPED_TRACE(nFormat);
        CLasFile las = MakeLas(nFormat);
        ExpectPnts(las, LazBytes(las, 16));
        ExpectPnts(las, LazBytes(las, std::numeric_limits<unsigned>::max())); // chunks of variable size
        ExpectPnts(las, las.GetBytes());
        las.nNumExtra = 5;
        las.vecRecords = {"abc"};
        las.sGap = "gap";
        ExpectPnts(las, las.GetBytes());
    }
}

// In formats from 6 on more bits, and one more flag.
TEST(CLasSource, ForEach_AttributesOfEveryFormat)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
    {
        SCOPED_TRACE(nFormat);
        const bool bLater = nFormat >= 6;
        CLasFile las = LasOf(nFormat, 256);
        for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
        {
            las.vecPnts[i].nIntensity = static_cast<std::uint16_t>(65535 - 250 * i);
            las.vecPnts[i].nReturn = static_cast<std::uint8_t>(i % (bLater ? 16 : 8));
            las.vecPnts[i].nClass = static_cast<std::uint8_t>(i % (bLater ? 256 : 32));
            las.vecPnts[i].nFlags = static_cast<std::uint8_t>(i / 16 % (bLater ? 16 : 8));
        }
        for (const std::string& sBytes : {las.GetBytes(), LazBytes(las, 50)})
        {
            const CReading reading = ReadSourceBytes(sBytes);
            ASSERT_EQ(reading.vecPnts.size(), las.vecPnts.size());
            for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
            {
                const CLasAttributes& attributes = reading.vecPnts[i].attributes;
                EXPECT_EQ(attributes.nIntensity, las.vecPnts[i].nIntensity) << i;
                EXPECT_EQ(attributes.nReturn, las.vecPnts[i].nReturn) << i;
                EXPECT_EQ(attributes.nClass, las.vecPnts[i].nClass) << i;
                EXPECT_EQ(attributes.nFlags, las.vecPnts[i].nFlags) << i;
            }
        }
    }
}

// A point is read where it stands, and is not read where it is not whole.
TEST(CLasSource, ForEach_FewerOrMorePntsThanAnnounced)
{
    CLasFile las = MakeLas(7);
    std::string sBytes = las.GetBytes();
    sBytes.pop_back();
    EXPECT_EQ(ReadSourceBytes(sBytes).vecPnts.size(), 99U);
    las.nAnnounced = 40;
    EXPECT_EQ(ReadSourceBytes(las.GetBytes()).vecPnts.size(), 100U);
}

TEST(CLasSource, GetFindings_LazOfFewerPntsThanAnnounced)
{
    std::string sBytes = LazBytes(MakeLas(1), 16);
    sBytes[108] = 1; // 356 points
    const CReading reading = ReadSourceBytes(sBytes);
    EXPECT_GE(reading.vecPnts.size(), 100U);
    ASSERT_EQ(reading.vecFindings.size(), 1U);
    EXPECT_STREQ(reading.vecFindings[0].pCode, "las-count");
    EXPECT_EQ(reading.vecFindings[0].sText.find("its header announces 356 points, but 1"), 0U);
}

TEST(CLasSource, NoPnts)
{
    for (const int nFormat : {0, 7})
    {
        EXPECT_TRUE(ReadSourceBytes(LasOf(nFormat, 0).GetBytes()).vecPnts.empty());
        EXPECT_TRUE(ReadSourceBytes(LazBytes(LasOf(nFormat, 0), 16)).vecPnts.empty());
    }
}

TEST(CLasSource, WhatTheGuardRefusesIsNotRead)
{
    std::string sBytes = LazBytes(MakeLas(7), 0xFFFFFFFF); // chunks of variable size
    sBytes.resize(sBytes.size() / 2);
    const CMemFile file(sBytes);
    try
    {
        ReadSource(file.GetPath());
        ADD_FAILURE() << "it is read";
    }
    catch (const CFailure& failure)
    {
        EXPECT_EQ(failure.GetCause(),
                  "it is cut off, damaged or was never finished: the table of its compressed points, without "
                  "which they cannot be read, is not there");
    }
}

struct CRealLas
{
    const char* sName;
    std::size_t nNumPnts;
    int nMinColor; ///< of all channels; -1: no colours
    int nMaxColor;
};

TEST(CLasSource, RealFiles)
{
    const std::filesystem::path folder = GetRealFolder();
    if (!std::filesystem::exists(folder / "las"))
        GTEST_SKIP() << "no " << folder << "; ZOR4DATA_TEST_DATA says where real files are";
    for (const CRealLas& las : {CRealLas{"indoor.laz", 808042, 0, 0},
                                {"Topography.las", 73403, -1, -1},
                                {"ign_semis_2023_0292_6833.laz", 289055, -1, -1},
                                {"laszip-1.2r0.laz", 1065, 39, 249},
                                {"1.2-with-color.copc.laz", 1065, 39, 249},
                                {"extrabytes.las", 1065, 39, 249},
                                {"autzen_trim_7.las", 110000, 40, 236},
                                {"simple1_4.las", 22600, 6656, 65024},
                                {"pdrf4-1.3.las", 1024, -1, -1},
                                {"pdrf5-1.3.laz", 1024, 0, 65495},
                                {"pdrf8-1.4.las", 1024, 55, 65528},
                                {"pdrf9-1.4.laz", 1024, -1, -1},
                                {"pdrf10-1.5.las", 1024, 55, 65528},
                                {"fullwave.laz", 10750, 257, 60395},
                                {"bad/1.2-with-color-clipped.las", 1064, 39, 249},
                                {"bad/lots_of_vlr.las", 1, -1, -1}})
    {
        const CReading reading = ReadSource((folder / "las" / las.sName).string());
        EXPECT_EQ(reading.vecPnts.size(), las.nNumPnts) << las.sName;
        EXPECT_EQ(reading.bColor, las.nMinColor >= 0) << las.sName;
        EXPECT_TRUE(reading.vecFindings.empty()) << las.sName;
        int nMin = 65535;
        int nMax = 0;
        for (const CSourcePnt& pnt : reading.vecPnts)
        {
            nMin = std::min<int>({nMin, pnt.r, pnt.g, pnt.b});
            nMax = std::max<int>({nMax, pnt.r, pnt.g, pnt.b});
        }
        EXPECT_EQ(nMin, std::max(las.nMinColor, 0)) << las.sName;
        EXPECT_EQ(nMax, std::max(las.nMaxColor, 0)) << las.sName;
    }
}

} // namespace zorcld
