// No slot is taken twice: the runs against a set of slots.

#include <formats/CTakenRuns.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <set>

namespace
{

class CSlowRuns
{
public:
    explicit CSlowRuns(std::uint64_t nNumSlots) : m_nNumSlots(nNumSlots) {}

    bool Take(std::uint32_t nCount, std::uint32_t nFirst)
    {
        const std::uint64_t nEnd = std::uint64_t{nFirst} + nCount;
        if (nEnd > m_nNumSlots)
            return false;
        const auto it = m_setTaken.lower_bound(nFirst);
        if (it != m_setTaken.end() && *it < nEnd)
            return false;
        for (std::uint64_t n = nFirst; n < nEnd; ++n)
            m_setTaken.insert(n);
        return true;
    }

private:
    std::uint64_t m_nNumSlots;
    std::set<std::uint64_t> m_setTaken;
};

TEST(CTakenRuns_prop, Take_SameAsASetOfSlots)
{
    CRandom random(1);
    for (int nCase = 0; nCase < 300; ++nCase)
    {
        SCOPED_TRACE(nCase);
        const std::uint64_t nNumSlots = static_cast<std::uint64_t>(
            random.Chance(2) ? random.Int(0, 200) : random.Int(200, 10000)); // three levels of bits
        CTakenRuns runs(nNumSlots);
        CSlowRuns slow(nNumSlots);
        const int nLongest = random.Chance(2) ? 5 : 300;
        std::uint64_t nNext = 0;
        for (int i = 0; i < 200; ++i)
        {
            const std::uint32_t nCount = static_cast<std::uint32_t>(random.Int(0, nLongest));
            const std::uint64_t nFirst =
                random.Chance(2) ? nNext
                                 : static_cast<std::uint64_t>(random.Int(0, static_cast<int>(nNumSlots) + 2));
            ASSERT_EQ(slow.Take(nCount, static_cast<std::uint32_t>(nFirst)),
                      runs.Take(nCount, static_cast<std::uint32_t>(nFirst)))
                << nFirst << " + " << nCount << " of " << nNumSlots;
            nNext = nFirst + nCount;
        }
    }
}

TEST(CTakenRuns_prop, IsTiled_OnlyWhereEachBeginsWhereTheLastEnds)
{
    CTakenRuns rising(10);
    EXPECT_FALSE(rising.IsTiled());
    EXPECT_TRUE(rising.Take(3, 0));
    EXPECT_FALSE(rising.Take(3, 2));
    EXPECT_TRUE(rising.Take(7, 3));
    EXPECT_TRUE(rising.IsTiled());
    EXPECT_FALSE(rising.Take(1, 9));
    EXPECT_TRUE(rising.IsTiled());
    CTakenRuns swapped(10);
    EXPECT_TRUE(swapped.Take(7, 3));
    EXPECT_TRUE(swapped.Take(3, 0));
    EXPECT_FALSE(swapped.IsTiled());
}

TEST(CTakenRuns_prop, Take_NumbersAtTheEnd)
{
    CTakenRuns runs(0x7fffffffU);
    EXPECT_FALSE(runs.Take(0xffffffffU, 0xffffffffU));
    EXPECT_FALSE(runs.Take(0x80000000U, 0));
    EXPECT_FALSE(runs.Take(1, 0x7fffffffU));
    EXPECT_TRUE(runs.Take(0, 0x7fffffffU));
    EXPECT_TRUE(runs.Take(0x7fffffffU, 0));
    EXPECT_TRUE(runs.IsTiled());
}

} // namespace
