#ifndef TESTS_OCTREE_CPLANROBUSTTEST_H
#define TESTS_OCTREE_CPLANROBUSTTEST_H

#include <tests/support/CTestCld.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_3D.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

/// Numbers that no host should give as coordinates.
inline const std::vector<double>& OddNumbers()
{
    using TLimits = std::numeric_limits<double>;
    static const std::vector<double> vecOdd{TLimits::quiet_NaN(),
                                            TLimits::infinity(),
                                            -TLimits::infinity(),
                                            TLimits::max(),
                                            TLimits::lowest(),
                                            1e300,
                                            -1.7e200,
                                            1e20,
                                            -1e10,
                                            TLimits::denorm_min(),
                                            0.0};
    return vecOdd;
}

/// Rings of every shape in the box of a cloud.
struct CPlanRings
{
    using TRing = std::vector<zor::geom::PNT_2D>;

    explicit CPlanRings(const zor::geom::RECT_3D& b)
        : x((b.xmin + b.xmax) / 2.0), y((b.ymin + b.ymax) / 2.0), box{{b.xmin, b.ymin},
                                                                      {b.xmax, b.ymin},
                                                                      {b.xmax, b.ymax},
                                                                      {b.xmin, b.ymax}},
          quarter{{b.xmin, b.ymin}, {x, b.ymin}, {x, y}, {b.xmin, y}}, other{{x, y},
                                                                             {b.xmax, y},
                                                                             {b.xmax, b.ymax},
                                                                             {x, b.ymax}},
          bow{{b.xmin, b.ymin}, {b.xmax, b.ymax}, {b.xmax, b.ymin}, {b.xmin, b.ymax}}, line{{b.xmin, b.ymin},
                                                                                            {b.xmax, b.ymax},
                                                                                            {x, y},
                                                                                            {b.xmax, b.ymax}},
          dot(5, {x, y})
    {
    }

    double x; ///< the middle
    double y;
    TRing box;
    TRing quarter;
    TRing other; ///< across from it
    TRing bow;   ///< crosses itself
    TRing line;  ///< without area
    TRing dot;
};

/// Queries in plan view with odd arguments: what holds of every answer.
template <class T>
class CPlanRobustTest : public ::testing::Test
{
public:
    /// Every index at most once, and one of the cloud's.
    static void ExpectGood(const std::vector<int>& vecSorted, const CPntCld& cld)
    {
        EXPECT_TRUE(std::adjacent_find(vecSorted.begin(), vecSorted.end()) == vecSorted.end());
        EXPECT_TRUE(vecSorted.empty() || (vecSorted.front() >= 0 && vecSorted.back() < cld.GetNumPnts()));
    }

    static zor::geom::RECT_3D GetBox(const CPntCld& cld)
    {
        zor::geom::RECT_3D box(0, 0, 0, 1, 1, 1);
        cld.GetBdry(box);
        return box;
    }
};

#endif
