// Why a file could not be read: exit status 1 and one line with the file and the cause.
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{

void ExpectCause(const CZorcld& zorcld, const std::string& sFile, const std::string& sCause)
{
    const CRun run = zorcld.Run({"info", sFile});
    EXPECT_EQ(run.nStatus, 1) << sCause;
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find(sFile), std::string::npos) << run.sErr;
    EXPECT_NE(run.sErr.find(sCause), std::string::npos) << run.sErr << " lacks: " << sCause;
    EXPECT_EQ(run.sOut, "");
}

const std::string c_sXyz = "property float x\nproperty float y\nproperty float z\n";

} // namespace

TEST(ZorcldCauses, FileItself)
{
    const CZorcld zorcld;
    ExpectCause(zorcld, zorcld.GetPath("missing.ply"), "not found");
    ExpectCause(zorcld, zorcld.GetPath("missing/file.ply"), "not found");
    ExpectCause(zorcld, zorcld.GetPath("."), "is a directory");
    ExpectCause(zorcld, "/dev/null", "is not a regular file");
    ExpectCause(zorcld, zorcld.Write("empty.ply", ""), "is empty");
    ExpectCause(zorcld, zorcld.Write("notes.txt", "hello\n"), "no known type");
}

TEST(ZorcldCauses, Header)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes, const std::string& sCause)
    { ExpectCause(zorcld, zorcld.Write("file.ply", sBytes), sCause); };
    expect("plyx\n", "not a PLY file");
    expect("hello, world\n", "not a PLY file");
    expect("ply\nformat ascii 1.0\nend_header\n", "ASCII PLY is not supported");
    expect("ply\r\nformat ascii 1.0\r\nend_header\r\n", "ASCII PLY is not supported");
    expect("ply\nformat binary_big_endian 1.0\nend_header\n", "big-endian PLY is not supported");
    expect("ply\nformat binary_little_endian 2.0\nend_header\n", "second line");
    expect("ply\n", "second line");
    expect("ply\nformat binary_little_endian 1.0\nelement vertex 1\n" + c_sXyz, "'end_header' is missing");
    expect(MakePlyHeader("element vertex 0\n" + c_sXyz), "no element holds anything");
    expect(MakePlyHeader("element vertex -3\n" + c_sXyz), "no element holds anything");
    expect(MakePlyHeader(""), "no element holds anything");
    expect(MakePlyHeader("element face 1\nproperty uchar a\n") + "a", "has no vertices");
    expect(MakePlyHeader("element vertex 1\nproperty float x\nproperty float z\n") + "12345678", "have no y");
    expect(MakePlyHeader("element vertex 1\nproperty float a\n") + "1234", "have no x, y, z");
    expect(MakePlyHeader("element vertex 1\n" + c_sXyz + "property bool good\n") + std::string(13, 'a'),
           "property type not supported: 'bool' of good");
    expect(MakePlyHeader("element vertex 1\n" + c_sXyz + "property list int int i\n") + std::string(16, 'a'),
           "property type not supported: 'list int int' of i");
}

TEST(ZorcldCauses, Truncated)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes, const std::string& sCause)
    { ExpectCause(zorcld, zorcld.Write("file.ply", sBytes), sCause); };
    const std::string sHeader = MakePlyHeader("element vertex 10\n" + c_sXyz);
    expect(sHeader, "truncated after 0 of 10 vertices");
    expect(sHeader + std::string(12 * 7 + 4, '\0'), "truncated after 7 of 10 vertices");
    expect(MakePlyHeader("element vertex 50000000\n" + c_sXyz) + std::string(24, '\0'),
           "truncated after 2 of 50000000 vertices");
    // Lists before the vertices and after them.
    const std::string sFace = "element face 2\nproperty list uchar int i\n";
    const std::string sVertex = "element vertex 1\n" + c_sXyz;
    const std::string sThree = "\3" + std::string(12, '\0');
    expect(MakePlyHeader(sFace + sVertex) + sThree + sThree, "truncated after 0 of 1 vertex");
    expect(MakePlyHeader(sVertex + sFace) + std::string(12, '\0') + sThree,
           "truncated after 1 of 2 items of element face");
}

