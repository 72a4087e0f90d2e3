// Commands that meet a file which `convert` mends name the command that mends it, and no other command.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <limits>
#include <set>

#include <unistd.h>

namespace
{

using TArgs = std::vector<std::string>;

const std::string c_sGridHead = "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value -1\n";

/// Every command that takes files as the library does, without the file, which stands behind its name.
const std::vector<TArgs> c_vecCommands = {{"info"},
                                          {"view", "--size", "200x200", "-o", "out.png"},
                                          {"points", "-o", "out.csv"},
                                          {"count", "--rect", "0,0,9,9"},
                                          {"outline", "--distance", "auto", "-o", "out.wkt"},
                                          {"profile", "--line", "0,0,9,9,1", "-o", "out.csv"},
                                          {"ground", "-o", "out.csv"}};

std::string Replace(std::string sText, const std::string& sOld, const std::string& sNew)
{
    return sText.replace(sText.find(sOld), sOld.size(), sNew);
}

std::string PackDoubles(const std::vector<double>& vecValues)
{
    return {reinterpret_cast<const char*>(vecValues.data()), vecValues.size() * sizeof(double)};
}

std::string MakeDoublePly(const std::vector<double>& vecCoords)
{
    return MakePlyHeader("element vertex " + std::to_string(vecCoords.size() / 3) +
                         "\nproperty double x\nproperty double y\nproperty double z\n") +
           PackDoubles(vecCoords);
}

CRun Run(const CZorcld& zorcld, TArgs vecArgs, const std::string& sFile)
{
    if (vecArgs.size() > 1)
        vecArgs.back() = vecArgs.back().find("out.") == 0 ? zorcld.GetPath(vecArgs.back()) : vecArgs.back();
    vecArgs.insert(vecArgs.begin() + 1, sFile);
    return zorcld.Run(vecArgs);
}

/// The command that a text tells, as the arguments of the program; empty: none.
TArgs FindAdvice(const std::string& sText)
{
    const std::string sMark = "what helps: zorcld ";
    const std::size_t nPos = sText.find(sMark);
    if (nPos == std::string::npos)
        return {};
    TArgs vecArgs(1);
    for (const char c : sText.substr(nPos + sMark.size(), sText.find('\n', nPos) - nPos - sMark.size()))
        if (c == ' ')
            vecArgs.emplace_back();
        else
            vecArgs.back() += c;
    return vecArgs;
}

void ExpectAdvice(const CZorcld& zorcld, const std::string& sName, const std::string& sBytes)
{
    const std::string sFile = zorcld.Write(sName, sBytes);
    for (const TArgs& vecCommand : c_vecCommands)
    {
        TArgs vecAdvice = FindAdvice(Run(zorcld, vecCommand, sFile).sErr);
        ASSERT_EQ(vecAdvice.size(), 3U) << sName << ' ' << vecCommand[0];
        EXPECT_EQ(vecAdvice[1], sFile);
        const CRun run = zorcld.Run(vecAdvice);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_NE(zorcld.Run({"check", vecAdvice[2]}).nStatus, 1) << sName;
    }
}

void ExpectNone(const CZorcld& zorcld, const std::string& sName, const std::string& sBytes)
{
    const std::string sFile = zorcld.Write(sName, sBytes);
    EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("none.cld")}).nStatus, 1) << sName;
    for (const TArgs& vecCommand : c_vecCommands)
        EXPECT_TRUE(FindAdvice(Run(zorcld, vecCommand, sFile).sErr).empty()) << sName << ' ' << vecCommand[0];
    EXPECT_TRUE(FindAdvice(zorcld.Run({"check", sFile}).sOut).empty()) << sName;
}

} // namespace

TEST(ZorcldAdvice, RefusedOrReadWrongly_EveryCommandNamesConvert)
{
    const CZorcld zorcld;
    ExpectAdvice(zorcld, "double.ply", MakeDoublePly({1, 2, 3, 4, 5, 6, 1, 6, 3}));
    ExpectAdvice(
        zorcld, "ascii.ply",
        "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\nproperty float z\n"
        "end_header\n1 2 3\n4 5 6\n");
    ExpectAdvice(zorcld, "keys.asc", Replace(c_sGridHead, "ncols", "nCols") + "1 2\n3 4\n");
    ExpectAdvice(zorcld, "zero.asc",
                 Replace(Replace(c_sGridHead, "corner 10", "corner 0"), "corner 20", "corner 0") +
                     "1 2\n3 4\n");
    ExpectAdvice(zorcld, "far.ply", MakePly({0, 0, 0, 1e6F, 1, 2, 1e6F, 2, 3, 1e6F, 3, 4, 1e6F, 9, 4}));
    if (CZorcld::HasLaszip())
        ExpectAdvice(zorcld, "format7.las", LasOf(7, 20).GetBytes());
}

