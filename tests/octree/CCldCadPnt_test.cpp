// The delivered record, and the counting listener.

#include <octree/CPntCldListener_NumPnts.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <tests/support/CRecListener.h>

#include <gtest/gtest.h>

namespace
{

void ExpectDefaults(const CCldCadPnt& pnt)
{
    EXPECT_EQ(pnt.m_pnt.x, 1.7e200);
    EXPECT_EQ(pnt.m_pnt.y, 1.7e200);
    EXPECT_EQ(pnt.m_pnt.z, 1.7e200);
    EXPECT_EQ(pnt.m_fR, 1.0F);
    EXPECT_EQ(pnt.m_fG, 1.0F);
    EXPECT_EQ(pnt.m_fB, 1.0F);
    EXPECT_EQ(pnt.m_nIndex, -1);
    EXPECT_FALSE(pnt.m_bSel);
}

TEST(CCldCadPnt, Construct_HasDefaults)
{
    ExpectDefaults(CCldCadPnt());
}

TEST(CCldCadPnt, Init_BackToDefaults)
{
    CCldCadPnt pnt(CTruncPnt_Color(1, 2, 3, 4, 5, 6), 7.0F, 8.0F, 9.0F, 10, nullptr);
    pnt.m_bSel = true;
    pnt.Init();
    ExpectDefaults(pnt);
}

TEST(CCldCadPnt, Set_CoordinatesFromOffsetsAndOrigin)
{
    const CCldCadPnt pnt(CTruncPnt(-15, 0, 123456), 500000.125F, 0.0F, 10.0F, 3, nullptr);
    EXPECT_EQ(pnt.m_pnt.x, -15 / 10000.0 + 500000.125);
    EXPECT_DOUBLE_EQ(pnt.m_pnt.x, 500000.1235);
    EXPECT_EQ(pnt.m_pnt.y, 0.0);
    EXPECT_DOUBLE_EQ(pnt.m_pnt.z, 22.3456);
    EXPECT_EQ(pnt.m_nIndex, 3);
}

TEST(CCldCadPnt, Set_StoredColourReachesListenerAndStays)
{
    CCallLog log;
    CRecColorListener color(&log);
    const CCldCadPnt pnt(CTruncPnt_Color(0, 0, 20000, 255, 128, 0), 0.0F, 0.0F, 1.0F, 0, &color);
    ASSERT_EQ(log.GetText(), "c");
    EXPECT_EQ(color.GetEntries()[0].z, 3.0);
    EXPECT_EQ(color.GetEntries()[0].r, 1.0F);
    EXPECT_EQ(color.GetEntries()[0].g, static_cast<float>(128 / 255.0));
    EXPECT_EQ(color.GetEntries()[0].b, 0.0F);
    EXPECT_EQ(pnt.m_fR, 1.0F);
    EXPECT_FLOAT_EQ(pnt.m_fG, 0.5019608F);
    EXPECT_EQ(pnt.m_fB, 0.0F);
}

TEST(CCldCadPnt, Set_ListenerHasTheLastWord)
{
    CRecColorListener color;
    color.SetAlter();
    const CCldCadPnt pnt(CTruncPnt_Color(0, 0, 20000, 255, 128, 0), 0.0F, 0.0F, 0.0F, 0, &color);
    EXPECT_EQ(pnt.m_fR, 0.75F);
    EXPECT_EQ(pnt.m_fB, 0.5F);
}

// A point without colour leaves the colour that the record holds, and selection is not Set's business.
TEST(CCldCadPnt, Set_WithoutColourKeepsWhatTheRecordHeld_Kept)
{
    CRecColorListener color;
    CCldCadPnt pnt;
    pnt.m_bSel = true;
    pnt.Set(CTruncPnt_Color(0, 0, 0, 51, 0, 255), 0.0F, 0.0F, 0.0F, 1, &color);
    pnt.Set(CTruncPnt(1, 1, 1), 0.0F, 0.0F, 0.0F, 2, &color);
    EXPECT_EQ(pnt.m_fR, 0.2F);
    EXPECT_EQ(pnt.m_fG, 0.0F);
    EXPECT_EQ(pnt.m_fB, 1.0F);
    EXPECT_EQ(pnt.m_nIndex, 2);
    EXPECT_TRUE(pnt.m_bSel);
    EXPECT_EQ(color.GetEntries()[1].r, 0.2F);
}

TEST(CCldCadPnt, Construct_FromPointWithoutColourIsWhite)
{
    CRecColorListener color;
    const CCldCadPnt pnt(CTruncPnt(1, 2, 3), 0.0F, 0.0F, 0.0F, 0, &color);
    EXPECT_EQ(color.GetEntries()[0].r, 1.0F);
    EXPECT_EQ(pnt.m_fB, 1.0F);
    EXPECT_FALSE(pnt.m_bSel);
}

TEST(CTruncPnt, Construct_Defaults)
{
    const CTruncPnt pnt;
    EXPECT_EQ(pnt.m_nX, 0);
    EXPECT_EQ(pnt.m_nY, 0);
    EXPECT_EQ(pnt.m_nZ, 0);
    const CTruncPnt_Color pntColor;
    EXPECT_EQ(pntColor.m_nZ, 0);
    EXPECT_EQ(pntColor.m_ucR, 255);
    EXPECT_EQ(pntColor.m_ucG, 255);
    EXPECT_EQ(pntColor.m_ucB, 255);
}

TEST(CTruncPnt, Size_TwelveAndSixteenBytes)
{
    EXPECT_EQ(sizeof(CTruncPnt), 12U);
    EXPECT_EQ(sizeof(CTruncPnt_Color), 16U);
}

TEST(CPntCldListener_NumPnts, OnPnts_AddsUp)
{
    CPntCldListener_NumPnts listener;
    EXPECT_EQ(listener.GetNumPnts(), 0);
    CCldCadPnt pnt;
    listener.OnPnts(1024, &pnt);
    listener.OnPnts(17, &pnt);
    EXPECT_EQ(listener.GetNumPnts(), 1041);
}

} // namespace
