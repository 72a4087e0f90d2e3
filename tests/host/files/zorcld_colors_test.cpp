// Colours that were never filled: what the commands say of them, and what pictures show.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace
{

/// A grid of 20 × 20 points with colours, all of them the same.
std::string MakeColorPly(const char* pColor)
{
    std::string sBytes = MakeGridPly(20);
    const std::string sOld = "\xC8\x64\x32";
    for (std::size_t nPos = 0; (nPos = sBytes.find(sOld, nPos)) != std::string::npos; nPos += 3)
        sBytes.replace(nPos, 3, pColor, 3);
    return sBytes;
}

CLasFile LasWithColor(int nFormat, std::uint16_t nColor)
{
    CLasFile las = LasOf(nFormat, 50);
    for (CLasPnt& pnt : las.vecPnts)
        pnt.anColor = {nColor, 0, 0};
    return las;
}

std::vector<std::string> GetCodes(const CZorcld& zorcld, const std::string& sFile)
{
    const nlohmann::json check = nlohmann::json::parse(zorcld.Run({"check", "--json", sFile}).sOut);
    std::vector<std::string> vecCodes;
    for (const nlohmann::json& warning : check["files"][0]["warnings"])
        vecCodes.push_back(warning["code"]);
    return vecCodes;
}

using TCodes = std::vector<std::string>;

constexpr const char* c_sZero = "colour fields are all 0";

} // namespace

TEST(ZorcldColors, AllZero_CheckAndInfoSaySo)
{
    const CZorcld zorcld;
    const std::string sPly = zorcld.Write("zero.ply", MakeColorPly("\0\0\0"));
    const std::string sCld = zorcld.GetPath("zero.cld");
    ASSERT_EQ(zorcld.Run({"convert", sPly, sCld}).nStatus, 0);
    for (const std::string& sFile : {sPly, sCld})
    {
        EXPECT_EQ(GetCodes(zorcld, sFile), TCodes{"color-zero"});
        const CRun run = zorcld.Run({"info", sFile});
        EXPECT_NE(run.sOut.find("Colour              its fields are all 0\n"), std::string::npos) << run.sOut;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find(c_sZero), std::string::npos) << run.sErr;
        const nlohmann::json info = nlohmann::json::parse(zorcld.Run({"info", "-q", "--json", sFile}).sOut);
        EXPECT_EQ(info["color"], true);
        ASSERT_EQ(info["warnings"].size(), 1U);
        EXPECT_NE(info["warnings"][0].get<std::string>().find(c_sZero), std::string::npos);
    }
    EXPECT_EQ(GetCodes(zorcld, zorcld.Write("one.ply", MakeColorPly("\0\0\1"))), TCodes{});
}

TEST(ZorcldColors, AllZero_PicturesShowHeightsUnlessToldOtherwise)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("zero.ply", MakeColorPly("\0\0\0"));
    const auto draw = [&](const std::vector<std::string>& vecCommand, const std::string& sColor)
    {
        const std::string sOut = zorcld.GetPath("out.png");
        std::vector<std::string> vecArgs = vecCommand;
        vecArgs.insert(vecArgs.begin() + 1, sFile);
        vecArgs.insert(vecArgs.end(), {sOut, "--color", sColor, "--size", "300x300"});
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        const std::size_t nPos = run.sErr.find(c_sZero);
        EXPECT_NE(nPos, std::string::npos) << run.sErr;
        EXPECT_EQ(run.sErr.find(c_sZero, nPos + 1), std::string::npos) << run.sErr; // said once
        return ReadBytes(sOut);
    };
    for (const std::vector<std::string>& vecCommand : std::vector<std::vector<std::string>>{
             {"view", "-o"}, {"profile", "--line", "0,0,19,19,2", "-o"}, {"ground", "--picture"}})
    {
        const std::string sHeight = draw(vecCommand, "height");
        EXPECT_EQ(draw(vecCommand, "auto"), sHeight) << vecCommand[0];
        EXPECT_NE(draw(vecCommand, "file"), sHeight) << vecCommand[0];
    }
}

// Where no colour is taken there is none to ask for.
TEST(ZorcldColors, AllZeroAndNotTaken_ColorFileIsNotAdvised)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    CLasFile las = LasOf(7, 20);
    for (CLasPnt& pnt : las.vecPnts)
        pnt.anColor = {};
    const std::string sFile = zorcld.Write("zero.las", las.GetBytes());
    for (const char* pCommand : {"info", "check"})
    {
        const CRun run = zorcld.Run({pCommand, sFile});
        EXPECT_NE((run.sErr + run.sOut).find("colour fields are all 0"), std::string::npos) << pCommand;
        EXPECT_EQ((run.sErr + run.sOut).find("--color"), std::string::npos) << pCommand;
    }
}

TEST(ZorcldColors, NotANumber_IsNoSizeAndNoScale)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    EXPECT_EQ(zorcld.Run({"view", sFile, "--point-size", "nan", "-o", zorcld.GetPath("o.png")}).nStatus, 2);
    EXPECT_EQ(zorcld.Run({"ground", sFile, "--unit-scale", "nan"}).nStatus, 2);
}

// A format whose colours are not taken loses nothing where they are all black.
TEST(ZorcldColors, NotTaken_SaidOnlyWhereAColorIsNotZero)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    for (const int nFormat : {2, 3, 5, 7, 8, 10})
    {
        const std::string sZero = zorcld.Write("zero.las", LasWithColor(nFormat, 0).GetBytes());
        EXPECT_EQ(GetCodes(zorcld, sZero), TCodes{"color-zero"}) << nFormat;
        const CRun zero = zorcld.Run({"info", sZero});
        EXPECT_NE(zero.sErr.find(c_sZero), std::string::npos) << zero.sErr;
        EXPECT_EQ(zero.sErr.find("not taken"), std::string::npos) << zero.sErr;

        CLasFile las = LasWithColor(nFormat, 0);
        las.vecPnts.back().anColor = {0, 0, 255};
        const std::string sFile = zorcld.Write("blue.las", las.GetBytes());
        const bool bTaken = nFormat < 7;
        EXPECT_EQ(GetCodes(zorcld, sFile), bTaken ? TCodes{} : TCodes{"las-color"}) << nFormat;
        const CRun run = zorcld.Run({"info", sFile});
        EXPECT_EQ(run.sErr.find("colours are not taken") != std::string::npos, !bTaken) << run.sErr;
    }
}
