// Indices alone, as a host asks for them.

#include <tests/support/CTestCld.h>
#include <zor4data/FindIndices.h>
#include <zor4data/IPntIndexListener.h>

#include <numeric>

namespace
{

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

/// Counts its calls; throws at one of them.
class CCounter final : public IPntIndexListener
{
public:
    explicit CCounter(int nThrowAt = -1) : m_nThrowAt(nThrowAt) {}

    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        if (m_nNumCalls++ == m_nThrowAt)
            throw std::string("enough");
        m_vecIndices.insert(m_vecIndices.end(), pIndices, pIndices + nNumPnts);
    }

    int m_nNumCalls = 0;
    std::vector<int> m_vecIndices;

private:
    int m_nThrowAt;
};

std::vector<PNT_3D> MakeGrid()
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < 400; ++i)
        vecPnts.emplace_back(i % 20, i / 20, 1.0);
    return vecPnts;
}

void AskAll(const CPntCld& cld, IPntIndexListener* pListener)
{
    FindIndices(cld, pListener, 7);
    FindIndices_Lod(cld, pListener, 3.0, 7);
    FindIndices_Clip(cld, pListener, {}, 7);
    FindIndices_LodClip(cld, pListener, 3.0, {}, 7);
    FindIndices2D(cld, pListener, 0.0, 0.0, 5.5, 5.5, 7);
    FindIndices2D_NearLine(cld, pListener, PNT_2D(0.0, 0.0), PNT_2D(9.0, 9.0), 2.0, true, true, 7);
    FindIndicesInPolygons(cld, pListener, {}, true, 7);
}

template <class T>
class FindIndices_case : public ::testing::Test
{
public:
    CTestCld<T> m_cld{MakeGrid()};
};
TYPED_TEST_SUITE(FindIndices_case, TBothPntTypes, CPntTypeName);

TYPED_TEST(FindIndices_case, FindIndices_EveryPntAscendingInFullBatches)
{
    CCounter counter;
    FindIndices(*this->m_cld, &counter, 150);
    std::vector<int> vecWanted(400);
    std::iota(vecWanted.begin(), vecWanted.end(), 0);
    EXPECT_EQ(counter.m_vecIndices, vecWanted);
    EXPECT_EQ(counter.m_nNumCalls, 3);
}

TYPED_TEST(FindIndices_case, BatchBelowOne_CountsAsOne)
{
    CCounter counter;
    FindIndices(*this->m_cld, &counter, -3);
    EXPECT_EQ(counter.m_nNumCalls, 400);
}

TYPED_TEST(FindIndices_case, NoListener_NothingHappens)
{
    AskAll(*this->m_cld, nullptr);
}

TYPED_TEST(FindIndices_case, ColourListener_IsNotCalled)
{
    CCallLog log;
    CRecColorListener color(&log);
    CPntCld cld(&color);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(400);
    for (const PNT_3D& pnt : MakeGrid())
        cld.AddPnt(pnt.x, pnt.y, pnt.z);
    cld.ComputeTree();
    CCounter counter;
    AskAll(cld, &counter);
    EXPECT_GT(counter.m_nNumCalls, 0);
    EXPECT_EQ(log.GetText(), "");
}

TYPED_TEST(FindIndices_case, WhatTheListenerThrows_PassesThrough)
{
    CCounter counter(4);
    EXPECT_THROW(FindIndices(*this->m_cld, &counter, 7), std::string);
    EXPECT_EQ(counter.m_vecIndices.size(), 28U);
}

TEST(FindIndices_case_noType, NoCall)
{
    CPntCld cld(nullptr);
    CCounter counter;
    AskAll(cld, &counter);
    EXPECT_EQ(counter.m_nNumCalls, 0);
}

} // namespace
