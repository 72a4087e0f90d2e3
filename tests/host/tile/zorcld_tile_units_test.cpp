// What is said of units of tiles is what is said of the file that they were cut from.
#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace
{

/// A small square of points in two tiles whose folder has the name of the file, which is in the pictures.
class ZorcldTileUnits : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!CZorcld::HasLaszip())
            GTEST_SKIP() << "LAS is not read";
        for (const char* pFolder : {"cut", "was"})
            std::filesystem::create_directory(m_zorcld.GetPath(pFolder));
    }

    void Cut(const std::vector<CLasNamedRecord>& vecRecords, const std::vector<std::string>& vecMore = {})
    {
        CLasFile las = LasOf(0, 0);
        las.adScale = {0.01, 0.01, 1.0};
        for (int i = 0; i < 400; ++i)
            las.vecPnts.push_back({i % 20, i / 20, i % 3, {}});
        las.vecNamed = vecRecords;
        m_sFile = m_zorcld.Write("was/o.las", las.GetBytes());
        m_sTiles = m_zorcld.GetPath("cut/o.las");
        std::filesystem::remove_all(m_sTiles);
        std::vector<std::string> vecArgs = {"tile",   m_sFile, "-o",       m_sTiles,
                                            "--size", "0.1",   "--buffer", "0.1"};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        const CRun run = m_zorcld.Run(vecArgs);
        ASSERT_EQ(run.nStatus, 0) << run.sErr;
    }

    /// @return the picture. Leaves what is said beside it, but for the folder.
    std::string View(const std::string& sInput, const std::vector<std::string>& vecMore)
    {
        std::vector<std::string> vecArgs = {"view",   sInput,   "-o", m_zorcld.GetPath("o.png"),
                                            "--size", "200x200"};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        const CRun run = m_zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        m_sSaid = run.sErr;
        for (const std::string& sFolder : {m_zorcld.GetPath("cut/"), m_zorcld.GetPath("was/")})
            for (std::size_t n = m_sSaid.find(sFolder); n != std::string::npos; n = m_sSaid.find(sFolder))
                m_sSaid.erase(n, sFolder.size());
        return ReadBytes(m_zorcld.GetPath("o.png"));
    }

    /// @return its distance, with the unit and what that comes to.
    std::string Outline(const std::string& sInput) const
    {
        const CRun run =
            m_zorcld.Run({"outline", sInput, "--distance", "0.04", "-o", m_zorcld.GetPath("o.wkt")});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return run.sOut.substr(std::min(run.sOut.find("distance"), run.sOut.size()));
    }

    void ExpectTheSame()
    {
        EXPECT_EQ(Outline(m_sTiles), Outline(m_sFile));
        for (const std::vector<std::string>& vecMore :
             {std::vector<std::string>(), std::vector<std::string>{"--unit", "ft"}})
        {
            const std::string sWanted = View(m_sFile, vecMore);
            const std::string sSaid = m_sSaid;
            EXPECT_TRUE(View(m_sTiles, vecMore) == sWanted);
            EXPECT_EQ(m_sSaid, sSaid);
        }
    }

    const CZorcld m_zorcld;
    std::string m_sFile;
    std::string m_sTiles;
    std::string m_sSaid;
};

} // namespace

TEST_F(ZorcldTileUnits, Lengths_LabelsAndNotesAreThoseOfTheFile)
{
    for (const int nUnit : {9003, 9096}) // survey foot, yard
    {
        SCOPED_TRACE(nUnit);
        Cut(LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, static_cast<std::uint16_t>(nUnit)}}));
        ExpectTheSame();
    }
    EXPECT_NE(Outline(m_sTiles).find("distance 0.04 yard"), std::string::npos) << Outline(m_sTiles);
    Cut({LasWkt("COMPD_CS[\"c\",PROJCS[\"p\",UNIT[\"metre\",1]],VERT_CS[\"v\",UNIT[\"foot\",0.3048]]]")});
    ExpectTheSame();
    Cut({});
    ExpectTheSame();
}

TEST_F(ZorcldTileUnits, Angles_LabelsAndNotesAreThoseOfTheFile)
{
    Cut({LasWkt("GEOGCS[\"g\",UNIT[\"degree\",0.0174532925199433]]")});
    EXPECT_EQ(ReadManifest(m_sTiles)["radians_per_unit"], 0.0174532925199433);
    ExpectTheSame();
    EXPECT_NE(Outline(m_sTiles).find("degrees, about 4.45e+03 m to the north"), std::string::npos);
    Cut({LasWkt("COMPD_CS[\"c\",GEOGCS[\"g\",UNIT[\"degree\",0.0174532925199433]],"
                "VERT_CS[\"v\",UNIT[\"metre\",1]]]")});
    ExpectTheSame();
    Cut({LasWkt("GEOGCS[\"g\",UNIT[\"grad\",0.015707963267949]]")});
    ExpectTheSame();
}

TEST_F(ZorcldTileUnits, UnitGivenWhenCut_IsThatOfTheLabels)
{
    Cut({LasWkt("GEOGCS[\"g\",UNIT[\"degree\",0.0174532925199433]]")}, {"--unit-scale", "0.3048"});
    EXPECT_FALSE(ReadManifest(m_sTiles).contains("radians_per_unit"));
    EXPECT_NE(Outline(m_sTiles).find("distance 0.04 ft"), std::string::npos) << Outline(m_sTiles);
}
