#include <tests/io/las/ReadLas.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <new>

namespace
{

TEST(CLasReader, Read_ThreePntsWithoutColor)
{
    CLasFile file = LasOf(1, 0);
    file.adOffset = {500000.0, 4000000.0, -5.0};
    file.vecPnts = {{1, 2, 3, {}}, {-100, 0, 250, {}}, {2147483647, -2147483647 - 1, 0, {}}};
    const CLasReading reading = ReadLas(file.GetBytes(), true);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(
        TReadCalls({CReadCall::Type(0), CReadCall::NumPnts(3), CReadCall::Progress(0),
                    CReadCall::Pnt(1 * 0.01 + 500000.0, 2 * 0.01 + 4000000.0, 3 * 0.01 - 5.0),
                    CReadCall::Progress(33), CReadCall::Pnt(-100 * 0.01 + 500000.0, 4000000.0, -2.5),
                    CReadCall::Progress(66),
                    CReadCall::Pnt(2147483647 * 0.01 + 500000.0, -2147483648.0 * 0.01 + 4000000.0, -5.0),
                    CReadCall::End()}),
        reading.vecCalls);
}

TEST(CLasReader, Read_ColorChannelByChannel)
{
    CLasFile file = LasOf(2, 1);
    file.vecPnts[0].anColor = {65535, 256, 255};
    EXPECT_EQ(TReadCalls({CReadCall::Type(1), CReadCall::NumPnts(1),
                          CReadCall::ColorPnt(0, 0, 1, 255, 1, 255), CReadCall::End()}),
              ReadLas(file.GetBytes()).vecCalls);
}

TEST(CLasReader, Read_EveryFormatAndVersion)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
        for (int nMinor = 0; nMinor <= 4; ++nMinor)
            for (const int nNumExtra : {0, 5})
            {
                CLasFile file = LasOf(nFormat, 4);
                file.nMinor = nMinor;
                file.nNumExtra = nNumExtra;
                file.bLegacyCount = nMinor < 4 || nFormat < 6;
                const CLasReading reading = ReadLas(file.GetBytes());
                EXPECT_TRUE(reading.bResult) << nFormat << " in 1." << nMinor;
                EXPECT_EQ(LasCalls(file), reading.vecCalls) << nFormat << " in 1." << nMinor;
            }
}

TEST(CLasReader, Read_LaterFormatsWithoutTheirColor_Kept)
{
    for (const int nFormat : {7, 8, 10})
        EXPECT_EQ(CReadCall::Type(0), ReadLas(LasOf(nFormat, 2).GetBytes()).vecCalls.at(0)) << nFormat;
}

TEST(CLasReader, Read_RecordsAndGapBeforeThePnts)
{
    CLasFile file = LasOf(3, 5);
    file.vecRecords = {"", std::string(200, 'x'), "abc"};
    file.sGap = std::string(70, 'y');
    EXPECT_EQ(LasCalls(file), ReadLas(file.GetBytes()).vecCalls);
}

TEST(CLasReader, Read_NoPnts)
{
    const CLasReading reading = ReadLas(LasOf(0, 0).GetBytes(), true);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(TReadCalls({CReadCall::Type(0), CReadCall::NumPnts(0), CReadCall::End()}), reading.vecCalls);
}

TEST(CLasReader, Read_FewerPntsThanAnnouncedEndsEarly)
{
    CLasFile file = LasOf(2, 3);
    file.nAnnounced = 10;
    CLasReading reading = ReadLas(file.GetBytes());
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(LasCalls(file, 10, 3), reading.vecCalls);

    std::string sBytes = file.GetBytes();
    sBytes.pop_back(); // the last point is cut off
    reading = ReadLas(sBytes);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(LasCalls(file, 10, 2), reading.vecCalls);

    reading = ReadLas(sBytes.substr(0, file.GetPosPnts()));
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(LasCalls(file, 10, 0), reading.vecCalls);
}

TEST(CLasReader, Read_BytesBehindTheAnnouncedPntsAreNoPnts)
{
    CLasFile file = LasOf(0, 3);
    file.nAnnounced = 2;
    EXPECT_EQ(LasCalls(file, 2, 2), ReadLas(file.GetBytes()).vecCalls);
}

TEST(CLasReader, Read_CountOf64BitsWhereThatOf32Is0)
{
    CLasFile file = LasOf(6, 2);
    EXPECT_EQ(LasCalls(file), ReadLas(file.GetBytes()).vecCalls);
    // What int32 does not hold is announced by its lower bits.
    file.nAnnounced = 0x100000002;
    EXPECT_EQ(LasCalls(file, 2, 2), ReadLas(file.GetBytes()).vecCalls);
    file.nAnnounced = 0xFFFFFFFF;
    const CLasReading reading = ReadLas(file.GetBytes(), true);
    EXPECT_TRUE(reading.bResult);
    ASSERT_EQ(7U, reading.vecCalls.size());
    EXPECT_EQ(CReadCall::NumPnts(-1), reading.vecCalls[1]);
    EXPECT_EQ(CReadCall::Progress(0), reading.vecCalls[4]); // of the whole count
}

TEST(CLasReader, Read_CountOf32BitsGoesFirst)
{
    CLasFile file = LasOf(1, 3);
    file.nMinor = 4;
    std::string sBytes = file.GetBytes();
    sBytes[247] = 2; // the count of 64 bits
    EXPECT_EQ(LasCalls(file), ReadLas(sBytes).vecCalls);
}

