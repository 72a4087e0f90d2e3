#include <analysis/ground/CMorphProgress.h>

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace
{

class CRecProgress final : public IPclProgressListener
{
public:
    void OnProgress(int nPos) override { m_vecPos.push_back(nPos); }

    std::vector<int> m_vecPos;
};

} // namespace

// Each window counts the same, whatever its number of points; every percent is told once.
TEST(CMorphProgress, AQuarterAfterOneWindowOfFour)
{
    CRecProgress rec;
    CMorphProgress progress(&rec, 4);
    EXPECT_EQ(rec.m_vecPos, std::vector<int>{0});
    int nWindow = 0;
    for (const std::uint32_t nNumPnts : {1000U, 3U, 100000U, 1U})
    {
        progress.StartWindow(nWindow++, nNumPnts);
        progress.AddPnts(nNumPnts);
        EXPECT_EQ(rec.m_vecPos.back(), 25 * nWindow);
    }
    progress.Finish();
    std::vector<int> vecAll(101);
    std::iota(vecAll.begin(), vecAll.end(), 0);
    EXPECT_EQ(rec.m_vecPos, vecAll);
}

TEST(CMorphProgress, WithinAWindow)
{
    CRecProgress rec;
    CMorphProgress progress(&rec, 2);
    progress.StartWindow(0, 1000);
    for (int i = 0; i < 500; ++i)
        progress.AddPnts(1);
    EXPECT_NEAR(rec.m_vecPos.back(), 25, 1);
}
