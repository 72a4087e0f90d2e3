// Which squares the whole region is subtracted from, and which only what is around them: the answers are the
// same but where an edge passes a corner too closely, the costs are not.

#include <octree/contour/CContourRegion.h>

#include <gtest/gtest.h>

using zor::geom::PNT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;

const CContourSquare c_root({-1000.0, -1000.0, 1000.0, 1000.0});
const CContourSquare c_square({0.0, 0.0, 10.0, 10.0});

/// Teeth far from the square, which make a ring one that is cut down.
void AddTeeth(TRing& ring)
{
    for (int i = 0; i < 40; ++i)
    {
        ring.emplace_back(-500.0 - 5.0 * i, -900.0);
        ring.emplace_back(-502.5 - 5.0 * i, -910.0);
    }
}

/// Classifies the square, not beginning with its own edges.
enumSide Classify(CContourRegion& region)
{
    const CContourRegion::CPlace root = region.EnterRoot(c_root);
    const CContourRegion::CPlace place = region.Enter(root, c_square);
    const enumSide eSide = region.ClassifySquare(c_square, place);
    region.Leave(place);
    region.Leave(root);
    return eSide;
}

/// The region below a line from (-700, ...) to the corner (0, 0) of the square and on.
CContourRegion MakeSlope(const TRing& line)
{
    TRing ring = line;
    ring.emplace_back(900.0, -950.0);
    AddTeeth(ring);
    return CContourRegion({ring, {}});
}

} // namespace

// A line that ends in a corner stays where it is when its other end is cut off.
TEST(CContourRegion, EdgeThatEndsInACorner_IsCutDown)
{
    CContourRegion region = MakeSlope({{-700.0, -300.0}, {0.0, 0.0}, {800.0, -300.0}});
    EXPECT_EQ(enumSide::Outside, Classify(region));
    EXPECT_EQ(0U, region.GetRegions().GetNumWhole());
}

// One that passes through a corner may turn by a rounding and cut the square.
TEST(CContourRegion, EdgeThroughACorner_IsNotCutDown)
{
    CContourRegion region = MakeSlope({{-700.0, 700.0}, {700.0, -700.0}});
    EXPECT_EQ(enumSide::Outside, Classify(region));
    EXPECT_EQ(1U, region.GetRegions().GetNumWhole());
}

TEST(CContourRegion, EdgeBesideACorner_IsCutDown)
{
    CContourRegion region = MakeSlope({{-700.0, 700.1}, {700.0, -699.9}});
    EXPECT_EQ(enumSide::Straddling, Classify(region)); // five corners are left
    EXPECT_EQ(0U, region.GetRegions().GetNumWhole());
}

// Looking at more pairs of an edge and a place than a hundred a point costs more than the whole region.
TEST(CContourRegion, ManyEdgesIntoACorner_AreNotLookedAt)
{
    for (const int nNumSpikes : {40, 100})
    {
        TRing ring;
        for (int i = 0; i < nNumSpikes; ++i)
        {
            ring.emplace_back(-90.0 - i * 0.01, -100.0);
            ring.emplace_back(0.11 - i * 0.0001, 0.1 + i * 0.0001);
        }
        ring.emplace_back(-900.0, -900.0);
        CContourRegion region({ring, {}});
        EXPECT_EQ(enumSide::Straddling, Classify(region)) << nNumSpikes;
        EXPECT_EQ(nNumSpikes == 100 ? 1U : 0U, region.GetRegions().GetNumWhole()) << nNumSpikes;
    }
}
