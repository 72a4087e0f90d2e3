// What `convert` and `check` make of LAZ files.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LazBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstring>
#include <string>

namespace
{

/// 40 points of which all but the first two lie above the second, colours of 16 bits.
std::string MakeLaz(int nFormat)
{
    CLasFile las = LasOf(nFormat, 40);
    las.adScale = {0.25, 0.25, 0.25};
    for (std::size_t i = 2; i < las.vecPnts.size(); ++i)
    {
        las.vecPnts[i].x = las.vecPnts[1].x;
        las.vecPnts[i].y = las.vecPnts[1].y;
    }
    for (CLasPnt& pnt : las.vecPnts)
        pnt.anColor = {0x1234, 0x00FF, 0xFFFF};
    return LazBytes(las, 16);
}

nlohmann::json GetWarnings(const CZorcld& zorcld, const std::string& sFile)
{
    const CRun run = zorcld.Run({"check", "--json", sFile});
    return nlohmann::json::parse(run.sOut)["files"][0]["warnings"];
}

std::vector<std::string> GetCodes(const CZorcld& zorcld, const std::string& sFile)
{
    std::vector<std::string> vecCodes;
    for (const nlohmann::json& warning : GetWarnings(zorcld, sFile))
        vecCodes.push_back(warning["code"]);
    return vecCodes;
}

using TCodes = std::vector<std::string>;

TEST(ZorcldLaz, Convert_PlyGetsAllPnts)
{
    const CZorcld zorcld;
    for (const int nFormat : {1, 3, 8})
    {
        const std::string sOut = zorcld.GetPath("out.ply");
        const CRun run = zorcld.Run({"convert", zorcld.Write("in.laz", MakeLaz(nFormat)), sOut});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_NE(run.sErr.find(nFormat == 1 ? "out.ply: 40 points\n" : "out.ply: 40 points with colour\n"),
                  std::string::npos)
            << run.sErr;
        EXPECT_EQ(run.sErr.find("removed"), std::string::npos) << run.sErr;
        const std::string sHead = ReadBytes(sOut);
        EXPECT_NE(sHead.find("element vertex 40\n"), std::string::npos);
        EXPECT_EQ(sHead.find("property uchar red") != std::string::npos, nFormat != 1);
    }
}

// All channels alike, of 16 bits: none is taken as one of 8.
TEST(ZorcldLaz, Convert_KeepsColorsOfEveryFormat)
{
    const CZorcld zorcld;
    for (const int nFormat : {2, 3, 5, 7, 8, 10})
    {
        const std::string sOut = zorcld.GetPath("out.cld");
        const CRun run = zorcld.Run({"convert", zorcld.Write("in.laz", MakeLaz(nFormat)), sOut});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_NE(run.sErr.find(" points with colour, "), std::string::npos) << run.sErr;
        EXPECT_NE(run.sErr.find(" removed at the x and y of another"), std::string::npos) << run.sErr;
        const std::string sCsv = zorcld.GetPath("points.csv");
        EXPECT_EQ(zorcld.Run({"points", sOut, "-o", sCsv}).nStatus, 0);
        EXPECT_NE(ReadBytes(sCsv).find("0.0000,0.0000,25.0000,18,0,255"), std::string::npos)
            << ReadBytes(sCsv);
    }
}

TEST(ZorcldLaz, Check_SeesThePnts)
{
    const CZorcld zorcld;
    EXPECT_EQ(GetCodes(zorcld, zorcld.Write("in.laz", LazBytes(LasOf(0, 100), 16))), TCodes{});
    EXPECT_EQ(GetCodes(zorcld, zorcld.Write("in.laz", MakeLaz(1))), TCodes{"stacked-points"});
    EXPECT_EQ(GetCodes(zorcld, zorcld.Write("in.laz", MakeLaz(3))),
              (TCodes{"stacked-points", "color-16-bit"}));
    const std::string sLater = zorcld.Write("in.laz", LazBytes(LasOf(7, 3), 16));
    EXPECT_EQ(GetCodes(zorcld, sLater), TCodes{"las-color"}); // so it does not matter that they have 16 bits
    EXPECT_NE(GetWarnings(zorcld, sLater)[0]["help"].get<std::string>().find("zorcld convert"),
              std::string::npos);
    for (const int nFormat : {7, 8, 10})
    {
        CLasFile las = LasOf(nFormat, 100);
        for (CLasPnt& pnt : las.vecPnts)
            pnt.anColor = {};
        EXPECT_EQ(GetCodes(zorcld, zorcld.Write("in.laz", LazBytes(las, 16))), TCodes{"color-zero"});
        las.vecPnts.back().anColor = {0, 1, 0};
        EXPECT_EQ(GetCodes(zorcld, zorcld.Write("in.laz", LazBytes(las, 16))), TCodes{"las-color"});
    }
    CLasFile wide = LasOf(1, 5);
    wide.adScale = {1.0, 1.0, 1.0};
    wide.vecPnts[4].x = 300000;
    EXPECT_EQ(GetCodes(zorcld, zorcld.Write("in.laz", LazBytes(wide, 16))), TCodes{"span"});
}

// Chunks of 16 points: the last one holds 4, which in layers it says, and else only reading it tells.
TEST(ZorcldLaz, CountTooLow_CheckSaysSoAndConvertTakesAll)
{
    const CZorcld zorcld;
    for (const int nFormat : {1, 3, 6, 7})
        for (const int nCount : {0, 1, 15, 16, 60, 99})
        {
            std::string sBytes = LazBytes(LasOf(nFormat, 100), 16);
            sBytes[nFormat < 6 ? 107 : 247] = static_cast<char>(nCount);
            const std::string sFile = zorcld.Write("in.laz", sBytes);
            const nlohmann::json warnings = GetWarnings(zorcld, sFile);
            ASSERT_FALSE(warnings.empty()) << nFormat << ' ' << nCount;
            EXPECT_EQ(warnings[0]["code"], "las-count");
            EXPECT_EQ(warnings.dump().find("las-count"), warnings.dump().rfind("las-count")) << warnings;
            EXPECT_NE(warnings[0]["text"].get<std::string>().find(" are there: those behind"),
                      std::string::npos)
                << warnings;
            const std::string sOut = zorcld.GetPath("out.ply");
            EXPECT_EQ(zorcld.Run({"convert", sFile, sOut}).nStatus, 0);
            EXPECT_NE(ReadBytes(sOut).find("element vertex 100\n"), std::string::npos)
                << nFormat << ' ' << nCount;
        }
}

TEST(ZorcldLaz, CountTooHigh_CommandsNameConvert)
{
    const CZorcld zorcld;
    std::string sBytes = LazBytes(LasOf(6, 100), 16);
    sBytes[247] = static_cast<char>(120);
    const std::string sFile = zorcld.Write("in.laz", sBytes);
    const nlohmann::json warnings = GetWarnings(zorcld, sFile);
    ASSERT_EQ(warnings.size(), 1U) << warnings;
    EXPECT_EQ(warnings[0]["code"], "las-count");
    ASSERT_TRUE(warnings[0]["help"].is_string()) << warnings;
    const std::string sHelp = warnings[0]["help"];
    EXPECT_NE(sHelp.find("zorcld convert"), std::string::npos);
    for (const std::vector<std::string>& vecArgs :
         {std::vector<std::string>{"info", sFile}, {"view", sFile, "-o", zorcld.GetPath("out.png")}})
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0);
        EXPECT_NE(run.sErr.find("damaged or cut off; what helps: " + sHelp), std::string::npos) << run.sErr;
    }
    EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("out.cld")}).nStatus, 0);
}

