#include <analysis/outline/COutlinePath.h>
#include <octree/CTruncPnt.h>
#include <tests/analysis/outline/COutlineModel.h>

#include <gtest/gtest.h>

#include <random>

namespace
{

/// Tests every segment.
bool IsCrossed(const std::vector<CTruncPnt>& vecPnts, const std::vector<std::int32_t>& vecPath,
               std::int32_t nTo)
{
    const auto at = [&](std::int32_t i) -> const CTruncPnt& { return vecPnts[static_cast<std::size_t>(i)]; };
    const CTruncPnt& from = at(vecPath.back());
    const CTruncPnt& to = at(nTo);
    for (std::size_t i = 0; i + 2 < vecPath.size(); ++i)
    {
        const CTruncPnt& a = at(vecPath[i]);
        const CTruncPnt& b = at(vecPath[i + 1]);
        const bool bExempt = nTo == vecPath.front() && a.m_nX == to.m_nX && a.m_nY == to.m_nY;
        if (!bExempt &&
            CRefSegment{from.m_nX, from.m_nY, to.m_nX, to.m_nY}.Meets({a.m_nX, a.m_nY, b.m_nX, b.m_nY}))
            return true;
    }
    return false;
}

std::vector<CTruncPnt> MakePnts(std::mt19937& random, int nNum, int nStep)
{
    std::uniform_int_distribution<int> draw(-nStep, nStep);
    std::vector<CTruncPnt> vecPnts;
    std::int64_t x = 0;
    std::int64_t y = 0;
    for (int i = 0; i < nNum; ++i) // a walk that drifts eastwards, so that it is long and rarely meets itself
    {
        x = std::min<std::int64_t>(x + draw(random) + nStep / 2, 2147483647);
        y = std::clamp<std::int64_t>(y + draw(random), -2147483647, 2147483647);
        vecPnts.emplace_back(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), 0);
    }
    return vecPnts;
}

zor::geom::TPlanBox<std::int32_t> CalcBox(const std::vector<CTruncPnt>& vecPnts)
{
    auto box = zor::geom::TPlanBox<std::int32_t>::GetEmpty();
    for (const CTruncPnt& pnt : vecPnts)
        box.Add(pnt.m_nX, pnt.m_nY);
    return box;
}

/// Lets the path of the points in their order grow to the next point, or shrink by one.
void GrowOrShrink(COutlinePath<CTruncPnt>& path, std::vector<std::int32_t>& vecPath, bool bGrow, int nNum)
{
    if (bGrow && static_cast<int>(vecPath.size()) < nNum)
    {
        path.Push(static_cast<std::int32_t>(vecPath.size()));
        vecPath.push_back(static_cast<std::int32_t>(vecPath.size()));
    }
    else if (!bGrow && vecPath.size() > 1)
    {
        path.Pop();
        vecPath.pop_back();
    }
}

} // namespace

// However the path grew and shrank, a candidate is refused exactly if one of the segments refuses it.
TEST(COutlinePath_Prop, IsCrossedBy_SameAsAllSegments)
{
    std::mt19937 random(1);
    int nNumCrossed = 0;
    int nNumFree = 0;
    for (int nCase = 0; nCase < 8; ++nCase)
    {
        const int nStep = std::vector<int>{1, 3, 1000, 2000000}[static_cast<std::size_t>(nCase / 2)];
        const bool bGrid = nCase % 2 == 1; // boxes first, then the grid
        const int nNum = 1200;
        const std::vector<CTruncPnt> vecPnts = MakePnts(random, nNum, nStep);
        COutlinePath<CTruncPnt> path(vecPnts.data());
        std::vector<std::int32_t> vecPath;
        std::uniform_int_distribution<int> drawPnt(0, nNum - 1);
        std::uniform_int_distribution<int> drawChange(1, 60);
        for (int nRound = 0; nRound < 700; ++nRound)
        {
            const bool bGrow = nRound % 300 < 200;
            if (bGrid && nRound == 100)
                path.MakeGrid(CalcBox(vecPnts), 500);
            for (int i = nRound % 2 == 0 ? 1 : drawChange(random); i > 0; --i)
                GrowOrShrink(path, vecPath, bGrow, nNum);
            ASSERT_EQ(path.GetIndices(), vecPath);
            for (int i = 0; i < 12; ++i)
            {
                const int nNear = std::min(nNum - 1, static_cast<int>(vecPath.size()) + i / 3);
                const std::int32_t nTo = i == 0 ? vecPath.front() : i % 3 == 0 ? drawPnt(random) : nNear;
                const bool bCrossed = IsCrossed(vecPnts, vecPath, nTo);
                ASSERT_EQ(path.IsCrossedBy(nTo), bCrossed) << "step " << nStep << ", round " << nRound;
                ++(bCrossed ? nNumCrossed : nNumFree);
            }
        }
    }
    EXPECT_GT(nNumCrossed, 1000);
    EXPECT_GT(nNumFree, 1000);
}

// The way back to the first point may touch the first segment; the way to another point there may not.
TEST(COutlinePath, IsCrossedBy_OnlyTheFirstPntCloses)
{
    const std::vector<CTruncPnt> vecPnts = {{0, 0, 0},  {0, 10, 0}, {10, 10, 0},
                                            {10, 0, 0}, {0, 0, 5},  {0, 5, 0}};
    COutlinePath<CTruncPnt> path(vecPnts.data());
    for (const int i : {0, 1, 2, 3})
        path.Push(i);
    EXPECT_FALSE(path.IsCrossedBy(0));
    EXPECT_TRUE(path.IsCrossedBy(4));
    EXPECT_TRUE(path.IsCrossedBy(5));
}

// A new segment touches the last one where it begins; once met, a segment may become the last.
TEST(COutlinePath, IsCrossedBy_LastSegmentDoesNotCount)
{
    const std::vector<CTruncPnt> vecPnts = {{0, 0, 0},  {0, 10, 0}, {10, 10, 0},
                                            {10, 5, 0}, {-5, 5, 0}, {5, 20, 0}};
    COutlinePath<CTruncPnt> path(vecPnts.data());
    for (const int i : {0, 1, 2, 3})
        path.Push(i);
    EXPECT_TRUE(path.IsCrossedBy(4)); // by the first segment
    EXPECT_FALSE(path.IsCrossedBy(0));
    EXPECT_TRUE(path.IsCrossedBy(5)); // by the second
    path.Pop();
    EXPECT_FALSE(path.IsCrossedBy(5));
}
