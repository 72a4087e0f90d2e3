#include <formats/CGeoKeys.h>
#include <formats/EpsgFeet.h>

#include <gtest/gtest.h>

namespace
{

constexpr double c_dSurveyFoot = 1200.0 / 3937.0;

CGeoKeys KeysOf(const std::vector<std::uint16_t>& vecKeys)
{
    CGeoKeys keys;
    keys.vecDirectory = {1, 1, 0, static_cast<std::uint16_t>(vecKeys.size() / 4)};
    keys.vecDirectory.insert(keys.vecDirectory.end(), vecKeys.begin(), vecKeys.end());
    return keys;
}

TEST(CGeoKeys, Projected_NameCodeAndUnits)
{
    CGeoKeys keys = KeysOf({1024, 0, 1,    1, 1026, 34737, 8,    0, 3072, 0,    1,    2903, 3073, 34737,
                            6,    8, 3076, 0, 1,    9003,  4096, 0, 1,    5703, 4099, 0,    1,    9001});
    keys.sTexts = "unknown|Place|rest";
    const CCoordSystem coords = keys.GetCoordSystem();
    EXPECT_EQ(enumCoordSource::GeoKeys, coords.eSource);
    EXPECT_EQ("Place", coords.sName);
    EXPECT_EQ("EPSG:2903", coords.sCode);
    EXPECT_EQ("US survey foot", coords.plan.sName);
    EXPECT_NEAR(c_dSurveyFoot, coords.GetPlanMetres(), 1e-15);
    EXPECT_EQ(1.0, coords.GetHeightMetres());
}

TEST(CGeoKeys, Geographic_DegreesUnlessItSaysOtherwise)
{
    const CCoordSystem degrees = KeysOf({1024, 0, 1, 2, 2048, 0, 1, 4326}).GetCoordSystem();
    EXPECT_EQ("EPSG:4326", degrees.sCode);
    EXPECT_EQ("degree", degrees.plan.sName);
    EXPECT_TRUE(degrees.plan.bAngle);
    EXPECT_EQ("grad", KeysOf({1024, 0, 1, 2, 2054, 0, 1, 9105}).GetCoordSystem().plan.sName);
    EXPECT_TRUE(KeysOf({2048, 0, 1, 4326}).GetCoordSystem().plan.bAngle); // without a model
}

TEST(CGeoKeys, Geocentric_ItsOwnNameAndUnitOfLength)
{
    CGeoKeys keys = KeysOf({1024, 0, 1, 3, 1026, 34737, 6, 0, 2052, 0, 1, 9002});
    EXPECT_EQ("foot", keys.GetCoordSystem().plan.sName);
    EXPECT_FALSE(keys.GetCoordSystem().plan.bAngle);
    EXPECT_EQ("geocentric", keys.GetCoordSystem().sName); // the text is not there
    keys.sTexts = "Earth|";
    EXPECT_EQ("Earth", keys.GetCoordSystem().sName);
}

TEST(CGeoKeys, CodeAlone_TellsFeet)
{
    EXPECT_EQ("foot", KeysOf({1024, 0, 1, 1, 3072, 0, 1, 2992}).GetCoordSystem().plan.sName);
    EXPECT_EQ("US survey foot", KeysOf({3072, 0, 1, 2264}).GetCoordSystem().plan.sName);
    EXPECT_FALSE(KeysOf({1024, 0, 1, 1, 3072, 0, 1, 2949}).GetCoordSystem().plan.IsStated());
    EXPECT_EQ("US survey foot", KeysOf({1024, 0, 1, 1, 3072, 0, 1, 26915, 3076, 0, 1, 9001, 4096, 0, 1, 6360})
                                    .GetCoordSystem()
                                    .height.sName);
}

TEST(CGeoKeys, UserDefinedUnit_HasItsSize)
{
    CGeoKeys keys = KeysOf({1024, 0, 1, 1, 3072, 0, 1, 32767, 3076, 0, 1, 32767, 3077, 34736, 1, 1});
    keys.vecDoubles = {7.0, 0.25};
    EXPECT_EQ("", keys.GetCoordSystem().sCode);
    EXPECT_EQ(0.25, keys.GetCoordSystem().GetPlanMetres());
    keys.vecDoubles.pop_back();
    EXPECT_FALSE(keys.GetCoordSystem().plan.IsStated());
}

TEST(CGeoKeys, Damaged_NothingOutsideIsRead)
{
    EXPECT_FALSE(CGeoKeys().GetCoordSystem().IsStated());
    EXPECT_FALSE(KeysOf({}).GetCoordSystem().IsStated());
    CGeoKeys keys = KeysOf({1024, 0, 1, 1, 3073, 34737, 60000, 2, 3077, 34736, 1, 65535, 3076, 0, 1});
    keys.vecDirectory[3] = 65535;
    keys.sTexts = "ab\x01";
    const CCoordSystem coords = keys.GetCoordSystem();
    EXPECT_EQ("?", coords.sName);
    EXPECT_FALSE(coords.plan.IsStated());
    for (std::size_t n = 0; n < keys.vecDirectory.size(); ++n)
    {
        CGeoKeys part = keys;
        part.vecDirectory.resize(n);
        part.GetCoordSystem();
    }
}

TEST(EpsgFeet, FeetAndNothingElse)
{
    EXPECT_EQ(9002, FindFeetOfProjection(2992));
    EXPECT_EQ(9003, FindFeetOfProjection(2225));
    EXPECT_EQ(9003, FindFeetOfProjection(3508));
    for (const int nCode : {0, -1, 2991, 2993, 4326, 26915, 32617, 32767, 3857})
        EXPECT_EQ(0, FindFeetOfProjection(nCode)) << nCode;
    EXPECT_EQ(9003, FindFeetOfHeights(6360));
    EXPECT_EQ(0, FindFeetOfHeights(5703));
}

} // namespace