TEST(ZorcldLaz, DamagedPnts)
{
    const CZorcld zorcld;
    std::string sBytes = LazBytes(LasOf(1, 100), 16);
    sBytes[108] = 1; // 356 points
    const std::string sFile = zorcld.Write("in.laz", sBytes);
    EXPECT_EQ(GetCodes(zorcld, sFile), TCodes{"las-count"});
    const CRun run = zorcld.Run({"convert", sFile, zorcld.GetPath("out.ply")});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(run.sErr.find("its header announces 356 points, but 1"), std::string::npos) << run.sErr;

    // Without their table, chunks of one size are read all the same, others are not.
    const std::string sCut = zorcld.Write("cut.laz", sBytes.substr(0, sBytes.size() - 5));
    EXPECT_EQ(GetCodes(zorcld, sCut), TCodes{"las-count"});
    sBytes = LazBytes(LasOf(1, 100), 0xFFFFFFFF);
    zorcld.Write("cut.laz", sBytes.substr(0, sBytes.size() - 5));
    const CRun check = zorcld.Run({"check", sCut});
    EXPECT_EQ(check.nStatus, 1);
    EXPECT_NE(check.sOut.find("the table of its compressed points"), std::string::npos) << check.sOut;
    EXPECT_EQ(zorcld.Run({"convert", sCut, zorcld.GetPath("none.ply")}).nStatus, 1);
}

