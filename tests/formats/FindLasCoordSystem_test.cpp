#include <formats/CLasGuard.h>
#include <tests/io/CMemFile.h>
#include <tests/support/LasBytes.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

CCoordSystem ReadOf(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    CLasGuard guard(file.GetPath());
    return guard.Check() ? guard.ReadCoordSystem() : CCoordSystem();
}

const std::string c_sMetres = R"(PROJCS["in metres",UNIT["metre",1]])";

TEST(FindLasCoordSystem, WithoutRecords_None)
{
    CLasFile file = LasOf(1, 2);
    EXPECT_FALSE(ReadOf(file.GetBytes()).IsStated());
    file.vecNamed = {{"somebody", 2112, c_sMetres}};
    EXPECT_FALSE(ReadOf(file.GetBytes()).IsStated());
}

TEST(FindLasCoordSystem, BothWays_TheMarkDecides)
{
    CLasFile file = LasOf(6, 2);
    file.vecNamed = LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9002}});
    file.vecNamed.push_back(LasWkt(c_sMetres + std::string(3, '\0')));
    EXPECT_EQ("foot", ReadOf(file.GetBytes()).plan.sName);
    file.nEncoding = 16;
    const CCoordSystem coords = ReadOf(file.GetBytes());
    EXPECT_EQ("metre", coords.plan.sName);
    EXPECT_EQ(c_sMetres, coords.sWkt);
    file.vecNamed.pop_back(); // the mark is wrong
    EXPECT_EQ("foot", ReadOf(file.GetBytes()).plan.sName);
}

TEST(FindLasCoordSystem, SeveralOfAKind_TheFirstCounts)
{
    CLasFile file = LasOf(6, 2);
    file.nEncoding = 16;
    file.vecNamed = {LasWkt(c_sMetres), LasWkt(R"(PROJCS["in feet",UNIT["foot",0.3048]])")};
    EXPECT_EQ("in metres", ReadOf(file.GetBytes()).sName);
    file = LasOf(1, 2);
    file.vecNamed = LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9002}});
    for (const auto& later : LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9001}}))
        file.vecNamed.push_back(later);
    EXPECT_EQ("foot", ReadOf(file.GetBytes()).plan.sName);
}

TEST(FindLasCoordSystem, RecordsBehindThePoints_Count)
{
    CLasFile file = LasOf(6, 2);
    file.vecLater = {{"somebody", 1, "abc"}, LasWkt(c_sMetres)};
    EXPECT_EQ("in metres", ReadOf(file.GetBytes()).sName);
    const std::string sBytes = file.GetBytes();
    for (std::size_t n = sBytes.size() - 200; n < sBytes.size(); ++n)
        ReadOf(sBytes.substr(0, n));
}

TEST(FindLasCoordSystem, AnyByteChangedOrMissing)
{
    CLasFile file = LasOf(6, 1);
    file.vecNamed = LasGeoKeys(
        {{1024, 0, 1, 1}, {3072, 0, 1, 32767}, {3073, 34737, 3, 0}, {3077, 34736, 1, 0}}, {0.5}, "ab|");
    file.vecLater = {LasWkt(c_sMetres)};
    const std::string sBytes = file.GetBytes();
    for (std::size_t n = 0; n < sBytes.size(); ++n)
    {
        ReadOf(sBytes.substr(0, n));
        for (const int nValue : {0, 1, 0x7f, 0x80, 0xff})
        {
            std::string sChanged = sBytes;
            sChanged[n] = static_cast<char>(nValue);
            ReadOf(sChanged);
        }
    }
}

TEST(FindLasCoordSystem, RealFiles)
{
    const std::filesystem::path folder = GetRealFolder() / "las";
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no " << folder << "; ZOR4DATA_TEST_DATA says where real files are";
    const auto readFile = [&](const char* pName)
    {
        CLasGuard guard((folder / pName).c_str());
        EXPECT_TRUE(guard.Check()) << pName;
        return guard.ReadCoordSystem();
    };
    const CCoordSystem keys = readFile("autzen_trim.las");
    EXPECT_EQ(enumCoordSource::GeoKeys, keys.eSource);
    EXPECT_EQ("NAD_1983_HARN_Lambert_Conformal_Conic", keys.sName);
    EXPECT_EQ(0.3048, keys.GetPlanMetres());
    EXPECT_EQ(0.3048, readFile("autzen_trim_7.las").GetPlanMetres());
    const CCoordSystem survey = readFile("test1_4.las");
    EXPECT_EQ("EPSG:2903", survey.sCode);
    EXPECT_NEAR(0.3048006, survey.GetPlanMetres(), 1e-6);
    EXPECT_NEAR(0.3048006, survey.GetHeightMetres(), 1e-6);
    const CCoordSystem compound = readFile("1.2-with-color.copc.laz");
    EXPECT_EQ(1.0, compound.GetPlanMetres());
    EXPECT_NEAR(0.3048006, compound.GetHeightMetres(), 1e-6);
    EXPECT_TRUE(readFile("epsg_4326.las").plan.bAngle);
    EXPECT_TRUE(readFile("simple1_4.las").plan.bAngle);
    EXPECT_EQ("WGS 84 / UTM zone 23S", readFile("fullwave.laz").sName);
    EXPECT_EQ(1.0, readFile("ign_semis_2023_0292_6833.laz").GetPlanMetres());
    EXPECT_EQ("EPSG:2949", readFile("Topography.las").sCode);
    EXPECT_FALSE(readFile("ahn3_delft.laz").IsStated());
}

} // namespace
