#include <tests/io/ply/ReadPly.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

/// How reading a real file ends.
enum enumOutcome
{
    Outcome_Refused,     ///< false, no call
    Outcome_FailedColor, ///< false after the announcement of points with colour
    Outcome_Plain,       ///< true, points without colour
    Outcome_Color,       ///< true, points with colour
};

struct CRealFile
{
    const char* sName;
    int nNumPnts; ///< delivered
    enumOutcome eOutcome;
};

void PrintTo(const CRealFile& file, std::ostream* pStream)
{
    *pStream << file.sName;
}

constexpr CRealFile c_aFiles[] = {
    {"office1_pcl_grid", 254456, Outcome_Color},      // lists of 0 or 1 entry behind the vertices
    {"lidar_source_cc", 69792, Outcome_Plain},        // an extra scalar
    {"ripple_bin", 10201, Outcome_Color},             // normals behind the colours
    {"simple_binary_cc", 3, Outcome_Plain},           //
    {"reference_meshlab", 845, Outcome_Color},        // alpha, faces
    {"fuze_meshlab_texcoord", 502, Outcome_Color},    // two lists a face
    {"truck_meshlab", 5240, Outcome_Plain},           // colours of the faces only
    {"bone_meshlab_flags", 1872, Outcome_Color},      // an int between z and red
    {"colored_airplane_double", 7017, Outcome_Color}, // double coordinates
    {"duplicated_pcloud_double", 5395, Outcome_Plain},
    {"empty_blender", 0, Outcome_Refused},         // counts of 0
    {"metadata_ascii_crlf", 0, Outcome_Refused},   // ASCII
    {"voxelgrid_crlf", 6, Outcome_Plain},          // carriage returns in the header
    {"diamond_pyntcloud", 6, Outcome_Color},       //
    {"diamond_with_bool", 0, Outcome_FailedColor}, // an unknown type
    {"platonic_faces_first", 50, Outcome_Plain},   // lists before the vertices
    {"platonic_big_endian", 0, Outcome_Refused},   //
    {"splat_train-1000", 1000, Outcome_Plain},     // 62 properties
    {"splat_compressed", 0, Outcome_Refused},      // no x, y and z
};

class CPlyReaderRealFiles : public testing::TestWithParam<CRealFile>
{
protected:
    void SetUp() override
    {
        const auto path = GetRealFolder() / "ply" / (std::string(GetParam().sName) + ".ply");
        m_sPath = path.string();
        if (!std::filesystem::exists(path))
            GTEST_SKIP() << "no " << m_sPath << "; ZOR4DATA_TEST_DATA says where real files are";
    }

    std::string ReadBytes() const
    {
        std::ifstream stream(m_sPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string m_sPath;
};

TEST_P(CPlyReaderRealFiles, Read_DeliversItsPoints)
{
    const CReading reading = ReadPlyFile(m_sPath.c_str());
    const TReadCalls& vecCalls = reading.vecCalls;
    const enumOutcome eOutcome = GetParam().eOutcome;
    EXPECT_EQ(eOutcome == Outcome_Plain || eOutcome == Outcome_Color, reading.bResult);
    if (eOutcome == Outcome_Refused)
    {
        EXPECT_TRUE(vecCalls.empty());
        return;
    }
    ASSERT_GE(vecCalls.size(), 2U);
    EXPECT_EQ(CReadCall::Type(eOutcome == Outcome_Plain ? 0 : 1), vecCalls[0]);
    EXPECT_EQ(CReadCall::Kind_NumPnts, vecCalls[1].eKind);
    const std::size_t nNumPnts = static_cast<std::size_t>(GetParam().nNumPnts);
    EXPECT_EQ(2 + nNumPnts + (reading.bResult ? 1 : 0), vecCalls.size());
    for (std::size_t i = 2; i < 2 + nNumPnts; ++i)
        ASSERT_EQ(eOutcome == Outcome_Plain ? CReadCall::Kind_Pnt : CReadCall::Kind_ColorPnt,
                  vecCalls[i].eKind);
}

TEST_P(CPlyReaderRealFiles, Read_SameCallsAsTheSlowReader)
{
    const std::string sBytes = ReadBytes();
    for (const bool bProgress : {false, true})
        EXPECT_TRUE(ReadPlySlowly(sBytes, bProgress) == ReadPlyFile(m_sPath.c_str(), bProgress));
}

TEST_P(CPlyReaderRealFiles, Read_CutOffSameCallsAsTheSlowReader)
{
    const std::string sBytes = ReadBytes();
    CMemFile file;
    for (const double dPart : {0.1, 0.37, 0.5, 0.83, 0.999})
    {
        const std::string sPart =
            sBytes.substr(0, static_cast<std::size_t>(static_cast<double>(sBytes.size()) * dPart));
        file.Set(sPart);
        EXPECT_TRUE(ReadPlySlowly(sPart) == ReadPlyFile(file.GetPath())) << sPart.size() << " bytes";
    }
}

TEST_P(CPlyReaderRealFiles, ReadFromFile_FillsACloud)
{
    CPntCld cld(nullptr);
    const enumOutcome eOutcome = GetParam().eOutcome;
    EXPECT_EQ(eOutcome == Outcome_Plain || eOutcome == Outcome_Color,
              cld.ReadFromFile(nullptr, PntCldFile_Ply, m_sPath.c_str()));
    EXPECT_EQ(eOutcome == Outcome_Color || eOutcome == Outcome_FailedColor, cld.IsWithColor());
    if (eOutcome == Outcome_Plain || eOutcome == Outcome_Color)
    {
        EXPECT_LE(cld.GetNumPnts(), GetParam().nNumPnts); // duplicates are gone
        EXPECT_GT(cld.GetNumPnts(), 0);
    }
}

std::string NameOf(const testing::TestParamInfo<CRealFile>& info)
{
    std::string sName = info.param.sName;
    std::replace(sName.begin(), sName.end(), '-', '_');
    return sName;
}

INSTANTIATE_TEST_SUITE_P(Ply, CPlyReaderRealFiles, testing::ValuesIn(c_aFiles), NameOf);

} // namespace
