#include <tests/io/grid/ReadGrid.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace
{

struct CRealGrid
{
    const char* sName;
    int nNumPnts; ///< 0: refused
};

void PrintTo(const CRealGrid& grid, std::ostream* pStream)
{
    *pStream << grid.sName;
}

constexpr CRealGrid c_aGrids[] = {
    {"bigtujunga_west", 384514},              // integers, a blank in front of each row
    {"avaWog_center", 177871},                // centre keys only: the corner stays undefined
    {"avaPfa_crlf", 99247},                   // carriage returns, "-9999.000"
    {"inclined_mixed_case", 0},               // nCols
    {"nodata_value_lower", 0},                // nodata_value
    {"remeshed_nan_nodata", 0},               // never complete
    {"hugo_site_zero_corner", 2152},          // a corner of 0, 0
    {"west_bijou_gully_nodata0", 1088},       // padded rows
    {"srtm_degrees", 34560},                  // degrees
    {"kootenai_upper_keys", 1850},            // 18 digits
    {"tidal_upper_zero_corner", 100448},      //
    {"rainfall_upper_center_exponent", 4180}, // exponents
    {"bijou_no_nodata", 0},                   //
    {"4_x_3_no_nodata", 0},                   //
    {"gdal_nodata_nan", 0},                   //
    {"gdal_starting_with_nan", 0},            //
};

class CAsciiGridReaderRealFiles : public testing::TestWithParam<CRealGrid>
{
protected:
    void SetUp() override
    {
        m_sPath = GetRealFile("asc/" + std::string(GetParam().sName) + ".asc");
        if (!std::filesystem::exists(m_sPath))
            GTEST_SKIP() << "no " << m_sPath << "; ZOR4DATA_TEST_DATA says where real files are";
    }

    std::string m_sPath;
};

TEST_P(CAsciiGridReaderRealFiles, Read_DeliversItsPoints)
{
    const CReading reading = ReadGridFile(m_sPath.c_str());
    const int nNumPnts = GetParam().nNumPnts;
    EXPECT_EQ(nNumPnts > 0, reading.bResult);
    EXPECT_EQ(nNumPnts > 0 ? static_cast<std::size_t>(nNumPnts) + 3 : 0, reading.vecCalls.size());
    EXPECT_TRUE(reading == ReadGridSlowly(ReadFileBytes(m_sPath)));
}

TEST_P(CAsciiGridReaderRealFiles, ReadFromFile_FillsACloud)
{
    CPntCld cld(nullptr);
    const int nNumPnts = GetParam().nNumPnts;
    EXPECT_EQ(nNumPnts > 0, cld.ReadFromFile(nullptr, PntCldFile_AsciiGrid, m_sPath));
    EXPECT_EQ(nNumPnts > 0, cld.GetNumPnts() > 0);
    EXPECT_LE(cld.GetNumPnts(), nNumPnts); // points at one place are duplicates
}

std::string NameOf(const testing::TestParamInfo<CRealGrid>& info)
{
    return info.param.sName;
}

INSTANTIATE_TEST_SUITE_P(Asc, CAsciiGridReaderRealFiles, testing::ValuesIn(c_aGrids), NameOf);

} // namespace
