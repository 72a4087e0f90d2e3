#include <tests/io/las/ReadLas.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace
{

constexpr int c_nRefused = -1;

struct CRealFile
{
    const char* sName;
    int nFormat;
    int nNumPnts; ///< delivered; c_nRefused: false without any call
    int nNumAnnounced;
    double dXMin = 0.0; ///< of the points
    double dXMax = 0.0;
};

void PrintTo(const CRealFile& file, std::ostream* pStream)
{
    *pStream << file.sName;
}

constexpr CRealFile c_aFiles[] = {
    {"ahn3_delft.laz", 1, 640510, 640510, 84808.3, 84999.999},
    {"ign_semis_2023_0292_6833.laz", 6, 289055, 289055, 292000, 292999.98},
    {"Topography.las", 1, 73403, 73403, 273357.145, 273642.856},
    {"lone-star.laz", 1, 518862, 518862, 515368.602, 515401.043},
    {"indoor.laz", 3, 808042, 808042, -22.99, 5.63},
    {"autzen_trim.las", 3, 110000, 110000, 636001.76, 637179.22},
    {"autzen_trim_7.las", 7, 110000, 110000, 636001.76, 637179.22},
    {"4_6_crop.las", 3, 23875, 23875, 1639600, 1639799.98},
    {"hexbin-crop.las", 1, 38367, 38367, 393775.823, 394069.238},
    {"sample_c.las", 3, 14408, 14408, 674521.92, 674605.32},
    {"epsg_4326.las", 0, 5380, 5380, -94.683, -94.661},
    {"vegetation_1_3.las", 1, 10683, 10683, -98451.205, -98447.447},
    {"simple1_4.las", 7, 22600, 22600, 1, 226},
    {"test1_4.las", 6, 1000, 1000, 1694038.446, 1694539.677},
    {"extrabytes.las", 3, 1065, 1065, 635619.85, 638982.55},
    {"fullwave.laz", 10, 10750, 10750, 194267.419, 194318.295},
    {"1.2-with-color.copc.laz", 7, 1065, 1065, 635619.85, 638982.55},
    {"laszip-1.2r0.laz", 3, 1065, 1065, 635619.85, 638982.55},
    {"permutations/1.0_0.las", 0, 1, 1, 470692.44, 470692.44},
    {"permutations/1.0_1.las", 1, 1, 1, 470692.44, 470692.44},
    {"permutations/1.1_1.las", 1, 1, 1, 470692.44, 470692.44},
    {"permutations/1.2_2.las", 2, 1, 1, 470692.44, 470692.44},
    {"pdrf4-1.3.las", 4, 1024, 1024, -70, 103.91},
    {"pdrf5-1.3.laz", 5, 1024, 1024, -70, 103.91},
    {"pdrf8-1.4.las", 8, 1024, 1024, -2141890547.0, 2146619417.0},
    {"pdrf9-1.4.laz", 9, 1024, 1024, -2141972467.0, 2131726195.0},
    {"pdrf10-1.4.las", 10, 1024, 1024, -2141890547.0, 2146619417.0},
    {"pdrf10-1.5.las", 10, 1024, 1024, -2141890547.0, 2146619417.0},
    {"bad/bad_vlr_count.las", 3, 10, 10, 289814.15, 289818.5},        // three records announced, two there
    {"bad/garbage_nVariableLength.las", 0, 718, 719, 0.0007, 0.9979}, // 1,069,128,089 records announced
    {"bad/no-points.las", 3, 0, 0},
    {"bad/1.2-no-points.las", 3, 0, 1065},
    {"bad/1.2-with-color-clipped.las", 3, 1064, 1065, 635619.85, 638982.55},
    {"bad/lots_of_vlr.las", 1, 1, 1, 715001.346, 715001.346},
    {"bad/malformed_extrabytes.las", 0, 10, 10, 0, 9},
    {"bad/broken_compressor.laz", 1, c_nRefused, 0}, // an unknown way of compression
    {"bad/broken_size.laz", 1, c_nRefused, 0},       // an unknown version of an item
    {"bad/header_size_0.laz", 7, c_nRefused, 0},     // a header never finished
};

class CLasReaderRealFiles : public testing::TestWithParam<CRealFile>
{
protected:
    void SetUp() override
    {
        const auto path = GetRealFolder() / "las" / GetParam().sName;
        m_sPath = path.string();
        if (!std::filesystem::exists(path))
            GTEST_SKIP() << "no " << m_sPath << "; ZOR4DATA_TEST_DATA says where real files are";
    }

    std::string m_sPath;
};

TEST_P(CLasReaderRealFiles, Read_DeliversItsPoints)
{
    const CRealFile& file = GetParam();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const CLasReading reading = ReadLasFile(m_sPath.c_str());
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    const TReadCalls& vecCalls = reading.vecCalls;
    EXPECT_EQ(file.nNumPnts != c_nRefused, reading.bResult);
    if (file.nNumPnts == c_nRefused)
    {
        EXPECT_TRUE(vecCalls.empty());
        return;
    }
    const bool bColor = file.nFormat == 2 || file.nFormat == 3 || file.nFormat == 5;
    ASSERT_EQ(static_cast<std::size_t>(file.nNumPnts) + 3, vecCalls.size());
    EXPECT_EQ(CReadCall::Type(bColor ? 1 : 0), vecCalls[0]);
    EXPECT_EQ(CReadCall::NumPnts(file.nNumAnnounced), vecCalls[1]);
    EXPECT_EQ(CReadCall::End(), vecCalls.back());
    double dXMin = 1e300;
    double dXMax = -1e300;
    for (std::size_t i = 2; i + 1 < vecCalls.size(); ++i)
    {
        ASSERT_EQ(bColor ? CReadCall::Kind_ColorPnt : CReadCall::Kind_Pnt, vecCalls[i].eKind);
        dXMin = std::min(dXMin, vecCalls[i].adPos[0]);
        dXMax = std::max(dXMax, vecCalls[i].adPos[0]);
    }
    if (file.nNumPnts > 0)
    {
        EXPECT_NEAR(file.dXMin, dXMin, 0.001);
        EXPECT_NEAR(file.dXMax, dXMax, 0.001);
    }
}

TEST_P(CLasReaderRealFiles, ReadFromFile_FillsACloud)
{
    const CRealFile& file = GetParam();
    CPntCld cld(nullptr);
    EXPECT_EQ(file.nNumPnts != c_nRefused, cld.ReadFromFile(nullptr, PntCldFile_Las, m_sPath.c_str()));
    EXPECT_LE(cld.GetNumPnts(), std::max(file.nNumAnnounced, 0)); // duplicates are gone
    EXPECT_EQ(file.nNumAnnounced > 0, cld.GetNumPnts() > 0);
}

std::string NameOf(const testing::TestParamInfo<CRealFile>& info)
{
    std::string sName = info.param.sName;
    std::replace_if(
        sName.begin(), sName.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return sName;
}

INSTANTIATE_TEST_SUITE_P(Las, CLasReaderRealFiles, testing::ValuesIn(c_aFiles), NameOf);

} // namespace
