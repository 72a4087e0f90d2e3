// What `convert` and `points` do not write is told by name and count, in one line.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <cstring>

namespace
{

/// The line that `convert` and `points` both say, behind "not written: "; empty: none.
std::string GetLeftOut(const CZorcld& zorcld, const std::string& sFile)
{
    std::string sSaid;
    for (const std::vector<std::string>& vecArgs :
         std::vector<std::vector<std::string>>{{"convert", sFile, zorcld.GetPath("out.ply")},
                                               {"convert", sFile, zorcld.GetPath("out.cld")},
                                               {"points", sFile, "-o", zorcld.GetPath("out.csv")}})
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        const std::string sMark = ": not written: ";
        const std::size_t nPos = run.sErr.find(sMark);
        const std::size_t nBegin = nPos == std::string::npos ? run.sErr.size() : nPos + sMark.size();
        const std::string sText = run.sErr.substr(nBegin, run.sErr.find('\n', nBegin) - nBegin);
        EXPECT_EQ(run.sErr.find(sMark, nBegin), std::string::npos) << run.sErr;
        if (vecArgs[2] == zorcld.GetPath("out.ply"))
            sSaid = sText;
        EXPECT_EQ(sText, sSaid) << vecArgs[0];
        std::vector<std::string> vecQuiet = vecArgs;
        vecQuiet.emplace_back("-q");
        EXPECT_EQ(zorcld.Run(vecQuiet).sErr, "");
    }
    return sSaid;
}

/// Every point of formats 6 to 10 with a flag and a scanner channel.
std::string GetScanBytes(const CLasFile& las)
{
    std::string sBytes = las.GetBytes();
    for (std::size_t i = 0; las.nFormat >= 6 && i < las.vecPnts.size(); ++i)
        sBytes[las.GetPosPnts() + i * las.GetPntSize() + 15] = '\x11';
    return sBytes;
}

/// Sets so many bytes of the first points, from `nPos` in each of them, to 0.
std::string Blank(const CLasFile& las, std::size_t nNumPnts, std::size_t nPos, std::size_t nSize)
{
    std::string sBytes = GetScanBytes(las);
    for (std::size_t i = 0; i < nNumPnts; ++i)
        sBytes.replace(las.GetPosPnts() + i * las.GetPntSize() + nPos, nSize, nSize, '\0');
    return sBytes;
}

std::string GetNames(int nFormat)
{
    std::string sNames = "intensity, classes, return numbers, times, scan angles, user data, source IDs";
    sNames += nFormat >= 6 ? ", flags, scanner channels" : "";
    sNames += nFormat == 8 || nFormat == 10 ? ", near infrared" : "";
    sNames += nFormat == 5 || nFormat == 10 ? ", waveforms" : "";
    return sNames;
}

} // namespace

TEST(ZorcldLeftOut, Ply_PropertiesAndElements)
{
    const CZorcld zorcld;
    const std::string sFloats = "property float x\nproperty float nx\nproperty float y\nproperty float z\n";
    const std::string sBytes = MakePlyHeader("element vertex 2\n" + sFloats +
                                             "property uchar label\nelement face 3\nproperty uchar a\n") +
                               PackFloats({1, 9, 2, 3}) + "a" + PackFloats({4, 9, 5, 6}) + "b" + "xyz";
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.ply", sBytes)),
              "nx, label (2 points); element face (3 items)");
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("plain.ply", MakePly({1, 2, 3, 4, 5, 6}))), "");
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("color.ply", MakeGridPly(3))), "");
}

TEST(ZorcldLeftOut, Las_AttributesThatAreNotZero)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    for (const int nFormat : {1, 3, 5, 6, 8, 10})
    {
        CLasFile las = LasOf(nFormat, 20);
        las.vecPnts[1].anColor = {1, 1, 1};
        EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", GetScanBytes(las))),
                  GetNames(nFormat) + " (20 points)");
        const std::string sSome = GetLeftOut(zorcld, zorcld.Write("in.las", Blank(las, 5, 12, 2)));
        EXPECT_EQ(sSome.find("intensity (15 points); classes, "), 0U) << sSome;
        las.nNumExtra = 2;
        EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", GetScanBytes(las))),
                  GetNames(nFormat) + ", extra bytes (20 points)");
    }
    const CLasFile plain = LasOf(0, 20);
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", Blank(plain, 20, 12, 8))), "");
}

