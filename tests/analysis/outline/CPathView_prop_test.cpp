#include <analysis/outline/CPathView.h>
#include <tests/analysis/outline/COutlineModel.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

struct CCorner
{
    std::int64_t x;
    std::int64_t y;
};

/// A path around the place 0, 0 that never goes through it.
std::vector<CCorner> MakePath(CRandom& random, int nReach)
{
    const int nNum = static_cast<int>(random.Int(2, 60));
    std::vector<CCorner> vecPath;
    while (static_cast<int>(vecPath.size()) < nNum)
    {
        const CCorner next{random.Int(-nReach, nReach), random.Int(-nReach, nReach)};
        const CCorner from = vecPath.empty() ? next : vecPath.back();
        if (!CRefSegment{from.x, from.y, next.x, next.y}.Meets({0, 0, 0, 0}))
            vecPath.push_back(next);
    }
    return vecPath;
}

bool IsMet(const std::vector<CCorner>& vecPath, const CCorner& to)
{
    for (std::size_t i = 0; i + 1 < vecPath.size(); ++i)
        if (CRefSegment{0, 0, to.x, to.y}.Meets(
                {vecPath[i].x, vecPath[i].y, vecPath[i + 1].x, vecPath[i + 1].y}))
            return true;
    return false;
}

void AddAll(CPathView& view, const std::vector<CCorner>& vecPath)
{
    view.Clear();
    for (std::size_t i = vecPath.size() - 1; i-- > 0;)
        view.Add(i, static_cast<double>(vecPath[i].x), static_cast<double>(vecPath[i].y),
                 static_cast<double>(vecPath[i + 1].x), static_cast<double>(vecPath[i + 1].y));
}

} // namespace

// Nothing counts as hidden that the path leaves in sight, however near the two are, and much of what is
// hidden counts as such.
TEST(CPathView_Prop, Hides_OnlyWhatThePathMeets)
{
    int nNumHidden = 0;
    int nNumMet = 0;
    CRandom random(1);
    for (const int nReach : {3, 20, 1000, 2147483647})
        for (int nRound = 0; nRound < 400; ++nRound)
        {
            const std::vector<CCorner> vecPath = MakePath(random, nReach);
            CPathView view;
            AddAll(view, vecPath);
            for (int i = 0; i < 100; ++i)
            {
                const CCorner to{random.Int(-nReach, nReach), random.Int(-nReach, nReach)};
                if (to.x == 0 && to.y == 0)
                    continue;
                const bool bHidden = view.Hides(static_cast<double>(to.x), static_cast<double>(to.y));
                const bool bMet = IsMet(vecPath, to);
                ASSERT_TRUE(bMet || !bHidden)
                    << nReach << ", round " << nRound << ": " << to.x << " " << to.y;
                nNumHidden += bHidden ? 1 : 0;
                nNumMet += bMet ? 1 : 0;
            }
        }
    EXPECT_GT(nNumHidden, nNumMet / 2);
}

// A box is hidden only if each of its places is.
TEST(CPathView_Prop, HidesBox_OnlyWhereAllIsHidden)
{
    int nNumHidden = 0;
    CRandom random(2);
    for (int nRound = 0; nRound < 3000; ++nRound)
    {
        const std::vector<CCorner> vecPath = MakePath(random, 20);
        CPathView view;
        AddAll(view, vecPath);
        const int x = static_cast<int>(random.Int(-30, 30));
        const int y = static_cast<int>(random.Int(-30, 30));
        const int nWidth = static_cast<int>(random.Int(0, 6));
        const int nHeight = static_cast<int>(random.Int(0, 6));
        if (!view.Hides(CPathView::TBox{static_cast<double>(x), static_cast<double>(y),
                                        static_cast<double>(x + nWidth), static_cast<double>(y + nHeight)}))
            continue;
        ++nNumHidden;
        for (int i = x; i <= x + nWidth; ++i)
            for (int k = y; k <= y + nHeight; ++k)
                ASSERT_TRUE(IsMet(vecPath, {i, k})) << "round " << nRound << ": " << i << " " << k;
    }
    EXPECT_GT(nNumHidden, 300);
}

// Behind a ring of segments nothing is seen, and the distance from which on is that of its farthest corner.
TEST(CPathView, CalcFarthest_OfARing)
{
    CPathView view;
    AddAll(view, {{10, 0}, {0, 10}, {-10, 0}, {0, -10}, {10, 0}, {0, 10}}); // around once and a quarter
    EXPECT_NEAR(view.CalcFarthest(), 100.0, 0.01);
    AddAll(view, {{10, 0}, {0, 10}, {-10, 0}, {0, -10}});
    EXPECT_GT(view.CalcFarthest(), 1.0e300);
}
