#include <octree/StorePnt.h>

#include <cloud/COcTree.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

using TLimits = std::numeric_limits<double>;

/// A coordinate: mostly near the limits of the span around the origin, some anywhere, some no number at all.
double RandomCoord(CRandom& random, double dOrg)
{
    static const std::vector<double> vecOdd{
        TLimits::quiet_NaN(), TLimits::infinity(), -TLimits::infinity(), 1e308, -1e308, 0.0, -0.0,
        TLimits::denorm_min()};
    const double dStep = static_cast<double>(random.Int(-30000, 30000)) / 10000.0;
    switch (random.Int(0, 4))
    {
    case 0:
        return random.Pick(vecOdd);
    case 1:
        return dOrg + 214748.3648 + dStep;
    case 2:
        return dOrg - 214748.3648 + dStep;
    default:
        return dOrg + dStep;
    }
}

/// Stores points one by one, and compares each with the conversion of its coordinates one by one.
template <class T, class Store>
void CheckAgainstOneByOne(Store storeOne)
{
    CRandom random(7);
    for (int nRound = 0; nRound < 200; ++nRound)
    {
        COcTree<T> store(nullptr);
        constexpr int c_nNum = 50;
        store.Init(c_nNum);
        const double dOrg = random.Pick(std::vector<double>{0.0, 500000.25, -4e6, 1e30});
        float afOrg[3] = {};
        for (int i = 0; i < c_nNum; ++i)
        {
            double ad[3] = {};
            for (int k = 0; k < 3; ++k)
            {
                ad[k] = RandomCoord(random, dOrg);
                afOrg[k] = i == 0 ? SaturateToFloat(ad[k]) : afOrg[k];
            }
            ASSERT_TRUE(storeOne(store, ad[0], ad[1], ad[2]));
            const T& pnt = store.m_pPnts[i];
            ASSERT_EQ(CompactFromCoord(ad[0], afOrg[0]), pnt.m_nX) << ad[0] << " from " << afOrg[0];
            ASSERT_EQ(CompactFromCoord(ad[1], afOrg[1]), pnt.m_nY) << ad[1] << " from " << afOrg[1];
            ASSERT_EQ(CompactFromCoord(ad[2], afOrg[2]), pnt.m_nZ) << ad[2] << " from " << afOrg[2];
        }
        ASSERT_FALSE(storeOne(store, 0.0, 0.0, 0.0)) << "no slot is left";
        ASSERT_EQ(c_nNum, store.m_nNumAdded);
    }
}

TEST(StorePnt, OffsetsAreThoseOfEachCoordinateByItself)
{
    CheckAgainstOneByOne<CTruncPnt>([](auto& store, double x, double y, double z)
                                    { return StorePnt(store, x, y, z); });
}

TEST(StorePnt, OffsetsAreThoseOfEachCoordinateByItself_Color)
{
    CheckAgainstOneByOne<CTruncPnt_Color>(
        [](auto& store, double x, double y, double z)
        {
            const bool bStored = StorePnt(store, x, y, z, 1, 2, 3);
            const CTruncPnt_Color& last = store.m_pPnts[store.m_nNumAdded - 1];
            EXPECT_EQ(1, last.m_ucR);
            EXPECT_EQ(2, last.m_ucG);
            EXPECT_EQ(3, last.m_ucB);
            return bStored;
        });
}

} // namespace
