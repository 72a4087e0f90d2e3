#include <analysis/outline/COutlineWalk.h>
#include <analysis/outline/CalcCnt.h>
#include <analysis/outline/FindClusters.h>
#include <analysis/outline/FindStartPnt.h>
#include <tests/analysis/outline/COutlineModel.h>
#include <tests/analysis/outline/CProgressRecorder.h>
#include <tests/analysis/outline/OutlineCases.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace
{

template <class T>
class CalcCnt_Prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(CalcCnt_Prop, TBothPntTypes, CPntTypeName);

/// ZOR4DATA_TEST_CLOUDS: number of random clouds, for a long run.
std::uint64_t GetNumClouds()
{
    const char* const pNum = std::getenv("ZOR4DATA_TEST_CLOUDS");
    return pNum == nullptr ? 6000 : std::strtoull(pNum, nullptr, 10);
}

/// A store with the points of a case, some of them deleted now and then.
template <class T>
CTestStore<T> MakeStore(const COutlineCase& outlineCase, std::uint64_t nSeed)
{
    CTestStore<T> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CRandom random(~nSeed);
    store.Mark(random, random.Chance(3) ? static_cast<int>(random.Int(2, 8)) : 0, 0);
    return store;
}

std::vector<int> ToFirsts(CClusterForest& forest, int nNum)
{
    std::vector<int> vecFirsts;
    for (int i = 0; i < nNum; ++i)
    {
        int k = 0;
        while (forest.FindRoot(k) != forest.FindRoot(i))
            ++k;
        vecFirsts.push_back(k);
    }
    return vecFirsts;
}

std::set<int> ToSet(const unsigned char* pBits, int nNum)
{
    std::set<int> setPnts;
    for (int i = 0; i < nNum; ++i)
        if (CPntBits::IsSet(pBits, i))
            setPnts.insert(i);
    return setPnts;
}

/// The walk beside the model's: path, and points that were not given up (the start point aside).
template <class T>
void CompareWalks(const COcTree<T>& store, const std::vector<unsigned char>& vecCluster, int nStart, double d,
                  std::int64_t nPatience, COutlineModel& model)
{
    std::vector<unsigned char> vecOpen = vecCluster;
    unsigned char* const pCluster = vecOpen.data();
    COutlineWalk<T> walk(*store.m_pTree, store.m_pPnts.get(), pCluster, d * 10000.0, nPatience);
    ASSERT_EQ(walk.Walk(nStart, std::numeric_limits<std::int64_t>::max()),
              model.IsClosed() ? Outline_Closed : Outline_None);
    ASSERT_EQ(walk.GetPath(), model.GetPath());
    std::set<int> setOpen = ToSet(pCluster, store.m_nNumPnts);
    setOpen.insert(walk.GetPath().begin(), walk.GetPath().end());
    setOpen.insert(nStart);
    std::set<int> setModelOpen = model.GetOpen();
    setModelOpen.insert(nStart);
    ASSERT_EQ(setOpen, setModelOpen);
}

/// What each stage gives, beside the model's.
template <class T>
void CompareStages(const COcTree<T>& store, double d, COutlineModel& model)
{
    CClusterForest forest = FindClusters(store, nullptr, d * 10000.0);
    ASSERT_EQ(ToFirsts(forest, store.m_nNumPnts), model.GetClusters());
    const std::shared_ptr<unsigned char[]> pCluster = CPntBits::MakeClear(store.m_nNumPnts);
    const int nLargest = forest.FindLargest();
    for (int i = 0; i < store.m_nNumPnts; ++i)
        if (forest.FindRoot(i) == nLargest)
            CPntBits::Set(pCluster.get(), i);
    const int nStart = FindStartPnt(*store.m_pTree, store.m_pPnts.get(), pCluster.get());
    ASSERT_EQ(nStart, model.GetStart());
    if (nStart == -1)
        return;
    const std::vector<unsigned char> vecCluster(pCluster.get(),
                                                pCluster.get() + CPntBits::GetNumBytes(store.m_nNumPnts));
    // Without the index, with it from the first step on, and with one that is made on the way.
    for (const std::int64_t nPatience :
         {std::numeric_limits<std::int64_t>::max(), std::int64_t{0}, 3 * std::int64_t{store.m_nNumPnts}})
        ASSERT_NO_FATAL_FAILURE(CompareWalks(store, vecCluster, nStart, d, nPatience, model)) << nPatience;
}

/// Everything that CalcCnt gives and calls, beside the model's.
template <class T>
void CompareWithModel(CTestStore<T>& store, double d, bool& bClosed)
{
    COutlineModel model(store.GetRef(), d);
    CompareStages(*store, d, model);
    CRecColorListener colors;
    store->m_pColorListener = &colors;
    CProgressRecorder progress;
    CRecListener rec;
    bClosed = CalcCnt(*store, &progress, &rec, d);
    ASSERT_EQ(bClosed, model.IsClosed());
    ASSERT_EQ(rec.GetIndices(), bClosed ? model.GetPath() : std::vector<int>());
    ASSERT_EQ(rec.GetBatches(), std::vector<int>(rec.GetIndices().size(), 1));
    ASSERT_EQ(progress.GetPos(), model.GetProgress());
    ASSERT_EQ(progress.GetNumOthers(), 0);
    ASSERT_EQ(colors.GetRanges().size(), 1U);
}

} // namespace

