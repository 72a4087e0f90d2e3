#include <tests/io/grid/RandomGrid.h>
#include <tests/io/grid/ReadGrid.h>
#include <tests/support/CheckProp.h>

namespace
{

// Whatever the file, the reader makes the calls that the rules, followed one by one, make.
TEST(CAsciiGridReader_prop, Read_SameCallsAsTheSlowReader)
{
    CheckProp(500,
              [](unsigned nSeed)
              {
                  const std::string sText = CRandomGrid(nSeed).MakeFile();
                  RC_ASSERT(ReadGrid(sText) == ReadGridSlowly(sText));
              });
}

// Fixed seeds besides: the same files in every run, and enough of them for every path.
TEST(CAsciiGridReader_prop, Read_SameCallsAsTheSlowReader_FixedSeeds)
{
    int nNumTrue = 0;
    CMemFile file;
    for (unsigned nSeed = 0; nSeed < 5000; ++nSeed)
    {
        const std::string sText = CRandomGrid(nSeed).MakeFile();
        file.Set(sText);
        const CReading reading = ReadGridFile(file.GetPath());
        ASSERT_EQ(ReadGridSlowly(sText), reading) << "seed " << nSeed << "\n" << sText;
        nNumTrue += reading.bResult ? 1 : 0;
    }
    EXPECT_GT(nNumTrue, 1000);
}

// Texts of the format's own words.
TEST(CAsciiGridReader_prop, Read_AnyTextSameCallsAsTheSlowReader)
{
    const auto word = rc::gen::element<std::string>(
        "ncols 2\n", "nrows 2\n", "cellsize 1\n", "xllcorner 0\n", "yllcorner 0\n", "xllcenter 5\n",
        "yllcenter 5\n", "NODATA_value 9\n", "NROWS ", "ncols ", "1", "2", "9 ", " ", "\n", "\r\n", "\t",
        ".5", "-", "e1", "x", std::string(1, '\0'));
    CheckProp(300,
              [&]
              {
                  std::string sText = *rc::gen::element<std::string>("", GridHeader(2, 2), GridHeader(3, 1));
                  for (const std::string& sWord : *rc::gen::container<std::vector<std::string>>(word))
                      sText += sWord;
                  RC_ASSERT(ReadGrid(sText) == ReadGridSlowly(sText));
              });
}

// The short way of taking a number gives the same double, bit for bit, as the library's conversion and as
// the C library's.
TEST(CAsciiGridReader_prop, Read_NumbersBitForBit)
{
    CMemFile file;
    for (unsigned nSeed = 0; nSeed < 200; ++nSeed)
    {
        CRandomGrid random(nSeed);
        std::string sText = GridHeader(1000, 1);
        for (int i = 0; i < 1000; ++i)
            sText += random.Number() + " ";
        file.Set(sText);
        ASSERT_TRUE(ReadGridSlowly(sText) == ReadGridFile(file.GetPath())) << "seed " << nSeed;
    }
}

} // namespace
