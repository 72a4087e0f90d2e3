// The tracker of polygons beside the index of the same polygons: squares, their quarters and places in them,
// with any finite numbers.

#include <octree/contour/CPolygonTracker.h>
#include <tests/support/CRandom.h>
#include <zor3geom/CPolygonIndex.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using zor::geom::CPolygonIndex;
using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;
using TBox = CPolygonTracker::TBox;

namespace
{

/// Numbers that make products vanish and overflow, small whole ones that make rings touch, and a few others.
double Draw(CRandom& random)
{
    using TLimits = std::numeric_limits<double>;
    static const std::vector<double> vecOdd{0.0,
                                            TLimits::denorm_min(),
                                            TLimits::min(),
                                            TLimits::max(),
                                            1e300,
                                            1e150,
                                            1e-140,
                                            0.0625,
                                            1.0,
                                            2.0,
                                            3.0,
                                            4.0,
                                            -1e300,
                                            -TLimits::max()};
    if (random.Chance(4))
        return std::ldexp(random.Unit() - 0.5, static_cast<int>(random.Int(-1070, 1020)));
    const double d = random.Pick(vecOdd);
    return random.Chance(4) ? -d : d;
}

std::vector<PNT_2D> DrawRing(CRandom& random)
{
    std::vector<PNT_2D> ring;
    for (std::int64_t n = random.Int(0, 7); n > 0; --n)
        ring.emplace_back(Draw(random), Draw(random));
    return ring;
}

/// Asks the frame about places of its square, and its quarters, level by level.
void Compare(CPolygonTracker& tracker, const CPolygonTracker::CFrame& frame, const CPolygonIndex& index,
             CRandom& random, int nDepth)
{
    const TBox& box = frame.box;
    const auto drawIn = [&](double dMin, double dMax)
    {
        return random.Chance(3)
                   ? dMin
                   : std::clamp(random.Chance(2) ? Draw(random) : dMin / 2 + dMax / 2, dMin, dMax);
    };
    for (int i = 0; i < 4; ++i)
    {
        const PNT_2D pnt(drawIn(box.xmin, box.xmax), drawIn(box.ymin, box.ymax));
        const bool bInside = frame.eSide == enumSide::Straddling ? tracker.Contains(frame, pnt)
                                                                 : frame.eSide == enumSide::Inside;
        ASSERT_EQ(bInside, index.Contains(pnt)) << pnt.x << ' ' << pnt.y << ", depth " << nDepth;
    }
    if (frame.eSide != enumSide::Straddling || nDepth == 4)
        return;
    const double dX = drawIn(box.xmin, box.xmax);
    const double dY = drawIn(box.ymin, box.ymax);
    const CPolygonTracker::CQuarters quarters(tracker, frame, {dX, dX, dY, dY});
    for (std::size_t i = 0; i < 4; ++i)
        ASSERT_NO_FATAL_FAILURE(Compare(tracker, quarters.Get(i), index, random, nDepth + 1));
}

} // namespace

TEST(CPolygonTracker_prop, AnyFiniteNumbers_SameAsIndex)
{
    for (std::uint64_t nSeed = 0; nSeed < 800; ++nSeed)
    {
        SCOPED_TRACE(nSeed);
        CRandom random(nSeed);
        std::vector<TMultiPartPolygon> vecPolygons(static_cast<std::size_t>(random.Int(0, 2)));
        for (TMultiPartPolygon& polygon : vecPolygons)
        {
            polygon.outer = DrawRing(random);
            polygon.holes.resize(static_cast<std::size_t>(random.Int(0, 2)));
            for (std::vector<PNT_2D>& hole : polygon.holes)
                hole = DrawRing(random);
        }
        CPolygonTracker tracker(vecPolygons);
        const TBox box = TBox::Around(Draw(random), Draw(random), Draw(random), Draw(random));
        const CPolygonTracker::CFrame root = tracker.EnterRoot(box);
        ASSERT_NO_FATAL_FAILURE(Compare(tracker, root, CPolygonIndex(vecPolygons), random, 0));
    }
}
