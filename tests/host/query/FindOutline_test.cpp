#include <host/query/FindOutline.h>

#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <tests/support/CNoColors.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

void FillSquare(CPntCld& cloud)
{
    constexpr int c_nSide = 20;
    cloud.OnReadType(PntCldType_Pnt);
    cloud.Init(c_nSide * c_nSide);
    for (int i = 0; i < c_nSide * c_nSide; ++i)
        cloud.AddPnt(i % c_nSide, i / c_nSide, 0.0);
    cloud.ComputeTree();
}

TEST(FindOutline, WalkThatTakesTooLong_IsLeftOffAndNotedAtEachDistance)
{
    CNoColors colors;
    CPntCld cloud(&colors);
    FillSquare(cloud);
    testing::internal::CaptureStderr();
    EXPECT_THROW(zorcld::FindOutline(cloud, 0.0, "a.ply", zorcld::CConsole(), 1), zorcld::CFailure);
    const std::string sErr = testing::internal::GetCapturedStderr();
    EXPECT_NE(sErr.find("is left off; --distance"), std::string::npos) << sErr;
    EXPECT_EQ(std::count(sErr.begin(), sErr.end(), '\n'), 9) << sErr;
}

TEST(FindOutline, DistanceThatIsGiven_IsWalkedToItsEnd)
{
    CNoColors colors;
    CPntCld cloud(&colors);
    FillSquare(cloud);
    testing::internal::CaptureStderr();
    const zorcld::COutline outline = zorcld::FindOutline(cloud, 4.0, "a.ply", zorcld::CConsole(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(outline.nNumInside, cloud.GetNumPnts());
}

} // namespace
