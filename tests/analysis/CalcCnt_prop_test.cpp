#include <analysis/CContourWalk.h>
#include <analysis/CalcCnt.h>
#include <analysis/FindClusters.h>
#include <analysis/FindStartPnt.h>
#include <octree/CollectLeaves2D.h>
#include <tests/analysis/COutlineModel.h>
#include <tests/analysis/OutlineClouds.h>
#include <tests/analysis/OutlineListeners.h>

#include <gtest/gtest.h>

namespace
{

constexpr std::uint32_t c_nNumClouds = 6000;

template <class T>
class CalcCntProp : public ::testing::Test
{
};

using PntTypes = ::testing::Types<CTruncPnt, CTruncPnt_Color>;
TYPED_TEST_SUITE(CalcCntProp, PntTypes);

/// A store with the case's points, some of them deleted now and then.
template <class T>
void FillCase(COcTree<T>& store, const COutlineCase& outlineCase, COutlineCases& cases)
{
    FillStore(store, outlineCase.vecPnts);
    if (cases.Draw(0, 2) != 0)
        return;
    const int nShare = cases.Draw(2, 8);
    for (int i = 0; i < store.m_nNumPnts; ++i)
        if (cases.Draw(0, nShare) == 0)
            store.MarkDeleted(i);
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

/// What each stage gives, beside the model's.
template <class T>
void CompareStages(const COcTree<T>& store, double d, COutlineModel& model)
{
    CClusterForest forest = FindClusters(store, nullptr, d * 10000.0);
    ASSERT_EQ(ToFirsts(forest, store.m_nNumPnts), model.GetClusters());
    const std::shared_ptr<unsigned char[]> pBits = CPntBits::MakeClear(store.m_nNumPnts);
    const int nLargest = forest.FindLargest();
    for (int i = 0; i < store.m_nNumPnts; ++i)
        if (forest.FindRoot(i) == nLargest)
            CPntBits::Set(pBits.get(), i);
    const int nStart = FindStartPnt(*store.m_pTree, store.m_pPnts.get(), pBits.get());
    ASSERT_EQ(nStart, model.GetStart());
    if (nStart == -1)
        return;
    CContourWalk<T> walk(*store.m_pTree, store.m_pPnts.get(), pBits.get(), d * 10000.0);
    EXPECT_EQ(walk.Walk(nStart), model.IsClosed());
    EXPECT_EQ(walk.GetPath(), model.GetPath());
    std::set<int> setOpen(model.GetPath().begin(), model.GetPath().end());
    for (int i = 0; i < store.m_nNumPnts; ++i)
        if (CPntBits::IsSet(pBits.get(), i))
            setOpen.insert(i);
    setOpen.insert(nStart);
    std::set<int> setModelOpen = model.GetOpen();
    setModelOpen.insert(nStart);
    EXPECT_EQ(setOpen, setModelOpen);
}

} // namespace

// Index for index what the transcription gives: clusters, start point, path, points given up, delivery.
TYPED_TEST(CalcCntProp, CalcCnt_SameAsModel)
{
    int nNumClosed = 0;
    for (std::uint32_t nSeed = 0; nSeed < c_nNumClouds; ++nSeed)
    {
        COutlineCases cases(nSeed);
        const COutlineCase outlineCase = cases.Make();
        SCOPED_TRACE(outlineCase.sName);
        CRangeColors colors;
        COcTree<TypeParam> store(&colors);
        FillCase(store, outlineCase, cases);
        COutlineModel model(store, outlineCase.d);
        CompareStages(store, outlineCase.d, model);
        CProgressRecorder progress;
        COutlineRecorder recorder;
        EXPECT_EQ(CalcCnt(store, &progress, &recorder, outlineCase.d), model.IsClosed());
        EXPECT_EQ(recorder.m_vecIndices, model.IsClosed() ? model.GetPath() : std::vector<int>());
        EXPECT_EQ(recorder.m_vecBatches, std::vector<int>(recorder.m_vecIndices.size(), 1));
        EXPECT_EQ(progress.m_vecPos, model.GetProgress());
        EXPECT_EQ(progress.m_nNumOthers, 0);
        EXPECT_EQ(colors.m_vecRanges.size(), 1U);
        nNumClosed += model.IsClosed() ? 1 : 0;
        if (this->HasFailure())
            return;
    }
    EXPECT_GT(nNumClosed, static_cast<int>(c_nNumClouds) / 2); // the cases are worth the comparison
}

// A delivered outline ends where it begins, holds no other point twice, and its segments meet only where
// one ends and the next begins.
TYPED_TEST(CalcCntProp, CalcCnt_ClosedAndWithoutCrossing)
{
    for (std::uint32_t nSeed = 100000; nSeed < 100000 + c_nNumClouds; ++nSeed)
    {
        COutlineCases cases(nSeed);
        const COutlineCase outlineCase = cases.Make();
        SCOPED_TRACE(outlineCase.sName);
        COcTree<TypeParam> store(nullptr);
        FillCase(store, outlineCase, cases);
        COutlineRecorder recorder;
        if (!CalcCnt(store, nullptr, &recorder, outlineCase.d))
            continue;
        const std::vector<int>& vecPath = recorder.m_vecIndices;
        ASSERT_GE(vecPath.size(), 4U);
        EXPECT_EQ(vecPath.front(), vecPath.back());
        EXPECT_EQ(std::set<int>(vecPath.begin(), vecPath.end()).size(), vecPath.size() - 1);
        const auto meet = [&](std::size_t i, std::size_t k)
        {
            const auto at = [&](std::size_t n) -> const TypeParam& { return store.m_pPnts[vecPath[n]]; };
            return COutlineModel::Intersect(at(i).m_nX, at(i).m_nY, at(i + 1).m_nX, at(i + 1).m_nY,
                                            at(k).m_nX, at(k).m_nY, at(k + 1).m_nX, at(k + 1).m_nY);
        };
        const std::size_t nNumSegments = vecPath.size() - 1;
        for (std::size_t i = 0; i < nNumSegments; ++i)
            for (std::size_t k = i + 2; k < nNumSegments; ++k)
                EXPECT_FALSE(meet(i, k) && !(i == 0 && k == nNumSegments - 1)) << i << " meets " << k;
        if (this->HasFailure())
            return;
    }
}

TYPED_TEST(CalcCntProp, CollectLeaves2D_SameAsModel)
{
    for (std::uint32_t nSeed = 0; nSeed < 1200; ++nSeed)
    {
        COutlineCases cases(nSeed);
        const COutlineCase outlineCase = cases.Make();
        SCOPED_TRACE(outlineCase.sName);
        COcTree<TypeParam> store(nullptr);
        FillStore(store, outlineCase.vecPnts);
        const COutlineModel model(store, 0.0);
        for (int i = 0; i < 20; ++i)
        {
            static const double c_special[] = {0.0, std::nan(""), HUGE_VAL, -HUGE_VAL, 1.0e300, -1.0e300};
            double limits[4];
            for (double& limit : limits)
            {
                const COutlineCase::CPnt& pnt = outlineCase.vecPnts[static_cast<std::size_t>(
                    cases.Draw(0, static_cast<int>(outlineCase.vecPnts.size()) - 1))];
                limit = cases.Draw(0, 9) == 0        ? c_special[cases.Draw(0, 5)]
                        : (&limit - limits) % 2 == 0 ? pnt.x + cases.Draw(-4, 4) / 4.0
                                                     : pnt.y + cases.Draw(-4, 4) / 4.0;
            }
            std::vector<std::pair<int, int>> vecLeaves;
            CollectLeaves2D(*store.m_pTree, {limits[0], limits[1], limits[2], limits[3]},
                            [&](const COcTreeLeaf& leaf, const CPlanSquare&)
                            { vecLeaves.emplace_back(leaf.m_nFirst, leaf.m_nCount); });
            ASSERT_EQ(vecLeaves, model.CollectLeaves(limits[0], limits[1], limits[2], limits[3]))
                << limits[0] << ' ' << limits[1] << ' ' << limits[2] << ' ' << limits[3];
        }
    }
}
