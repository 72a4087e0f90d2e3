// Bit sets of points: layout, size, counting.

#include <octree/CPntBits.h>

#include <gtest/gtest.h>

#include <set>

namespace
{

// One byte more than needed where the count is a multiple of 8.
TEST(CPntBits, GetNumBytes_EighthAndOneMore_Kept)
{
    EXPECT_EQ(CPntBits::GetNumBytes(0), 1U);
    EXPECT_EQ(CPntBits::GetNumBytes(7), 1U);
    EXPECT_EQ(CPntBits::GetNumBytes(8), 2U);
    EXPECT_EQ(CPntBits::GetNumBytes(9), 2U);
    EXPECT_EQ(CPntBits::GetNumBytes(64), 9U);
    EXPECT_EQ(CPntBits::GetNumBytes(2147483647), 268435456U);
}

TEST(CPntBits, Set_LeastSignificantBitFirst)
{
    const auto pBits = CPntBits::MakeClear(20);
    CPntBits::Set(pBits.get(), 0);
    CPntBits::Set(pBits.get(), 10);
    CPntBits::Set(pBits.get(), 10);
    CPntBits::Set(pBits.get(), 15);
    EXPECT_EQ(pBits[0], 0x01);
    EXPECT_EQ(pBits[1], 0x84);
    EXPECT_EQ(pBits[2], 0x00);
    CPntBits::Clear(pBits.get(), 10);
    CPntBits::Clear(pBits.get(), 11);
    EXPECT_EQ(pBits[1], 0x80);
    EXPECT_TRUE(CPntBits::IsSet(pBits.get(), 15));
    EXPECT_FALSE(CPntBits::IsSet(pBits.get(), 10));
}

TEST(CPntBits, CountSet_CountsBelowTheLimitOnly)
{
    for (const std::int32_t nNum : {0, 1, 7, 8, 63, 64, 65, 127, 128, 200, 257})
    {
        const auto pBits = CPntBits::MakeClear(nNum);
        EXPECT_EQ(CPntBits::CountSet(pBits.get(), nNum), 0);
        std::set<std::int32_t> indices;
        for (std::int32_t i = 0; i < nNum; i += 1 + i / 3)
            indices.insert(i);
        if (nNum > 0)
            indices.insert(nNum - 1);
        for (const std::int32_t i : indices)
            CPntBits::Set(pBits.get(), i);
        CPntBits::Set(pBits.get(), nNum); // the bits behind the last point do not count
        EXPECT_EQ(CPntBits::CountSet(pBits.get(), nNum), static_cast<std::int32_t>(indices.size())) << nNum;
    }
}

} // namespace
