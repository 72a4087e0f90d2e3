// The table of systems in feet as a whole: whoever changes a number of it is asked whether that was meant.

#include <formats/CoordUnits.h>
#include <formats/EpsgFeet.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>

namespace
{

struct CCodes
{
    int nNum = 0;
    std::int64_t nSum = 0;
    std::int64_t nSumOfSquares = 0;
};

/// The codes of each unit that a table knows.
std::map<int, CCodes> ListCodes(int (*pFind)(int))
{
    std::map<int, CCodes> codes;
    for (int nCode = -10; nCode <= 70000; ++nCode)
        if (const int nUnit = pFind(nCode); nUnit != 0)
        {
            CCodes& those = codes[nUnit];
            ++those.nNum;
            those.nSum += nCode;
            those.nSumOfSquares += std::int64_t{nCode} * nCode;
        }
    return codes;
}

} // namespace

TEST(EpsgFeet, CodesOfEachUnit)
{
    const auto expect = [](const CCodes& codes, int nNum, std::int64_t nSum, std::int64_t nSumOfSquares)
    {
        EXPECT_EQ(codes.nNum, nNum);
        EXPECT_EQ(codes.nSum, nSum);
        EXPECT_EQ(codes.nSumOfSquares, nSumOfSquares);
    };
    std::map<int, CCodes> plan = ListCodes(FindFeetOfProjection);
    expect(plan[c_nFoot], 155, 898700, 6043595102);
    expect(plan[c_nSurveyFoot], 831, 8977738, 183132107016);
    std::map<int, CCodes> heights = ListCodes(FindFeetOfHeights);
    expect(heights[c_nFoot], 8, 57233, 420762175);
    expect(heights[c_nSurveyFoot], 6, 40884, 283508962);
}
