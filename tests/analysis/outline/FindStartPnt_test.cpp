#include <analysis/outline/FindStartPnt.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

namespace
{

template <class T>
class FindStartPnt_ : public ::testing::Test
{
public:
    /// @return place of the start point among the points whose y is not `nOther`; (-1, -1) without one.
    static std::pair<int, int> Find(const std::vector<Ref::CPnt>& vecPnts, int nOther)
    {
        CTestStore<T> store(vecPnts, {0.0F, 0.0F, 0.0F});
        store.ComputeTree();
        const std::shared_ptr<unsigned char[]> pBits = CPntBits::MakeClear(store->m_nNumPnts);
        for (int i = 0; i < store->m_nNumPnts; ++i)
            if (store->m_pPnts[i].m_nY != nOther)
                CPntBits::Set(pBits.get(), i);
        const int nStart = FindStartPnt(*store->m_pTree, store->m_pPnts.get(), pBits.get());
        if (nStart == -1)
            return {-1, -1};
        return {store->m_pPnts[nStart].m_nX, store->m_pPnts[nStart].m_nY};
    }
};
TYPED_TEST_SUITE(FindStartPnt_, TBothPntTypes, CPntTypeName);

constexpr int c_nNone = 123456789;

} // namespace

TYPED_TEST(FindStartPnt_, WesternmostOfAll)
{
    CRandom random(1);
    for (const int nNum : {2, 11, 300, 20000})
    {
        std::vector<Ref::CPnt> vecPnts;
        for (int i = 0; i < nNum; ++i)
            vecPnts.push_back({static_cast<std::int32_t>(random.Int(-90000, 90000)),
                               static_cast<std::int32_t>(random.Int(-90000, 90000)), 0, 0, 0, 0});
        const auto least = std::min_element(vecPnts.begin(), vecPnts.end(),
                                            [](const Ref::CPnt& a, const Ref::CPnt& b) { return a.x < b.x; });
        EXPECT_EQ(this->Find(vecPnts, c_nNone).first, least->x) << nNum;
    }
}

TYPED_TEST(FindStartPnt_, OnlyPntsOfTheSet)
{
    std::vector<Ref::CPnt> vecPnts;
    for (int i = 0; i < 400; ++i)
        vecPnts.push_back({i * 100, i < 200 ? 7 : 500, 0, 0, 0, 0});
    EXPECT_EQ(this->Find(vecPnts, 7), std::make_pair(20000, 500));
    EXPECT_EQ(this->Find(vecPnts, 500), std::make_pair(0, 7));
}

// Of several westernmost points the first one found: octant by octant, in index order within a leaf.
TYPED_TEST(FindStartPnt_, FirstFoundOfEqual)
{
    EXPECT_EQ(
        this->Find(
            {{0, 900, 0, 0, 0, 0}, {0, 100, 0, 0, 0, 0}, {1000, 1000, 0, 0, 0, 0}, {1000, 0, 0, 0, 0, 0}},
            c_nNone),
        std::make_pair(0, 100)); // the southern octant comes first
    EXPECT_EQ(
        this->Find(
            {{0, 110, 0, 0, 0, 0}, {0, 100, 0, 0, 0, 0}, {1000, 1000, 0, 0, 0, 0}, {1000, 0, 0, 0, 0, 0}},
            c_nNone),
        std::make_pair(0, 110)); // one leaf: the order of the array
}

TYPED_TEST(FindStartPnt_, NoneInAnEmptySet)
{
    EXPECT_EQ(this->Find({{0, 7, 0, 0, 0, 0}, {1000, 7, 0, 0, 0, 0}}, 7), std::make_pair(-1, -1));
}

// All points of the set lie on the eastern edge of the root cube: none of them is west of the limit.
TYPED_TEST(FindStartPnt_, PntsOnTheLimitDoNotCount_Kept)
{
    EXPECT_EQ(this->Find({{0, 7, 0, 0, 0, 0}, {1000, 8, 0, 0, 0, 0}, {1000, 9, 0, 0, 0, 0}}, 7),
              std::make_pair(-1, -1));
    EXPECT_EQ(this->Find({{0, 7, 0, 0, 0, 0}, {999, 8, 0, 0, 0, 0}, {1000, 9, 0, 0, 0, 0}}, 7),
              std::make_pair(999, 8));
}

// A cloud without extent has no room west of the limit.
TYPED_TEST(FindStartPnt_, NoneWithoutExtent_Kept)
{
    EXPECT_EQ(this->Find({{5, 5, 0, 0, 0, 0}, {5, 5, 0, 0, 0, 0}}, c_nNone), std::make_pair(-1, -1));
}
