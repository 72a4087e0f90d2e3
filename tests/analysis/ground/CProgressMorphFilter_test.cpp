#include <sample/CSampleTerrain.h>
#include <tests/analysis/ground/MorphCase.h>
#include <tests/analysis/ground/RefMorph.h>
#include <tests/support/CRandom.h>

#include <chrono>
#include <limits>
#include <thread>

namespace
{

constexpr float c_fInfinity = std::numeric_limits<float>::infinity();
constexpr float c_fNan = std::numeric_limits<float>::quiet_NaN();

class CRecProgress final : public IPclProgressListener
{
public:
    void OnProgress(int nPos) override
    {
        m_vecPos.push_back(nPos);
        m_bSameThread = m_bSameThread && std::this_thread::get_id() == m_thread;
    }

    std::vector<int> m_vecPos;
    bool m_bSameThread = true;

private:
    std::thread::id m_thread = std::this_thread::get_id();
};

std::vector<int> MakeRange(int nEnd)
{
    std::vector<int> vec;
    for (int i = 0; i < nEnd; ++i)
        vec.push_back(i);
    return vec;
}

CMorphCase MakeTerrain(int nNumPnts)
{
    CMorphCase morphCase;
    CSampleTerrain(nNumPnts).ForEachPnt(
        [&](const CSamplePnt& pnt)
        {
            morphCase.pCloud->push_back(
                {static_cast<float>(pnt.x), static_cast<float>(pnt.y), static_cast<float>(pnt.z)});
        });
    return morphCase;
}

// Slopes above 1, and steps of just about the heights at which the filter decides.
CMorphCase MakeRough(int nNumPnts, float fOrgX, float fOrgY)
{
    CMorphCase morphCase;
    CRandom random(7);
    const double dSide = std::sqrt(nNumPnts / 8.0);
    for (int i = 0; i < nNumPnts; ++i)
    {
        const double x = random.Unit() * dSide;
        const double y = random.Unit() * dSide;
        double z = 9.0 * std::sin(x * 0.11) + 6.0 * std::sin(y * 0.17) + std::sin(x * 0.4 + y * 0.3) +
                   0.3 * random.Unit();
        const double dKind = random.Unit();
        if (dKind < 0.3)
            z += (dKind < 0.1 ? 0.5 : dKind < 0.2 ? 2.5 : 3.0) + 0.02 * (random.Unit() - 0.5);
        morphCase.pCloud->push_back(
            {static_cast<float>(x) + fOrgX, static_cast<float>(y) + fOrgY, static_cast<float>(z)});
    }
    return morphCase;
}

double MeasureSeconds(const CMorphCase& morphCase)
{
    const auto start = std::chrono::steady_clock::now();
    morphCase.Extract();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

TEST(CProgressMorphFilter, Extract_TerrainAsPublished)
{
    const CMorphCase morphCase = MakeTerrain(9000);
    EXPECT_TRUE(morphCase.Extract() == morphCase.ExtractPublished());
}

TEST(CProgressMorphFilter, Extract_RoughTerrainAsPublished)
{
    const CMorphCase morphCase = MakeRough(9000, 0.0F, 0.0F);
    EXPECT_TRUE(morphCase.Extract() == morphCase.ExtractPublished());
}

// Far from 0, where floats are coarse, the published filter's octree may miss points at the borders of its
// voxels: the scan says what is right.
TEST(CProgressMorphFilter, Extract_FarFromTheOriginAsByScan)
{
    for (const float fOrg : {4.0e6F, -1.0e7F, 1.0e9F})
        ExpectAsByScan(MakeRough(9000, fOrg / 8.0F, fOrg));
}

// One point far away must not cost others their windows.
TEST(CProgressMorphFilter, Extract_OnePntFarAwayAsByScan)
{
    for (const float fFar : {1.0e6F, 1.0e7F, 1.0e9F, -1.0e7F})
    {
        CMorphCase morphCase = MakeRough(2000, 100.0F, 100.0F);
        (*morphCase.pCloud)[1000].y = fFar;
        ExpectAsByScan(morphCase);
    }
}

// Every window of the default ones ends on other points: a closed box is not a half-open one.
TEST(CProgressMorphFilter, Extract_LatticeOnWindowBordersAsPublished)
{
    for (const float fStep : {0.5F, 1.5F, 2.5F, 4.5F})
    {
        CMorphCase morphCase;
        CRandom random(3);
        for (int i = 0; i < 2000; ++i)
            morphCase.pCloud->push_back({fStep * static_cast<float>(i % 40),
                                         fStep * static_cast<float>(i / 40),
                                         static_cast<float>(6.0 * random.Unit())});
        EXPECT_TRUE(morphCase.Extract() == morphCase.ExtractPublished()) << fStep;
    }
}

TEST(CProgressMorphFilter, Extract_ClustersFarApartAsByScan)
{
    CMorphCase morphCase;
    CRandom random(5);
    for (int i = 0; i < 4000; ++i)
    {
        const float fFar = 1.0e6F * static_cast<float>(i % 8);
        morphCase.pCloud->push_back({fFar + static_cast<float>(20.0 * random.Unit()),
                                     fFar * 0.5F + static_cast<float>(20.0 * random.Unit()),
                                     static_cast<float>(5.0 * random.Unit())});
    }
    ExpectAsByScan(morphCase);
}

TEST(CProgressMorphFilter, Extract_SmallCloudsAsPublished)
{
    ExpectAsPublished(CMorphCase());
    ExpectAsPublished(CMorphCase({{1.0F, 2.0F, 3.0F}}));
    ExpectAsPublished(CMorphCase({{1.0F, 2.0F, 3.0F}, {1.0F, 2.0F, 3.0F}, {1.0F, 2.0F, 9.0F}}));
    ExpectAsByScan(CMorphCase({{0.0F, 0.0F, 0.0F}, {1.0e7F, 1.0e7F, 50.0F}}));
    CMorphCase line; // collinear
    for (int i = 0; i < 100; ++i)
        line.pCloud->push_back({static_cast<float>(i) * 1.5F, 3.0F, static_cast<float>(i % 7)});
    ExpectAsPublished(line);
}

TEST(CProgressMorphFilter, Extract_NotFiniteAsPublished)
{
    CMorphCase morphCase({{0.0F, 0.0F, 0.0F},
                          {0.5F, 0.0F, -c_fInfinity},
                          {0.5F, 0.0F, c_fInfinity},
                          {0.5F, 0.0F, c_fNan},
                          {50.0F, 0.0F, -c_fInfinity},
                          {c_fNan, 0.0F, 9.0F},
                          {0.0F, c_fInfinity, 9.0F},
                          {-c_fInfinity, c_fNan, c_fNan},
                          {1.0F, 1.0F, 9.0F}});
    ExpectAsPublished(morphCase);
    EXPECT_EQ(morphCase.Extract(), (std::vector<int>{0, 1, 5, 6}));
}

TEST(CProgressMorphFilter, Extract_WithoutIndicesInThemFindsNothing)
{
    CMorphCase morphCase({{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}});
    morphCase.bIndices = true;
    EXPECT_TRUE(morphCase.Extract().empty());
    ExpectAsPublished(morphCase);
}

// A list as long as the cloud stands for the cloud in its own order: the heights looked at are then not
// those of the points listed.
TEST(CProgressMorphFilter, Extract_IndicesAsManyAsPoints_Kept)
{
    CMorphCase morphCase({{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 9.0F}, {2.0F, 0.0F, 0.0F}});
    morphCase.bIndices = true;
    morphCase.vecIndices = {1, 0, 2};
    EXPECT_EQ(morphCase.Extract(), (std::vector<int>{2})); // not {0, 2}
    ExpectAsPublished(morphCase);
}

TEST(CProgressMorphFilter, Extract_WithoutInputLeavesResult)
{
    CProgressMorphFilter filter;
    CRecProgress progress;
    std::vector<int> vecGround{4, 2};
    filter.extract(&progress, vecGround);
    EXPECT_EQ(vecGround, (std::vector<int>{4, 2}));
    EXPECT_EQ(progress.m_vecPos, MakeRange(101));
}

TEST(CProgressMorphFilter, Extract_AgainAndOnAnotherCloud)
{
    const CMorphCase first({{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 9.0F}});
    const CMorphCase second({{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.1F}, {1.0F, 1.0F, 0.2F}});
    CProgressMorphFilter filter;
    first.SetUp(filter);
    std::vector<int> vecGround;
    filter.extract(nullptr, vecGround);
    filter.extract(nullptr, vecGround);
    EXPECT_EQ(vecGround, (std::vector<int>{0}));
    second.SetUp(filter);
    filter.extract(nullptr, vecGround);
    EXPECT_EQ(vecGround, (std::vector<int>{0, 1, 2}));
}

// The published filter would collect windows for ever, or abort: here an answer comes.
TEST(CProgressMorphFilter, Extract_LeavesTheIndicesAsPublished)
{
    const CMorphCase morphCase = MakeTerrain(3000);
    CProgressMorphFilter filter;
    filter.setInputCloud(morphCase.pCloud);
    std::vector<int> vecGround;
    filter.extract(nullptr, vecGround);
    ASSERT_FALSE(vecGround.empty());
    EXPECT_EQ(MakeRange(3000), *filter.getIndices()) << "of all points, as none were set";

    const pcl::IndicesPtr pSome(new pcl::Indices(MakeRange(700)));
    filter.setIndices(pSome);
    filter.extract(nullptr, vecGround);
    EXPECT_EQ(MakeRange(700), *pSome) << "the caller's";
}

TEST(CProgressMorphFilter, Extract_EndsWithAnyParameters)
{
    for (const float fCellSize : {0.0F, -1.0F, 1.0F, 1.0e-30F, 3.0e38F, c_fInfinity, c_fNan})
        for (const float fBase : {0.0F, 0.5F, 1.0F, -1.0F, -3.0F, 2.0F, 1.0e30F, c_fInfinity, c_fNan})
            for (const bool bExponential : {true, false})
            {
                if (fCellSize == 1.0e-30F && !bExponential && fBase < 1.0e3F)
                    continue; // ends, after 10^30 windows
                CMorphCase morphCase({{0.0F, 0.0F, 0.0F},
                                      {1.0F, 0.0F, 9.0F},
                                      {3.0e38F, -3.0e38F, 3.0e38F},
                                      {-3.0e38F, 1.0e-40F, -3.0e38F},
                                      {c_fNan, c_fInfinity, 1.0F}});
                morphCase.fCellSize = fCellSize;
                morphCase.fBase = fBase;
                morphCase.bExponential = bExponential;
                EXPECT_LE(morphCase.Extract().size(), 5U);
            }
}

TEST(CProgressMorphFilter, OnProgress_EveryPercentOnce)
{
    const std::vector<CMorphCase> vecCases = {MakeTerrain(100000), CMorphCase(),
                                              CMorphCase({{1.0F, 2.0F, 3.0F}})};
    for (const CMorphCase& morphCase : vecCases)
    {
        CRecProgress progress;
        const std::vector<int> vecGround = morphCase.Extract(&progress);
        EXPECT_EQ(progress.m_vecPos, MakeRange(101));
        EXPECT_TRUE(progress.m_bSameThread);
        EXPECT_TRUE(vecGround == morphCase.Extract());
    }
}

// The listener may end the work by an exception; the filter is as good as new.
TEST(CProgressMorphFilter, OnProgress_MayThrow)
{
    struct CThrowing final : IPclProgressListener
    {
        void OnProgress(int nPos) override
        {
            if (nPos == 30)
                throw nPos;
        }
    } throwing;
    const CMorphCase morphCase = MakeTerrain(2000);
    CProgressMorphFilter filter;
    morphCase.SetUp(filter);
    std::vector<int> vecGround;
    EXPECT_THROW(filter.extract(&throwing, vecGround), int);
    filter.extract(nullptr, vecGround);
    EXPECT_TRUE(vecGround == morphCase.Extract());
}

TEST(CProgressMorphFilter, Extract_TimeGrowsWithPoints)
{
    const CMorphCase small = MakeTerrain(20000);
    const CMorphCase large = MakeTerrain(400000);
    MeasureSeconds(small); // warm
    EXPECT_LT(MeasureSeconds(large), 20.0 * 5.0 * MeasureSeconds(small) + 0.5);
}

// No array is as large as the extent: the far point costs nothing. Nor do stacks, all in one cell.
TEST(CProgressMorphFilter, Extract_FarPointsAndStacksAreNoSlower)
{
    CMorphCase far = MakeTerrain(20000);
    far.pCloud->push_back({1.0e7F, -1.0e7F, 0.0F});
    CMorphCase stacks;
    for (int i = 0; i < 200000; ++i)
        stacks.pCloud->push_back({static_cast<float>(i % 3), 0.0F, static_cast<float>(i % 1000) * 0.01F});
    EXPECT_LT(MeasureSeconds(far), 5.0);
    EXPECT_LT(MeasureSeconds(stacks), 5.0);
}
