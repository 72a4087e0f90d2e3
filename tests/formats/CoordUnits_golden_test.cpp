// The table of units as a whole: whoever changes a number of it is asked whether that was meant.

#include <formats/CoordUnits.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(CoordUnits, SizesOfAllCodes)
{
    int nNum = 0;
    int nNumAngles = 0;
    double dSum = 0.0;
    double dSumOfLogs = 0.0;
    for (int nCode = -10; nCode <= 70000; ++nCode)
    {
        const CCoordUnit unit = UnitFromCode(nCode);
        if (!unit.IsStated())
            continue;
        EXPECT_GT(unit.dSize, 0.0) << nCode;
        ++nNum;
        nNumAngles += unit.bAngle ? 1 : 0;
        dSum += unit.dSize * (1 + nCode % 7);
        dSumOfLogs += std::log(unit.dSize) * (1 + nCode % 5);
    }
    EXPECT_EQ(nNum, 31);
    EXPECT_EQ(nNumAngles, 7);
    EXPECT_NEAR(dSum, 10727.789779315088, 1e-9);
    EXPECT_NEAR(dSumOfLogs, -126.67498832229009, 1e-9);
}
