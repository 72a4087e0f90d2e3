#include <formats/CLasHeader.h>
#include <formats/CSizedFile.h>
#include <tests/io/CMemFile.h>
#include <tests/support/LasBytes.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

namespace
{

std::string ReadHeader(const char* pPath, CLasHeader& header)
{
    CSizedFile file(pPath);
    return header.Read(file);
}

std::string FindCause(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    CLasHeader header;
    return ReadHeader(file.GetPath(), header);
}

/// Of the file with `value` at `nPos`.
template <class T>
std::string FindCauseWith(std::string sBytes, std::size_t nPos, T value)
{
    std::memcpy(sBytes.data() + nPos, &value, sizeof value);
    return FindCause(sBytes);
}

void ExpectIn(const std::string& sPart, const std::string& sText)
{
    EXPECT_NE(std::string::npos, sText.find(sPart)) << "'" << sText << "' lacks: " << sPart;
}

TEST(CLasHeader, Facts)
{
    CLasFile file = LasOf(3, 7);
    file.adScale = {0.001, 0.01, 0.1};
    file.adOffset = {500000, 4000000, -1};
    file.vecRecords = {"abc", ""};
    file.nNumExtra = 2;
    const CMemFile memFile(file.GetBytes());
    CLasHeader header;
    EXPECT_EQ("", ReadHeader(memFile.GetPath(), header));
    EXPECT_EQ(1, header.nMajor);
    EXPECT_EQ(2, header.nMinor);
    EXPECT_EQ("test system", header.sSystem);
    EXPECT_EQ("test software", header.sSoftware);
    EXPECT_EQ("2024-02-01", header.GetDate());
    EXPECT_EQ(227, header.nHeaderSize);
    EXPECT_EQ(227 + 54 + 3 + 54, header.nPosPnts);
    EXPECT_EQ(3, header.nFormat);
    EXPECT_FALSE(header.bCompressed);
    EXPECT_EQ(36, header.nPntSize);
    EXPECT_EQ(7, header.nNumLegacy);
    EXPECT_EQ(7, header.nNumPnts);
    EXPECT_EQ(7, header.CalcNumHeld());
    EXPECT_EQ(5U, header.vecNumByReturn.size());
    EXPECT_EQ(file.adScale, header.adScale);
    EXPECT_EQ(file.adOffset, header.adOffset);
    EXPECT_EQ(2U, header.nNumRecords);
    EXPECT_TRUE(header.HasColor() && header.IsColorTaken());
}

TEST(CLasHeader, CountOf64Bits)
{
    CLasFile file = LasOf(7, 2);
    file.nAnnounced = 5000000000;
    const CMemFile memFile(file.GetBytes());
    CLasHeader header;
    EXPECT_EQ("", ReadHeader(memFile.GetPath(), header));
    EXPECT_EQ(0, header.nNumLegacy);
    EXPECT_EQ(5000000000, header.nNumPnts);
    EXPECT_EQ(2, header.CalcNumHeld());
    EXPECT_TRUE(header.HasColor());
    EXPECT_FALSE(header.IsColorTaken());
}

TEST(CLasHeader, GetDate_OfDayAndYear)
{
    CLasHeader header;
    const auto DateOf = [&](int nDay, int nYear)
    {
        header.nDay = nDay;
        header.nYear = nYear;
        return header.GetDate();
    };
    EXPECT_EQ("", DateOf(0, 0));
    EXPECT_EQ("", DateOf(5, 0));
    EXPECT_EQ("2019", DateOf(0, 2019));
    EXPECT_EQ("2019-01-01", DateOf(1, 2019));
    EXPECT_EQ("2019-03-01", DateOf(60, 2019));
    EXPECT_EQ("2020-02-29", DateOf(60, 2020));
    EXPECT_EQ("2019-12-31", DateOf(365, 2019));
    EXPECT_EQ("2019", DateOf(366, 2019));
    EXPECT_EQ("2020-12-31", DateOf(366, 2020));
    EXPECT_EQ("65535", DateOf(65535, 65535));
}

TEST(CLasHeader, Causes)
{
    const std::string sBytes = LasOf(1, 2).GetBytes();
    EXPECT_EQ("", FindCause(sBytes));
    EXPECT_EQ("", FindCause(sBytes.substr(0, 227))); // no points, but a header
    ExpectIn("does not begin with LASF", FindCause(""));
    ExpectIn("does not begin with LASF", FindCause("ply\n"));
    ExpectIn("ends within the header, after 100 bytes", FindCause(sBytes.substr(0, 100)));
    ExpectIn("never finished", FindCauseWith(sBytes, 94, std::uint16_t{0}));
    ExpectIn("points begin at byte 5000", FindCauseWith(sBytes, 96, 5000));
    ExpectIn("within the header", FindCauseWith(sBytes, 96, 100));
    ExpectIn("point format 11 is unknown", FindCauseWith(sBytes, 104, std::uint8_t{11}));
    // What does no harm.
    EXPECT_EQ("", FindCauseWith(sBytes, 100, 1069128089));
    EXPECT_EQ("", FindCauseWith(sBytes, 105, std::uint16_t{27}));
    EXPECT_EQ("", FindCauseWith(sBytes, 24, std::uint8_t{2}));
}

TEST(CLasHeader, AnyByteChangedOrMissing)
{
    CLasFile file = LasOf(7, 1);
    file.vecRecords = {"abc"};
    const std::string sBytes = file.GetBytes();
    for (std::size_t n = 0; n < sBytes.size(); ++n)
    {
        FindCause(sBytes.substr(0, n));
        for (const int nValue : {0, 1, 0x7f, 0x80, 0xff})
            FindCauseWith(sBytes, n, static_cast<char>(nValue));
    }
}

TEST(CLasHeader, RealFiles)
{
    const std::filesystem::path folder = GetRealFolder();
    if (!std::filesystem::exists(folder / "las"))
        GTEST_SKIP() << "no " << folder << "; ZOR4DATA_TEST_DATA says where real files are";
    CLasHeader header;
    EXPECT_EQ("", ReadHeader((folder / "las/ahn3_delft.laz").c_str(), header));
    EXPECT_EQ(640510, header.nNumPnts);
    EXPECT_TRUE(header.bCompressed);
    EXPECT_EQ(1, header.nFormat);
    EXPECT_EQ("LAStools (c) by rapidlasso GmbH", header.sSystem);
    EXPECT_NEAR(84808.3, header.adMin[0], 0.001);
    EXPECT_NEAR(84999.999, header.adMax[0], 0.001);
    EXPECT_NEAR(19.398, header.adMax[2], 0.001);
}

} // namespace
