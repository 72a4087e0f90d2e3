#include <tests/io/las/ReadLas.h>
#include <tests/support/CRandom.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace std::string_literals;

/// Small files of each layout that the reader, or what is below it, tells apart.
std::vector<std::string> SmallFiles()
{
    std::vector<std::string> vecFiles;
    for (const int nFormat : {0, 2, 7})
    {
        CLasFile file = LasOf(nFormat, 3);
        file.vecRecords = {"some text", ""};
        vecFiles.push_back(file.GetBytes());
    }
#ifdef ZOR4DATA_TEST_LAZ
    for (const int nFormat : {0, 3, 7})
        vecFiles.push_back(LazBytes(LasOf(nFormat, 6), 4));
#endif
    return vecFiles;
}

/// A refused file makes no call; any other the calls in their order, and no more points than it announces.
void ExpectInOrder(const CLasReading& reading)
{
    const TReadCalls& vecCalls = reading.vecCalls;
    if (!reading.bResult)
    {
        EXPECT_TRUE(vecCalls.empty());
        return;
    }
    ASSERT_GE(vecCalls.size(), 3U);
    EXPECT_EQ(CReadCall::Kind_Type, vecCalls[0].eKind);
    EXPECT_EQ(CReadCall::Kind_NumPnts, vecCalls[1].eKind);
    EXPECT_EQ(CReadCall::Kind_End, vecCalls.back().eKind);
    const auto eKind = vecCalls[0].nValue == 1 ? CReadCall::Kind_ColorPnt : CReadCall::Kind_Pnt;
    for (std::size_t i = 2; i + 1 < vecCalls.size(); ++i)
        ASSERT_EQ(eKind, vecCalls[i].eKind);
    const int nAnnounced = vecCalls[1].nValue;
    EXPECT_TRUE(nAnnounced < 0 || vecCalls.size() - 3 <= static_cast<std::size_t>(nAnnounced));
}

/// Nothing is printed, whatever the file: tested by every test below.
class CLasReader_robust : public testing::Test
{
protected:
    void SetUp() override
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }

    void TearDown() override
    {
        EXPECT_EQ("", testing::internal::GetCapturedStdout());
        EXPECT_EQ("", testing::internal::GetCapturedStderr());
    }
};

TEST_F(CLasReader_robust, Read_EveryTruncation)
{
    CMemFile memFile;
    for (const std::string& sFile : SmallFiles())
        for (std::size_t n = 0; n <= sFile.size(); ++n)
        {
            memFile.Set(sFile.substr(0, n));
            ExpectInOrder(ReadLasFile(memFile.GetPath()));
            ASSERT_FALSE(HasFailure()) << n << " bytes of a file of " << sFile.size();
        }
}

/// Whole points are delivered, a part of one is not.
TEST_F(CLasReader_robust, Read_EveryTruncationOfThePnts)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
    {
        const CLasFile file = LasOf(nFormat, 3);
        const std::string sFile = file.GetBytes();
        for (std::size_t n = file.GetPosPnts(); n <= sFile.size(); ++n)
        {
            const CLasReading reading = ReadLas(sFile.substr(0, n));
            ASSERT_TRUE(reading.bResult);
            ASSERT_EQ(LasCalls(file, 3, (n - file.GetPosPnts()) / file.GetPntSize()), reading.vecCalls)
                << n << " bytes of format " << nFormat;
        }
    }
}

TEST_F(CLasReader_robust, Read_EveryOneByteChange)
{
    CMemFile memFile;
    for (const std::string& sFile : SmallFiles())
    {
        std::string sChanged = sFile;
        memFile.Set(sChanged);
        for (std::size_t n = 0; n < sFile.size(); ++n)
        {
            for (const int nValue : {0, 0x7f, 0x80, 0xff, sFile[n] ^ 1, sFile[n] + 1})
            {
                sChanged[n] = static_cast<char>(nValue);
                memFile.Write(sChanged.substr(n, 1), n);
                ExpectInOrder(ReadLasFile(memFile.GetPath()));
                ASSERT_FALSE(HasFailure()) << "byte " << n << " of " << sFile.size() << " as " << nValue;
            }
            sChanged[n] = sFile[n];
            memFile.Write(sChanged.substr(n, 1), n);
        }
    }
}

// Counts, sizes, positions and the beginnings of codes: the largest numbers and the smallest negative ones.
TEST_F(CLasReader_robust, Read_EveryFourBytesAsLargestNumbers)
{
    CMemFile memFile;
    for (const std::string& sFile : SmallFiles())
        for (const std::string& sLargest : {"\xff\xff\xff\xff"s, "\xff\xff\xff\x7f"s, "\0\0\0\x80"s})
            for (std::size_t n = 0; n + sLargest.size() <= sFile.size(); ++n)
            {
                std::string sChanged = sFile;
                memFile.Set(sChanged.replace(n, sLargest.size(), sLargest));
                ExpectInOrder(ReadLasFile(memFile.GetPath()));
                ASSERT_FALSE(HasFailure()) << "from byte " << n << " of " << sFile.size();
            }
}

// Two to eight bytes changed at random places.
TEST_F(CLasReader_robust, Read_SeveralBytesChanged)
{
    CMemFile memFile;
    CRandom random(1);
    for (const std::string& sFile : SmallFiles())
        for (int i = 0; i < 500; ++i)
        {
            std::string sChanged = sFile;
            for (std::size_t k = static_cast<std::size_t>(random.Int(2, 8)); k > 0; --k)
                sChanged[static_cast<std::size_t>(random.Int(
                    0, static_cast<std::int64_t>(sFile.size()) - 1))] = static_cast<char>(random.Int(0, 255));
            memFile.Set(sChanged);
            ExpectInOrder(ReadLasFile(memFile.GetPath()));
            ASSERT_FALSE(HasFailure()) << "change " << i << " of a file of " << sFile.size();
        }
}

} // namespace