TEST(ZorcldAdvice, WhatConvertCannotMend_NoCommandIsNamed)
{
    const CZorcld zorcld;
    const double dInf = std::numeric_limits<double>::infinity();
    const double dNan = std::nan("");
    ExpectNone(zorcld, "nodata.asc", Replace(c_sGridHead, "ncols", "nCols") + "-1 -1\n-1 -1\n");
    ExpectNone(zorcld, "nan.ply", MakeDoublePly({1, dNan, 3, dNan, 5, 6}));
    ExpectNone(zorcld, "cut.ply", MakeDoublePly({1, 2, 3, 4, 5, 6}).substr(0, 140));
    ExpectNone(zorcld, "list.ply",
               MakePlyHeader("element vertex 1\nproperty list uchar double x\nproperty double y\n"
                             "property double z\n") +
                   "\1" + PackDoubles({1, 2, 3}));
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    for (const double d : {dNan, dInf, 1e300})
        for (const bool bScale : {false, true})
        {
            CLasFile las = LasOf(7, 20);
            (bScale ? las.adScale : las.adOffset)[1] = d;
            las.vecPnts[0].y = 1;
            ExpectNone(zorcld, "scale.las", las.GetBytes());
        }
}

// All points at one place: little is left of them, but the command does not fail.
TEST(ZorcldAdvice, ScaleOfZero_ConvertDoesNotFail)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    CLasFile las = LasOf(7, 20);
    las.adScale = {0.0, 0.0, 0.0};
    ExpectAdvice(zorcld, "zero.las", las.GetBytes());
}

TEST(ZorcldAdvice, Json_TellsTheCommand)
{
    const CZorcld zorcld;
    const auto getHelp = [&](const std::string& sFile) {
        return nlohmann::json::parse(zorcld.Run({"info", "-q", "--json", sFile}).sOut)["help"];
    };
    const std::string sFile = zorcld.Write("double.ply", MakeDoublePly({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(getHelp(sFile), "zorcld convert " + sFile + " " + sFile + "_converted.cld");
    EXPECT_TRUE(getHelp(zorcld.Write("good.ply", MakePly({1, 2, 3}))).is_null());
}

// Of equal stem, or in another folder: each gets a name of its own, and none that is taken.
TEST(ZorcldAdvice, NamesDifferAndAreFree)
{
    const CZorcld zorcld;
    const std::string sBytes = MakeDoublePly({1, 2, 3, 4, 5, 6});
    std::filesystem::create_directory(zorcld.GetPath("folder"));
    const std::string sPly = zorcld.Write("a.ply", sBytes);
    const std::string sTxt = zorcld.Write("a.txt", sBytes);
    const std::string sOther = zorcld.Write("folder/a.ply", sBytes);
    const auto getOut = [&](const std::string& sFile) {
        return FindAdvice(zorcld.Run({"check", sFile}).sOut).back();
    };
    const std::set<std::string> setOut = {getOut(sPly), getOut(sTxt), getOut(sOther)};
    EXPECT_EQ(setOut.size(), 3U);
    ASSERT_EQ(zorcld.Run({"convert", sPly, getOut(sPly)}).nStatus, 0);
    EXPECT_EQ(getOut(sPly), sPly + "_converted_2.cld");
    std::filesystem::create_symlink("nowhere", sPly + "_converted_2.cld"); // convert would refuse it
    EXPECT_EQ(getOut(sPly), sPly + "_converted_3.cld");
}

// Where nothing can be made beside the file, the converted one goes into the current folder.
TEST(ZorcldAdvice, FolderThatCannotBeWritten)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";
    const CZorcld zorcld;
    const std::string sFolder = zorcld.GetPath("folder");
    std::filesystem::create_directory(sFolder);
    const std::string sFile = zorcld.Write("folder/a.ply", MakeDoublePly({1, 2, 3, 4, 5, 6}));
    std::filesystem::permissions(sFolder,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(FindAdvice(zorcld.Run({"check", sFile}).sOut).back(), "a.ply_converted.cld");
    std::filesystem::permissions(sFolder, std::filesystem::perms::owner_all);
}

// The type that the user gave is given on; names that are too long are cut, and of two lines there is no
// advice.
TEST(ZorcldAdvice, OddNames)
{
    const CZorcld zorcld;
    const std::string sBytes = MakeDoublePly({1, 2, 3, 4, 5, 6});
    const std::string sOther = zorcld.Write("double.txt", sBytes);
    EXPECT_EQ(FindAdvice(zorcld.Run({"info", "--type", "ply", sOther}).sErr),
              (TArgs{"convert", "--type", "ply", sOther, sOther + "_converted.cld"}));
    EXPECT_NE(zorcld.Run({"check", "--type", "ply", sOther}).sOut.find("convert --type ply "),
              std::string::npos);
    const std::string sLong = zorcld.Write(std::string(250, 'x') + ".ply", sBytes);
    TArgs vecAdvice = FindAdvice(zorcld.Run({"info", sLong}).sErr);
    ASSERT_EQ(vecAdvice.size(), 3U);
    EXPECT_EQ(zorcld.Run(vecAdvice).nStatus, 0);
    const std::string sTwoLines = zorcld.Write("a\nb.ply", sBytes);
    EXPECT_TRUE(FindAdvice(zorcld.Run({"info", sTwoLines}).sErr).empty());
    EXPECT_TRUE(FindAdvice(zorcld.Run({"check", sTwoLines}).sOut).empty());
}
