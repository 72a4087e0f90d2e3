#include <formats/CoordSystemFromWkt.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr double c_dSurveyFoot = 1200.0 / 3937.0;
constexpr double c_dDegree = 0.0174532925199433;

const std::string c_sFeet = R"(PROJCS["Somewhere, ftUS",GEOGCS["G",UNIT["degree",0.0174532925199433]],)"
                            R"(UNIT["US survey foot",0.3048006096012192,AUTHORITY["EPSG","9003"]],)"
                            R"(AXIS["X",EAST],AUTHORITY["EPSG","2903"]])";

TEST(CoordSystemFromWkt, Projected_ItsOwnUnitNotThatOfItsDegrees)
{
    const CCoordSystem coords = CoordSystemFromWkt(c_sFeet);
    EXPECT_EQ(enumCoordSource::Wkt, coords.eSource);
    EXPECT_EQ("Somewhere, ftUS", coords.sName);
    EXPECT_EQ("EPSG:2903", coords.sCode);
    EXPECT_EQ("US survey foot", coords.plan.sName);
    EXPECT_NEAR(c_dSurveyFoot, coords.GetPlanMetres(), 1e-12);
    EXPECT_FALSE(coords.height.IsStated());
    EXPECT_NEAR(c_dSurveyFoot, coords.GetHeightMetres(), 1e-12); // as x and y
    EXPECT_EQ(c_sFeet, coords.sWkt);
}

TEST(CoordSystemFromWkt, Geographic_Degrees)
{
    const CCoordSystem coords = CoordSystemFromWkt(R"(GEOGCS["WGS 84",UNIT["Degree",0.017453292519943295]])");
    EXPECT_EQ("WGS 84", coords.sName);
    EXPECT_TRUE(coords.plan.bAngle);
    EXPECT_NEAR(c_dDegree, coords.plan.dSize, 1e-12);
    EXPECT_EQ(0.0, coords.GetPlanMetres());
    EXPECT_EQ(0.0, coords.GetHeightMetres());
}

TEST(CoordSystemFromWkt, Compound_HeightsHaveTheirOwnUnit)
{
    const CCoordSystem coords = CoordSystemFromWkt(
        R"(COMPD_CS["plan + height",PROJCS["plan",UNIT["metre",1]],VERT_CS["h",UNIT["US survey foot",0.304800609601219]]])");
    EXPECT_EQ("plan + height", coords.sName);
    EXPECT_EQ(1.0, coords.GetPlanMetres());
    EXPECT_EQ("US survey foot", coords.height.sName);
    EXPECT_NEAR(c_dSurveyFoot, coords.GetHeightMetres(), 1e-12);
}

// Writers have put heights behind the system and into it, and feet of size 1.
TEST(CoordSystemFromWkt, OddHeights_AreFound)
{
    const std::string sVert = R"(VERTCS["h",UNIT["US survey foot",1.0]])";
    const std::string sInside = c_sFeet.substr(0, c_sFeet.size() - 1) + "," + sVert + "]";
    for (const std::string& sText : {c_sFeet + "," + sVert, sInside})
    {
        const CCoordSystem coords = CoordSystemFromWkt(sText);
        EXPECT_EQ("Somewhere, ftUS", coords.sName);
        EXPECT_NEAR(c_dSurveyFoot, coords.GetPlanMetres(), 1e-12);
        EXPECT_NEAR(c_dSurveyFoot, coords.height.dSize, 1e-12) << sText;
    }
}

TEST(CoordSystemFromWkt, SecondVersion_UnitsOfAxes)
{
    const CCoordSystem coords = CoordSystemFromWkt(
        R"(BOUNDCRS[SOURCECRS[COMPOUNDCRS["both",PROJCRS["p",BASEGEOGCRS["g",ANGLEUNIT["degree",0.01745]],)"
        R"(CS[Cartesian,2],AXIS["E",east,LENGTHUNIT["foot",0.3048]],AXIS["N",north,LENGTHUNIT["foot",0.3048]]],)"
        R"(VERTCRS["v",CS[vertical,1],AXIS["H",up],LENGTHUNIT["metre",1]],ID["EPSG",7415]]],)"
        R"(TARGETCRS[GEOGCRS["other",ANGLEUNIT["degree",0.0174]]]])");
    EXPECT_EQ("foot", coords.plan.sName);
    EXPECT_EQ(0.3048, coords.GetPlanMetres());
    EXPECT_EQ(1.0, coords.GetHeightMetres());
    const CCoordSystem spatial = CoordSystemFromWkt(
        R"(GEOGCRS["3D",CS[ellipsoidal,3],AXIS["lat",north,ANGLEUNIT["degree",0.0174]],)"
        R"(AXIS["lon",east,ANGLEUNIT["degree",0.0174]],AXIS["h",up,LENGTHUNIT["foot",0.3048]],ID["EPSG",4979]])");
    EXPECT_EQ("EPSG:4979", spatial.sCode);
    EXPECT_TRUE(spatial.plan.bAngle);
    EXPECT_EQ(0.3048, spatial.GetHeightMetres());
    const CCoordSystem fromMiddle =
        CoordSystemFromWkt(R"(GEODCRS["c",CS[Cartesian,3],AXIS["X",other],UNIT["metre",1]])");
    EXPECT_EQ(1.0, fromMiddle.GetPlanMetres());
}

TEST(CoordSystemFromWkt, Nothing_OfWhatIsNone)
{
    for (const char* pText : {"", "hello", "UNIT[\"metre\",1]", "TOWGS84[0]", "\x01\x02"})
        EXPECT_FALSE(CoordSystemFromWkt(pText).IsStated()) << pText;
}

TEST(CoordSystemFromWkt, UnitWithoutASize_IsKnownByItsName)
{
    EXPECT_EQ(1.0, CoordSystemFromWkt(R"(PROJCS["p",UNIT["Meter"]])").GetPlanMetres());
    EXPECT_EQ(0.3048, CoordSystemFromWkt(R"(PROJCS["p",UNIT["Foot",nan]])").GetPlanMetres());
    EXPECT_EQ(0.0, CoordSystemFromWkt(R"(PROJCS["p",UNIT["cubit",-1]])").GetPlanMetres());
    EXPECT_EQ(0.0, CoordSystemFromWkt(R"(PROJCS["p"])").GetPlanMetres());
}

TEST(CoordSystemFromWkt, AnyByteChangedOrMissing)
{
    for (std::size_t n = 0; n < c_sFeet.size(); ++n)
    {
        CoordSystemFromWkt(c_sFeet.substr(0, n));
        for (const char c : {'[', ']', '"', ',', '\0', '9', '\xff'})
        {
            std::string sText = c_sFeet;
            sText[n] = c;
            CoordSystemFromWkt(sText);
        }
    }
}

} // namespace
