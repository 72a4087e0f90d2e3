#include <analysis/ground/CPclManager.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

CCldCadPnt MakePnt(double x, double y, double z)
{
    CCldCadPnt pnt;
    pnt.m_pnt = {x, y, z};
    return pnt;
}

} // namespace

static_assert(std::is_same_v<decltype(CPclManager::m_pCloud), pcl::PointCloud<pcl::PointXYZ>::Ptr>);
static_assert(std::is_base_of_v<IPntCldListener, CPclManager>);

TEST(CPclManager, CreateCloud_IsEmpty)
{
    CPclManager manager;
    EXPECT_FALSE(manager.m_pCloud);
    manager.CreateCloud();
    ASSERT_TRUE(manager.m_pCloud);
    EXPECT_TRUE(manager.m_pCloud->empty());
    EXPECT_EQ(manager.m_pCloud->width, 0U);
    EXPECT_EQ(manager.m_pCloud->height, 0U);
    EXPECT_TRUE(manager.m_pCloud->is_dense);
    EXPECT_TRUE(manager.m_pCloud->sensor_origin_.isZero());
    EXPECT_EQ(manager.m_pCloud->sensor_orientation_.w(), 1.0F);
}

TEST(CPclManager, OnPnts_AppendsInOrder)
{
    CPclManager manager;
    manager.CreateCloud();
    CCldCadPnt pnts[] = {MakePnt(1.0, 2.0, 3.0), MakePnt(4000000.1, 0.1, -2.0), MakePnt(7.0, 8.0, 9.0)};
    manager.OnPnts(2, pnts);
    manager.OnPnts(0, nullptr);
    manager.OnPnts(-1, nullptr);
    manager.OnPnts(1, pnts + 2);
    ASSERT_EQ(manager.m_pCloud->size(), 3U);
    EXPECT_EQ(manager.m_pCloud->width, 3U);
    EXPECT_EQ(manager.m_pCloud->height, 1U);
    EXPECT_EQ((*manager.m_pCloud)[0].z, 3.0F);
    EXPECT_EQ((*manager.m_pCloud)[1].x, 4000000.0F); // to float, no offset subtracted
    EXPECT_EQ((*manager.m_pCloud)[1].y, 0.1F);
    EXPECT_EQ((*manager.m_pCloud)[2].data[3], 1.0F);
}

// A mast of 3.5 on flat ground of points 1 apart: 0.5, 2.5 and 3 decide, and slopes of 1 pass.
TEST(CPclManager, Filter_HasItsFixedSettings)
{
    CPclManager manager;
    manager.CreateCloud();
    for (int i = 0; i < 100; ++i)
    {
        CCldCadPnt pnt = MakePnt(i % 10, i / 10, i == 55 ? 3.5 : i == 33 ? 0.49 : i == 36 ? 0.51 : 0.0);
        manager.OnPnts(1, &pnt);
    }
    std::vector<int> vecGround;
    manager.Filter(nullptr, vecGround);
    std::vector<int> vecExpected;
    for (int i = 0; i < 100; ++i)
        if (i != 55 && i != 36)
            vecExpected.push_back(i);
    EXPECT_EQ(vecGround, vecExpected);
}

TEST(CPclManager, Filter_NothingFromNothing)
{
    CPclManager manager;
    std::vector<int> vecGround;
    manager.CreateCloud();
    manager.Filter(nullptr, vecGround);
    EXPECT_TRUE(vecGround.empty());
}