// Index for index what the model gives: clusters, start point, path, points given up, calls.
TYPED_TEST(CalcCnt_Prop, SameAsModel)
{
    std::uint64_t nNumClosed = 0;
    for (std::uint64_t nSeed = 0; nSeed < GetNumClouds(); ++nSeed)
    {
        const COutlineCase outlineCase = MakeOutlineCase(nSeed);
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store = MakeStore<TypeParam>(outlineCase, nSeed);
        bool bClosed = false;
        ASSERT_NO_FATAL_FAILURE(CompareWithModel(store, outlineCase.d, bClosed));
        nNumClosed += bClosed ? 1 : 0;
    }
    EXPECT_GT(nNumClosed, GetNumClouds() / 2); // the cases are worth the comparison
}

// Whatever the distance.
TYPED_TEST(CalcCnt_Prop, SameAsModel_OddDistances)
{
    for (std::uint64_t nSeed = 0; nSeed < 360; ++nSeed)
    {
        const COutlineCase outlineCase = MakeOutlineCase(nSeed);
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store = MakeStore<TypeParam>(outlineCase, nSeed);
        for (const double d : {0.0, -0.0, -1.0, -3.0, -1.0e300, -HUGE_VAL, HUGE_VAL, std::nan(""), 1.0e300,
                               1.0e308, 1.0e155, 5.0e-324, 1.0e-200, 214748.3647, 0.0001})
        {
            SCOPED_TRACE(d);
            bool bClosed = false;
            ASSERT_NO_FATAL_FAILURE(CompareWithModel(store, d, bClosed));
        }
    }
}

// Paths long enough for several levels of boxes, and dead ends.
TYPED_TEST(CalcCnt_Prop, SameAsModel_LongPaths)
{
    std::size_t nLongest = 0;
    for (std::uint64_t nSeed = 0; nSeed < 16; ++nSeed)
    {
        const COutlineCase outlineCase =
            MakeSerratedRing(nSeed, 80.0 + 30.0 * static_cast<double>(nSeed % 8));
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store = MakeStore<TypeParam>(outlineCase, nSeed);
        bool bClosed = false;
        const double d = nSeed < 8 ? outlineCase.d : 0.9 + 0.1 * static_cast<double>(nSeed - 8);
        ASSERT_NO_FATAL_FAILURE(CompareWithModel(store, d, bClosed));
        nLongest = std::max(nLongest, COutlineModel(store.GetRef(), d).GetPath().size());
    }
    EXPECT_GT(nLongest, 300U);
}

// Scans of rooms, where the walk goes into most of the cloud and back again.
TYPED_TEST(CalcCnt_Prop, SameAsModel_DeadEnds)
{
    std::size_t nNumGivenUp = 0;
    for (std::uint64_t nSeed = 0; nSeed < 24; ++nSeed)
    {
        const COutlineCase outlineCase = MakeRooms(nSeed, 700, 0.6 + 0.1 * static_cast<double>(nSeed % 5));
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store = MakeStore<TypeParam>(outlineCase, nSeed);
        bool bClosed = false;
        ASSERT_NO_FATAL_FAILURE(CompareWithModel(store, outlineCase.d, bClosed));
        COutlineModel model(store.GetRef(), outlineCase.d);
        nNumGivenUp += static_cast<std::size_t>(store->m_nNumPnts) - model.GetOpen().size();
    }
    EXPECT_GT(nNumGivenUp, 1000U);
}

// A delivered outline ends where it begins, holds no other point twice, and its segments meet only where
// one ends and the next begins.
TYPED_TEST(CalcCnt_Prop, ClosedAndWithoutCrossing)
{
    for (std::uint64_t nSeed = 1000000; nSeed < 1000000 + GetNumClouds(); ++nSeed)
    {
        const COutlineCase outlineCase = MakeOutlineCase(nSeed);
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store = MakeStore<TypeParam>(outlineCase, nSeed);
        CRecListener rec;
        if (!CalcCnt(*store, nullptr, &rec, outlineCase.d))
            continue;
        const std::vector<int> vecPath = rec.GetIndices();
        ASSERT_GE(vecPath.size(), 4U);
        ASSERT_EQ(vecPath.front(), vecPath.back());
        ASSERT_EQ(std::set<int>(vecPath.begin(), vecPath.end()).size(), vecPath.size() - 1);
        const auto segment = [&](std::size_t i)
        {
            const TypeParam& a = store->m_pPnts[vecPath[i]];
            const TypeParam& b = store->m_pPnts[vecPath[i + 1]];
            return CRefSegment{a.m_nX, a.m_nY, b.m_nX, b.m_nY};
        };
        const std::size_t nNum = vecPath.size() - 1;
        for (std::size_t i = 0; i < nNum; ++i)
            for (std::size_t k = i + 2; k < nNum; ++k)
                ASSERT_FALSE(segment(i).Meets(segment(k)) && !(i == 0 && k == nNum - 1))
                    << i << " meets " << k;
    }
}
