#ifndef TESTS_OCTREE_CPLANROBUSTTEST_H
#define TESTS_OCTREE_CPLANROBUSTTEST_H

#include <tests/support/CTestCld.h>
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