TEST(ZorcldLeftOut, Las_CoordinateSystem)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    CLasFile las = LasOf(0, 20);
    las.vecRecords = {"not this", "keys"};
    const std::size_t nSecond = las.GetHeaderSize() + 54 + 8;
    std::string sBytes = Blank(las, 20, 12, 8);
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", sBytes)), "");
    sBytes.replace(nSecond + 2, 15, "LASF_Projection");
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", sBytes)), ""); // of another meaning
    const std::uint16_t nKeys = 34735;
    std::memcpy(sBytes.data() + nSecond + 18, &nKeys, sizeof nKeys);
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", sBytes)), "coordinate system");

    // Behind the points.
    CLasFile later = LasOf(6, 20);
    sBytes = Blank(later, 20, 12, 18);
    const auto nEnd = static_cast<std::uint64_t>(sBytes.size());
    const std::uint32_t nNum = 1;
    const std::uint16_t nWkt = 2112;
    std::memcpy(sBytes.data() + 235, &nEnd, sizeof nEnd);
    std::memcpy(sBytes.data() + 243, &nNum, sizeof nNum);
    std::string sHead(60, '\0');
    sHead[20] = 4; // bytes behind it
    sHead.replace(2, 15, "LASF_Projection");
    std::memcpy(sHead.data() + 18, &nWkt, sizeof nWkt);
    EXPECT_EQ(GetLeftOut(zorcld, zorcld.Write("in.las", sBytes + sHead + "text")), "coordinate system");
}

namespace
{

/// What a command says behind "not written: "; empty: nothing.
std::string GetSaid(const CZorcld& zorcld, const std::vector<std::string>& vecArgs)
{
    const CRun run = zorcld.Run(vecArgs);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    const std::string sMark = ": not written: ";
    const std::size_t nPos = run.sErr.find(sMark);
    if (nPos == std::string::npos)
        return {};
    const std::size_t nBegin = nPos + sMark.size();
    return run.sErr.substr(nBegin, run.sErr.find('\n', nBegin) - nBegin);
}

/// 20 points, every fourth of class 2 and with an intensity of 0.
std::string MakeClassBytes()
{
    CLasFile las = LasOf(0, 20);
    for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
    {
        las.vecPnts[i].nClass = i % 4 == 0 ? 2 : 6;
        las.vecPnts[i].nIntensity = i % 4 == 0 ? 0 : 9;
    }
    return las.GetBytes();
}

} // namespace

TEST(ZorcldLeftOut, Classes_OnlyThoseChosenCount)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("in.las", MakeClassBytes());
    const auto expect = [&](const std::string& sClass, const std::string& sSaid)
    {
        EXPECT_EQ(GetSaid(zorcld, {"convert", sFile, zorcld.GetPath("out.ply"), "--class", sClass}), sSaid);
        EXPECT_EQ(GetSaid(zorcld, {"points", sFile, "-o", zorcld.GetPath("out.csv"), "--class", sClass}),
                  sSaid);
    };
    expect("2", "classes, return numbers, scan angles, user data, source IDs (5 points)");
    expect("6", "intensity, classes, return numbers, scan angles, user data, source IDs (15 points)");
    expect("2,6",
           "intensity (15 points); classes, return numbers, scan angles, user data, source IDs (20 points)");
}

// What a query leaves is not looked up in the file again: the numbers are told as those of what was read.
TEST(ZorcldLeftOut, Query_NumbersOfWhatWasReadAndNothingOfNoPoints)
{
    const CZorcld zorcld;
    const std::string sBytes =
        MakePlyHeader(
            "element vertex 2\nproperty float x\nproperty float y\nproperty float z\nproperty uchar a\n") +
        PackFloats({1, 2, 3}) + "a" + PackFloats({4, 5, 6}) + "b";
    const std::string sFile = zorcld.Write("in.ply", sBytes);
    const auto getSaid = [&](const std::string& sRect) {
        return GetSaid(zorcld, {"points", sFile, "-o", zorcld.GetPath("out.csv"), "--rect", sRect});
    };
    EXPECT_EQ(getSaid("0,0,9,9"), "a (2 points)");
    EXPECT_EQ(getSaid("0,0,3,3"), "a (2 points read)");
    EXPECT_EQ(getSaid("10,10,11,11"), "");
}

TEST(ZorcldLeftOut, Classes_NothingOfNoPoints)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("in.las", MakeClassBytes());
    EXPECT_EQ(GetSaid(zorcld, {"points", sFile, "-o", zorcld.GetPath("out.csv"), "--class", "9"}), "");
}

TEST(ZorcldLeftOut, Ground_TellsItToo)
{
    const CZorcld zorcld;
    std::string sBytes =
        MakePlyHeader("element vertex 401\nproperty float x\nproperty float y\nproperty float z\n"
                      "property uchar label\n");
    for (int i = 0; i < 400; ++i)
        sBytes += PackFloats({static_cast<float>(i % 20), static_cast<float>(i / 20), 0.0F}) + "a";
    sBytes += PackFloats({9.5F, 9.5F, 50.0F}) + "a"; // no ground
    const std::string sFile = zorcld.Write("in.ply", sBytes);
    for (const char* pName : {"out.cld", "out.ply", "out.csv"})
        EXPECT_EQ(GetSaid(zorcld, {"ground", sFile, "-o", zorcld.GetPath(pName)}), "label (401 points read)");
    EXPECT_EQ(GetSaid(zorcld, {"ground", sFile}), "");
    EXPECT_EQ(zorcld.Run({"ground", "-q", sFile, "-o", zorcld.GetPath("out.ply")}).sErr, "");
}
