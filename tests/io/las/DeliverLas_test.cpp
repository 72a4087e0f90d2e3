#include <io/las/DeliverLas.h>
#include <tests/io/CRecReadListener.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

constexpr int c_nMin = std::numeric_limits<int>::min();
constexpr std::int64_t c_nMin64 = std::numeric_limits<std::int64_t>::min();
constexpr int c_nMax = std::numeric_limits<int>::max();

constexpr std::int64_t c_nNoLimit = std::numeric_limits<std::int64_t>::max();

/// Has of LASlib's reader what the delivery uses; gives `nNumHeld` points, whatever it announces.
class CFakeReader
{
public:
    struct CQuantizer
    {
        double x_scale_factor = 0.5;
        double y_scale_factor = 0.25;
        double z_scale_factor = 2.0;
        double x_offset = 10.0;
        double y_offset = -1.0;
        double z_offset = 0.0;
    };

    struct CPoint
    {
        std::int32_t get_X() const { return nX; }
        std::int32_t get_Y() const { return 2; }
        std::int32_t get_Z() const { return -3; }

        const CQuantizer* quantizer = nullptr;
        std::uint16_t rgb[4] = {65535, 256, 255, 0};
        std::int32_t nX = -1;
    };

    CFakeReader(std::int64_t nAnnounced, int nNumHeld) : npoints(nAnnounced), m_nNumHeld(nNumHeld)
    {
        point.quantizer = &m_quantizer;
    }

    int read_point() { return ++point.nX < m_nNumHeld ? 1 : 0; }

    std::int64_t npoints;
    CPoint point;

private:
    CQuantizer m_quantizer;
    int m_nNumHeld;
};

std::vector<int> GetProgress(std::int64_t nAnnounced, int nNumHeld)
{
    CFakeReader reader(nAnnounced, nNumHeld);
    CRecReadListener rec;
    DeliverLasPnts(reader, false, c_nNoLimit, rec, &rec);
    std::vector<int> vecProgress;
    for (const CReadCall& call : rec.m_vecCalls)
        if (call.eKind == CReadCall::Kind_Progress)
            vecProgress.push_back(call.nValue);
    EXPECT_EQ(nNumHeld, rec.CountCalls(CReadCall::Kind_Pnt));
    return vecProgress;
}

using TInts = std::vector<int>;

TEST(DeliverLas, Pnts_ScaledThenShiftedEachAfterItsProgress)
{
    CFakeReader reader(2, 2);
    CRecReadListener rec;
    DeliverLasPnts(reader, false, c_nNoLimit, rec, &rec);
    EXPECT_EQ(TReadCalls({CReadCall::Progress(0), CReadCall::Pnt(10.0, -0.5, -6.0), CReadCall::Progress(50),
                          CReadCall::Pnt(10.5, -0.5, -6.0)}),
              rec.m_vecCalls);
}

TEST(DeliverLas, ColorPnts_ChannelByChannel)
{
    CFakeReader reader(1, 1);
    CRecReadListener rec;
    DeliverLasPnts(reader, true, c_nNoLimit, rec, nullptr);
    EXPECT_EQ(TReadCalls({CReadCall::ColorPnt(10.0, -0.5, -6.0, 255, 1, 255)}), rec.m_vecCalls);
}

TEST(DeliverLas, Pnts_NoMoreThanTheFileCanHold)
{
    CFakeReader reader(4, 4);
    CRecReadListener rec;
    DeliverLasPnts(reader, false, 2, rec, nullptr);
    EXPECT_EQ(2, rec.CountCalls(CReadCall::Kind_Pnt));
}

TEST(DeliverLas, Progress_WholePercentOfTheAnnounced)
{
    EXPECT_EQ(TInts({0, 33, 66}), GetProgress(3, 3));
    EXPECT_EQ(TInts({0, 14, 28, 42, 57, 71, 85}), GetProgress(7, 7));
    EXPECT_EQ(TInts({0, 0}), GetProgress(1000, 2)); // fewer than announced
    EXPECT_EQ(TInts(), GetProgress(5, 0));
}

TEST(DeliverLas, Progress_ExceedsAHundredWithMorePntsThanAnnounced)
{
    EXPECT_EQ(TInts({0, 50, 100, 150}), GetProgress(2, 4));
}

// The listener gets 32 bits of the count, the progress counts all of it.
TEST(DeliverLas, Progress_NeverNegativeAndUpToAHundredOfCountsBeyondInt32)
{
    for (const std::int64_t nNum :
         {std::int64_t{0x7FFFFFFF}, std::int64_t{0x80000000}, std::int64_t{0xFFFFFFFF},
          std::int64_t{0x100000000}, std::int64_t{0x100000003}, std::int64_t{1} << 60})
    {
        EXPECT_EQ(TInts({0, 0, 0}), GetProgress(nNum, 3));
        EXPECT_EQ(50, CalcLasProgress(nNum / 2 + 1, nNum));
        EXPECT_EQ(100, CalcLasProgress(nNum, nNum));
    }
}

TEST(DeliverLas, Progress_IsDefinedForEveryCount)
{
    EXPECT_EQ(TInts({0, c_nMax, c_nMax}), GetProgress(0, 3)); // 0 of 0, then more than none
    EXPECT_EQ(c_nMax, CalcLasProgress(std::int64_t{1} << 60, 1));
    EXPECT_EQ(6, CalcLasProgress(std::int64_t{1} << 60, -1)); // of 2^64
    EXPECT_EQ(TInts({0, 0, 0}), GetProgress(c_nMin64, 3));
}

TEST(DeliverLas, CountFromNumPnts_TakesTheLowerBits)
{
    EXPECT_EQ(0, CountFromNumPnts(0));
    EXPECT_EQ(c_nMax, CountFromNumPnts(0x7FFFFFFF));
    EXPECT_EQ(c_nMin, CountFromNumPnts(0x80000000));
    EXPECT_EQ(-1, CountFromNumPnts(0xFFFFFFFF));
    EXPECT_EQ(3, CountFromNumPnts(0x100000003));
    EXPECT_EQ(-1, CountFromNumPnts(-1));
    EXPECT_EQ(0, CountFromNumPnts(std::numeric_limits<std::int64_t>::min()));
}

TEST(DeliverLas, ByteFromChannel_EachChannelByItsOwnSize_Kept)
{
    for (unsigned n = 0; n <= 65535; ++n)
        ASSERT_EQ(n > 255 ? n / 256 : n, ByteFromChannel(static_cast<std::uint16_t>(n))) << n;
}

} // namespace
