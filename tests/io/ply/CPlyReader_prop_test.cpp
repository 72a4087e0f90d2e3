#include <tests/io/ply/RandomPly.h>
#include <tests/io/ply/ReadPly.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace
{

// Whatever the file, the reader makes the calls that the rules, followed one by one, make.
RC_GTEST_PROP(CPlyReader_prop, Read_SameCallsAsTheSlowReader, (unsigned nSeed, bool bProgress))
{
    const std::string sFile = CRandomPly(nSeed).MakeFile();
    RC_ASSERT(ReadPly(sFile, bProgress) == ReadPlySlowly(sFile, bProgress));
}

// Fixed seeds besides: the same files in every run, and enough of them for every path.
TEST(CPlyReader_prop, Read_SameCallsAsTheSlowReader_FixedSeeds)
{
    int nNumTrue = 0;
    int nNumWithPnts = 0;
    CMemFile file;
    for (unsigned nSeed = 0; nSeed < 3000; ++nSeed)
    {
        const std::string sFile = CRandomPly(nSeed).MakeFile();
        file.Set(sFile);
        const CReading reading = ReadPlyFile(file.GetPath(), nSeed % 2 == 0);
        ASSERT_EQ(ReadPlySlowly(sFile, nSeed % 2 == 0), reading) << "seed " << nSeed;
        nNumTrue += reading.bResult ? 1 : 0;
        nNumWithPnts += reading.vecCalls.size() > 4 ? 1 : 0;
    }
    EXPECT_GT(nNumTrue, 300);
    EXPECT_GT(nNumWithPnts, 800);
}

// Headers of any shape: a text of the header's own words.
RC_GTEST_PROP(CPlyReader_prop, Read_AnyHeaderSameCallsAsTheSlowReader, ())
{
    const auto line = rc::gen::element<std::string>(
        "ply\n", "format binary_little_endian 1.0\n", "comment ", "element ", "vertex ", "face ", "property ",
        "list ", "uchar ", "int ", "float ", "double ", "x\n", "y\n", "z\n", "red\n", "green\n", "blue\n",
        "1\n", "2", "\n", "\r\n", " ", "end_header\n", std::string(1, '\0'), std::string(505, 'c'));
    const auto lines = *rc::gen::container<std::vector<std::string>>(line);
    std::string sFile = c_sPlyMagic;
    for (const std::string& sLine : lines)
        sFile += sLine;
    RC_ASSERT(ReadPly(sFile, true) == ReadPlySlowly(sFile, true));
}

} // namespace