TEST(CLasReader, Read_OtherFileIsFalseWithoutAnyCall)
{
    for (const std::string& sBytes :
         {std::string(), std::string("LASF"), std::string("LASF") + std::string(500, '\0'),
          std::string("ply\nformat binary_little_endian 1.0\n"), std::string(1000, 'x')})
    {
        const CLasReading reading = ReadLas(sBytes, true);
        EXPECT_FALSE(reading.bResult) << sBytes.size();
        EXPECT_TRUE(reading.vecCalls.empty()) << sBytes.size();
    }
    for (const char* sPath : {"", "/no/such/file.las", "/", "."})
    {
        const CLasReading reading = ReadLasFile(sPath, true);
        EXPECT_FALSE(reading.bResult) << sPath;
        EXPECT_TRUE(reading.vecCalls.empty()) << sPath;
    }
}

/// Fails at its `nCall`-th call with an exception of type T.
template <class T>
class CThrowing final : public IPntCldReadListener
{
public:
    explicit CThrowing(int nCall) : m_nCall(nCall) {}

    void OnReadType(enumPntCldType) override { Count(); }
    void OnReadNumPnts(int) override { Count(); }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override { Count(); }
    void OnReadPnt(double, double, double) override { Count(); }
    void OnReadEnd() override { Count(); }

private:
    void Count()
    {
        if (--m_nCall == 0)
            throw T();
    }

    int m_nCall;
};

int CountOpenFiles()
{
    int nNum = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        ++nNum;
    return nNum;
}

TEST(CLasReader, Read_WhatTheListenerThrowsPassesThrough)
{
    const CMemFile file(LasOf(2, 2).GetBytes());
    const int nNumOpen = CountOpenFiles();
    for (int nCall = 1; nCall <= 5; ++nCall)
    {
        CThrowing<int> listener(nCall);
        EXPECT_THROW(ReadForeign(listener, nullptr, PntCldFile_Las, file.GetPath()), int) << nCall;
        CThrowing<std::bad_alloc> poor(nCall);
        EXPECT_THROW(ReadForeign(poor, nullptr, PntCldFile_Las, file.GetPath()), std::bad_alloc) << nCall;
    }
    EXPECT_EQ(nNumOpen, CountOpenFiles());
}

TEST(CLasReader, Read_NoMemoryForMorePntsThanTheFileCanHoldIsFalse)
{
    CLasFile file = LasOf(0, 2);
    for (const int nAnnounced : {2, 3, 2147483647})
    {
        file.nAnnounced = nAnnounced;
        const CMemFile memFile(file.GetBytes());
        CThrowing<std::bad_alloc> listener(2);
        const auto Read = [&] { return ReadForeign(listener, nullptr, PntCldFile_Las, memFile.GetPath()); };
        if (nAnnounced == 2)
            EXPECT_THROW(Read(), std::bad_alloc);
        else
            EXPECT_FALSE(Read()) << nAnnounced;
    }
}

TEST(CLasReader, ReadFromFile_FillsACloud)
{
    const CMemFile file(LasOf(3, 50).GetBytes());
    CPntCld cld(nullptr);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Las, file.GetPath()));
    EXPECT_EQ(50, cld.GetNumPnts());
    EXPECT_TRUE(cld.IsWithColor());
    EXPECT_EQ(PntCldFile_Las, cld.GetFileType());
    EXPECT_FALSE(cld.ReadFromFile(nullptr, PntCldFile_Las, "/no/such/file.las"));
    EXPECT_EQ(0, cld.GetFilePath().Compare("/no/such/file.las"));
}

// The library stops reading records where none fits any more.
TEST(CLasReader, Read_MoreRecordsAnnouncedThanThereAre)
{
    CLasFile file = LasOf(0, 2);
    file.vecRecords = {std::string(60, 'x')};
    std::string sBytes = file.GetBytes();
    for (const unsigned nNum : {2U, 255U})
    {
        sBytes[100] = sBytes[103] = static_cast<char>(nNum);
        EXPECT_EQ(LasCalls(file), ReadLas(sBytes).vecCalls) << nNum;
    }
}

TEST(CLasReader, Read_LastRecordRunsIntoThePnts)
{
    for (const int nFormat : {0, 3, 7})
    {
        CLasFile file = LasOf(nFormat, 2);
        file.vecRecords = {"abc", "de"};
        std::string sBytes = file.GetBytes();
        sBytes.replace(file.GetHeaderSize() + 54 + 3 + 20, 2, "\xff\xff");
        EXPECT_EQ(LasCalls(file), ReadLas(sBytes).vecCalls) << nFormat;
    }
}

// Points of the format's size, without a word.
TEST(CLasReader, Read_PntSizeBelowItsFormat)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
        for (const int nBelow : {0, 1, 17})
        {
            const CLasFile file = LasOf(nFormat, 3);
            std::string sBytes = file.GetBytes();
            sBytes[105] = static_cast<char>(nBelow);
            testing::internal::CaptureStderr();
            EXPECT_EQ(LasCalls(file), ReadLas(sBytes).vecCalls) << nFormat << ", " << nBelow;
            EXPECT_EQ("", testing::internal::GetCapturedStderr());
        }
}

TEST(CLasReader, Read_VersionsBeyondTheKnownOnes)
{
    for (const char* sVersion : {"\1\5", "\2\1", "\2\4", "\xff\xff"})
    {
        CLasFile file = LasOf(1, 3);
        file.nMinor = 4; // the longest header
        std::string sBytes = file.GetBytes();
        sBytes.replace(24, 2, sVersion);
        EXPECT_EQ(LasCalls(file), ReadLas(sBytes).vecCalls) << std::string(sVersion);
    }
}

} // namespace