// Little memory: the cause is that of the file where it has one, and the count where it has none.
TEST(ZorcldCauses, NoMemory_OneClearLine)
{
    if (CZorcld::IsSanitized())
        GTEST_SKIP() << "sanitizers take more memory than can be forbidden";
    const CZorcld zorcld;
    const std::string sHeader = MakePlyHeader("element vertex 50000000\n" + c_sXyz);
    const std::string sFile = zorcld.Write("file.ply", sHeader + std::string(24, '\0'));
    const CRun truncated = zorcld.Run({"info", sFile}, 300000);
    EXPECT_EQ(truncated.nStatus, 1);
    EXPECT_NE(truncated.sErr.find("truncated after 2 of 50000000 vertices"), std::string::npos)
        << truncated.sErr;

    std::filesystem::resize_file(sFile, sHeader.size() + 600000000); // a hole: takes no disk
    const CRun whole = zorcld.Run({"info", sFile}, 300000);
    EXPECT_EQ(whole.nStatus, 1);
    EXPECT_TRUE(whole.HasOneErrLine()) << whole.sErr;
    EXPECT_NE(whole.sErr.find("not enough memory for the 50000000 points"), std::string::npos) << whole.sErr;
}

TEST(ZorcldCauses, Type_OverridesAndExtensionIsNotNeeded)
{
    const CZorcld zorcld;
    const std::string sNoName = zorcld.Write("cloud", MakePly({1, 2, 3}));
    EXPECT_EQ(zorcld.Run({"info", sNoName}).nStatus, 0);
    const std::string sUpper = zorcld.Write("CLOUD.PLY", MakePly({1, 2, 3}));
    EXPECT_EQ(zorcld.Run({"info", sUpper}).nStatus, 0);
    const std::string sText = zorcld.Write("notes.txt", "hello\n");
    const CRun run = zorcld.Run({"info", "--type", "ply", sText});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sErr.find("not a PLY file"), std::string::npos) << run.sErr;
}

// A name with a line feed in it does not make two lines.
TEST(ZorcldCauses, OddNames_OneLine)
{
    const CZorcld zorcld;
    const CRun run = zorcld.Run({"info", zorcld.GetPath("two\nlines.ply")});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
}

// An origin that is no number makes every coordinate one: nothing can be drawn or measured.
TEST(ZorcldCauses, Native_OriginThatIsNoNumber)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.GetPath("cloud.cld");
    ASSERT_EQ(zorcld.Run({"convert", zorcld.Write("grid.ply", MakeGridPly(5)), sFile}).nStatus, 0);
    const std::string sGood = ReadBytes(sFile);
    for (const std::string& sFloat :
         {std::string("\0\0\xC0\x7F", 4), std::string("\0\0\x80\xFF", 4)}) // nan, -inf
        for (const std::size_t nPos : {11U, 15U, 19U})
        {
            std::string sBad = sGood;
            sBad.replace(nPos, 4, sFloat);
            zorcld.Write("cloud.cld", sBad);
            ExpectCause(zorcld, sFile, "its origin is no finite number");
            EXPECT_EQ(zorcld.Run({"check", sFile}).nStatus, 1);
            EXPECT_EQ(zorcld.Run({"view", sFile, "-o", zorcld.GetPath("x.png")}).nStatus, 1);
        }
}

// The rights of the file that was there.
TEST(ZorcldCauses, Output_KeepsRightsAndLeavesNothingBehind)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(100));
    const std::string sOut = zorcld.Write("out.csv", "old");
    std::filesystem::permissions(sOut,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sOut}).nStatus, 0);
    EXPECT_EQ(std::filesystem::status(sOut).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_EQ(zorcld.CountFiles(), 2U);
}

TEST(ZorcldCauses, NoPoints_BoundsAreNull)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("none.cld", std::string(":\1\1\0\0\0\0\0\0\0\0", 11) +
                                                           std::string(16, '\0') + std::string(30, '\0'));
    const CRun run = zorcld.Run({"info", "--json", sFile});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sOut.find("\"bounds\": null"), std::string::npos) << run.sOut;
}