/// The file with another count in its header.
std::string WithCount(std::string sBytes, std::uint32_t nNumPnts)
{
    std::memcpy(sBytes.data() + 107, &nNumPnts, sizeof nNumPnts);
    return sBytes;
}

/// 300 points that are no straight line, so that each takes bytes of its own.
std::string MakeWildLaz(int nFormat, unsigned nChunkSize)
{
    CLasFile las = LasOf(nFormat, 300);
    std::uint32_t n = 1;
    for (CLasPnt& pnt : las.vecPnts)
    {
        pnt.anColor = {0x1234, 0x5678, 0xFFFF};
        for (std::int32_t* const pCoord : {&pnt.x, &pnt.y, &pnt.z})
            *pCoord = static_cast<std::int32_t>((n = n * 1664525U + 1013904223U) >> 12U);
    }
    return LazBytes(las, nChunkSize, true);
}

/// The only chunk of a file, without the table: as one stream.
std::string MakeOneStream(const std::string& sChunked)
{
    std::uint32_t nPosPnts = 0;
    std::int64_t nPosTable = 0;
    std::memcpy(&nPosPnts, sChunked.data() + 96, sizeof nPosPnts);
    std::memcpy(&nPosTable, sChunked.data() + nPosPnts, sizeof nPosTable);
    std::string sBytes = sChunked.substr(0, nPosPnts) +
                         sChunked.substr(nPosPnts + 8, static_cast<std::size_t>(nPosTable) - nPosPnts - 8);
    std::uint16_t nHeaderSize = 0;
    std::memcpy(&nHeaderSize, sChunked.data() + 94, sizeof nHeaderSize);
    sBytes[std::size_t{nHeaderSize} + 54] = 1; // the compressor
    return sBytes;
}

// Behind the last point stands the table of chunks, which is no points.
TEST(ZorcldLaz, CountTooHigh_NoPntBehindTheData)
{
    const CZorcld zorcld;
    for (const int nFormat : {1, 3})
        for (const unsigned nChunkSize : {50000U, 200U, 100U})
            for (const std::uint32_t nMore : {1U, 10U, 1000U})
            {
                const std::string sFile =
                    zorcld.Write("in.laz", WithCount(MakeWildLaz(nFormat, nChunkSize), 300 + nMore));
                const nlohmann::json info =
                    nlohmann::json::parse(zorcld.Run({"info", "-q", "--json", sFile}).sOut);
                EXPECT_EQ(info["never_there"], nMore) << nFormat << ' ' << nChunkSize;
                EXPECT_EQ(GetCodes(zorcld, sFile), TCodes{"las-count"});
                EXPECT_NE(
                    GetWarnings(zorcld, sFile)[0]["text"].get<std::string>().find("but 300 could be read"),
                    std::string::npos);
            }
}

TEST(ZorcldLaz, OneStream_BytesBehindTheAnnouncedPntsAreTold)
{
    const CZorcld zorcld;
    const std::string sStream = MakeOneStream(MakeWildLaz(1, 50000));
    const std::string sGood = zorcld.Write("good.laz", sStream);
    EXPECT_EQ(GetCodes(zorcld, sGood), TCodes());
    const std::string sLow = zorcld.Write("low.laz", WithCount(sStream, 200));
    ASSERT_EQ(GetCodes(zorcld, sLow), TCodes{"las-bytes"});
    EXPECT_TRUE(GetWarnings(zorcld, sLow)[0]["help"].is_null());
    EXPECT_EQ(
        GetWarnings(zorcld, sLow)[0]["text"].get<std::string>().find("its header announces 200 points, and "),
        0U);
}

} // namespace
