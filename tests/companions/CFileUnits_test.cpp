// The units that a file states its coordinates to be in.

#include <tests/companions/SmallFiles.h>
#include <zor4data/CFileUnits.h>

#include <gtest/gtest.h>

namespace
{

CFileUnits UnitsOf(const std::string& sBytes, enumPntCldFile eType = PntCldFile_Las)
{
    const CMemFile file(sBytes);
    return FindFileUnits(file.GetPath(), eType);
}

CFileUnits UnitsOfRecords(const std::vector<CLasNamedRecord>& vecNamed)
{
    CLasFile file = LasOf(1, 5);
    file.vecNamed = vecNamed;
    return UnitsOf(file.GetBytes());
}

TEST(CFileUnits, Feet_OfPlanAndHeight)
{
    const CFileUnits units = UnitsOfRecords(LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9003}}));
    EXPECT_EQ(units.plan.sName, "US survey foot");
    EXPECT_EQ(units.plan.dMetres, 1200.0 / 3937.0);
    EXPECT_FALSE(units.plan.bAngle);
    EXPECT_EQ(units.height.sName, units.plan.sName);
    EXPECT_EQ(units.height.dMetres, units.plan.dMetres);
}

TEST(CFileUnits, HeightsInAnotherUnit_HaveTheirs)
{
    const CFileUnits units = UnitsOfRecords(
        {LasWkt("COMPD_CS[\"c\",PROJCS[\"p\",UNIT[\"metre\",1]],VERT_CS[\"v\",UNIT[\"foot\",0.3048]]]")});
    EXPECT_EQ(units.plan.dMetres, 1.0);
    EXPECT_EQ(units.height.sName, "foot");
    EXPECT_EQ(units.height.dMetres, 0.3048);
}

TEST(CFileUnits, Degrees_AreAngles)
{
    const CFileUnits units = UnitsOfRecords(LasGeoKeys({{1024, 0, 1, 2}, {2048, 0, 1, 4326}}));
    EXPECT_TRUE(units.plan.bAngle);
    EXPECT_EQ(units.plan.dMetres, 0.0);
    EXPECT_EQ(units.height.sName, "");
}

TEST(CFileUnits, NotStated_None)
{
    for (const CFileUnits& units :
         {UnitsOf(LasOf(1, 5).GetBytes()), UnitsOf(SmallPly(), PntCldFile_Ply), UnitsOf(SmallPly()),
          UnitsOf(SmallGrid(), PntCldFile_AsciiGrid), UnitsOf(SmallNative(PntCldType_Pnt), PntCldFile_Native),
          FindFileUnits("/missing", PntCldFile_Las), UnitsOf("", static_cast<enumPntCldFile>(-1))})
    {
        EXPECT_EQ(units.plan.sName + units.height.sName, "");
        EXPECT_EQ(units.plan.dMetres + units.height.dMetres, 0.0);
    }
}

} // namespace
