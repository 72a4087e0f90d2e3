#include <analysis/outline/CSegmentGrid.h>
#include <tests/analysis/outline/COutlineModel.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace
{

using zor::geom::LINE_2D;
using TBox = CSegmentGrid::TBox;

/// Boxes of segments, pushed and popped at random.
void PushOrPop(CRandom& random, const TBox& bounds, int nReach, CSegmentGrid& grid,
               std::vector<CRefSegment>& vecSegments)
{
    const auto box = [](const CRefSegment& s)
    {
        return TBox::Around(static_cast<std::int32_t>(s.ax), static_cast<std::int32_t>(s.ay),
                            static_cast<std::int32_t>(s.bx), static_cast<std::int32_t>(s.by));
    };
    if (random.Chance(3) && !vecSegments.empty())
    {
        grid.Pop(box(vecSegments.back()));
        vecSegments.pop_back();
        return;
    }
    const auto near = [&](std::int64_t n, std::int64_t nMin, std::int64_t nMax)
    { return std::min(std::max(n + random.Int(-nReach, nReach), nMin), nMax); };
    const std::int64_t x = random.Int(bounds.xmin, bounds.xmax);
    const std::int64_t y = random.Int(bounds.ymin, bounds.ymax);
    const CRefSegment segment{x, y, near(x, bounds.xmin, bounds.xmax), near(y, bounds.ymin, bounds.ymax)};
    grid.Push(box(segment));
    vecSegments.push_back(segment);
}

} // namespace

// Along a line all segments that it meets are shown, however the bounds are shaped and however long they are.
TEST(CSegmentGrid_Prop, FindAlong_ShowsAllThatAreMet)
{
    constexpr std::int32_t c_nMax = 2147483647;
    CRandom random(1);
    int nNumMet = 0;
    for (const TBox& bounds : {TBox{0, 0, 9, 9}, TBox{-500, 3, 500, 3}, TBox{-c_nMax - 1, 0, c_nMax, 40},
                               TBox{-c_nMax - 1, -c_nMax - 1, c_nMax, c_nMax}, TBox{5, -3000, 900, 70000}})
        for (const std::size_t nNumCells : {std::size_t{1}, std::size_t{50}, std::size_t{4000}})
        {
            CSegmentGrid grid(bounds, nNumCells);
            std::vector<CRefSegment> vecSegments;
            for (int i = 0; i < 600; ++i)
            {
                PushOrPop(random, bounds, random.Chance(5) ? c_nMax : 30, grid, vecSegments);
                const CRefSegment line{
                    random.Int(bounds.xmin, bounds.xmax), random.Int(bounds.ymin, bounds.ymax),
                    random.Int(bounds.xmin, bounds.xmax), random.Int(bounds.ymin, bounds.ymax)};
                std::set<std::int32_t> setShown;
                const auto show = [&](std::int32_t k)
                {
                    setShown.insert(k);
                    return false;
                };
                grid.FindAlong(LINE_2D(static_cast<double>(line.ax), static_cast<double>(line.ay),
                                       static_cast<double>(line.bx), static_cast<double>(line.by)),
                               show);
                for (std::size_t k = 0; k < vecSegments.size(); ++k)
                    if (line.Meets(vecSegments[k]))
                    {
                        ++nNumMet;
                        ASSERT_EQ(setShown.count(static_cast<std::int32_t>(k)), 1U) << nNumCells << " " << i;
                    }
                ASSERT_TRUE(setShown.empty() || *setShown.rbegin() < static_cast<int>(vecSegments.size()));
            }
        }
    EXPECT_GT(nNumMet, 10000);
}
