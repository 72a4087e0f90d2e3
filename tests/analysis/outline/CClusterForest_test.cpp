#include <analysis/outline/CClusterForest.h>

#include <gtest/gtest.h>

TEST(CClusterForest, BeginsWithSingles)
{
    CClusterForest forest(3);
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_TRUE(forest.IsRoot(i));
        EXPECT_EQ(forest.FindRoot(i), i);
        EXPECT_EQ(forest.GetSize(i), 1);
    }
    EXPECT_EQ(forest.FindLargest(), 0);
}

TEST(CClusterForest, WithoutPnts)
{
    EXPECT_EQ(CClusterForest(0).FindLargest(), -1);
}

// Not union by size: a single point stays the root of a large cluster that joins it.
TEST(CClusterForest, Join_FirstRootWins_Kept)
{
    CClusterForest forest(6);
    forest.Join(1, 2);
    forest.Join(1, 3);
    forest.Join(1, 4);
    forest.Join(5, 3);
    for (int i = 1; i < 6; ++i)
        EXPECT_EQ(forest.FindRoot(i), 5);
    EXPECT_EQ(forest.GetSize(5), 5);
    EXPECT_EQ(forest.FindRoot(0), 0);
    EXPECT_EQ(forest.FindLargest(), 5);
}

TEST(CClusterForest, Join_TwiceCountsOnce)
{
    CClusterForest forest(3);
    forest.Join(0, 1);
    forest.Join(1, 0);
    forest.Join(0, 0);
    EXPECT_EQ(forest.GetSize(forest.FindRoot(0)), 2);
}

// Of clusters of one size the one of the first point in index order counts, not the one of the first root.
TEST(CClusterForest, FindLargest_FirstMetWins)
{
    CClusterForest forest(6);
    forest.Join(4, 0); // points 0 and 4, root 4
    forest.Join(1, 2); // points 1 and 2, root 1
    EXPECT_EQ(forest.FindLargest(), 4);
    forest.Join(1, 5);
    EXPECT_EQ(forest.FindLargest(), 1);
}

// The longest possible chain: every root becomes the child of the next.
TEST(CClusterForest, FindRoot_LongChain)
{
    constexpr int c_nNum = 200000;
    CClusterForest forest(c_nNum);
    for (int i = 1; i < c_nNum; ++i)
        forest.Join(i, i - 1);
    EXPECT_EQ(forest.FindRoot(0), c_nNum - 1);
    EXPECT_EQ(forest.GetSize(c_nNum - 1), c_nNum);
    EXPECT_EQ(forest.FindLargest(), c_nNum - 1);
}
