// Arguments that no one should pass.

#include <tests/support/CTestCld.h>

#include <limits>
#include <new>

// Under the address sanitizer too a block that is too large is no block, and not the end of the program.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

constexpr double c_dNan = std::numeric_limits<double>::quiet_NaN();
constexpr double c_dInf = std::numeric_limits<double>::infinity();
const std::vector<double> c_vecOdd{c_dNan, c_dInf, -c_dInf, 1e308,  -1e308,
                                   5e-324, 0.0,    1.7e200, 3.5e38, -0.0};

template <class T>
class CPntCld_robust : public ::testing::Test
{
public:
    CPntCld_robust() { m_cld.OnReadType(CPntTrait<T>::c_eType); }

    /// Runs every query with odd arguments. @return points delivered by GetPnts_Clip without planes.
    int QueryAll()
    {
        CRecListener rec;
        std::vector<PLANE_3D> vecPlanes;
        for (const double d : c_vecOdd)
        {
            vecPlanes.emplace_back(d, 1.0, -d, d);
            m_cld.GetPnts_Lod(&rec, d, 7);
            m_cld.GetPnts_Clip(&rec, {PLANE_3D(d, d, d, 0.0)}, 7);
            m_cld.GetPnts_LodClip(&rec, d, vecPlanes, 7);
        }
        CRecListener recAll;
        m_cld.GetPnts_Clip(&recAll, {}, 1000);
        return recAll.GetNumPnts();
    }

    CRecColorListener m_color;
    CPntCld m_cld{&m_color};
};
TYPED_TEST_SUITE(CPntCld_robust, TBothPntTypes, CPntTypeName);

TYPED_TEST(CPntCld_robust, AddPnt_AnyCoordinates)
{
    for (std::size_t nFirst = 0; nFirst < c_vecOdd.size(); ++nFirst) // each sets the origin once
    {
        SCOPED_TRACE(nFirst);
        const int nNumPnts = static_cast<int>(c_vecOdd.size() * c_vecOdd.size());
        this->m_cld.Clear();
        ASSERT_TRUE(this->m_cld.Init(nNumPnts));
        for (std::size_t i = 0; i < c_vecOdd.size() * c_vecOdd.size(); ++i)
            EXPECT_TRUE(this->m_cld.AddPnt(c_vecOdd[(nFirst + i) % c_vecOdd.size()],
                                           c_vecOdd[(nFirst + i / c_vecOdd.size()) % c_vecOdd.size()],
                                           c_vecOdd[(nFirst + i * 7) % c_vecOdd.size()], 1, 2, 3));
        this->m_cld.ComputeTree();
        EXPECT_EQ(this->QueryAll(), nNumPnts);
        this->m_cld.OnReadEnd();
        EXPECT_EQ(this->QueryAll(), this->m_cld.GetNumPnts());
        PNT_3D pnt;
        this->m_cld.GetPnt(0, pnt);
        EXPECT_LT(pnt.x, c_dInf); // neither infinite nor not a number
        RECT_3D rect;
        EXPECT_TRUE(this->m_cld.GetBdry(rect));
    }
}

TYPED_TEST(CPntCld_robust, Init_BelowOneIsAStoreOfNoPoints)
{
    for (const int nNumPnts : {0, -1, -5, std::numeric_limits<int>::min()})
    {
        SCOPED_TRACE(nNumPnts);
        this->m_cld.Clear();
        EXPECT_TRUE(this->m_cld.Init(nNumPnts));
        EXPECT_FALSE(this->m_cld.Init(3)); // it has an array
        EXPECT_EQ(this->m_cld.GetNumPnts(), 0);
        EXPECT_FALSE(this->m_cld.AddPnt(1.0, 2.0, 3.0));
        EXPECT_FALSE(this->m_cld.ComputeTree());
        this->m_cld.OnReadEnd();
        this->m_cld.DelSelPnts();
        this->m_cld.UnSelPnts();
        EXPECT_EQ(this->QueryAll(), 0);
    }
}

// As many points as can be named: either there is room for them, or the cloud is as it was.
TYPED_TEST(CPntCld_robust, Init_OfTheLargestNumber)
{
    constexpr int c_nMax = std::numeric_limits<int>::max();
    bool bDone = false;
    try
    {
        bDone = this->m_cld.Init(c_nMax);
    }
    catch (const std::bad_alloc&)
    {
    }
    EXPECT_EQ(this->m_cld.GetNumPnts(), bDone ? c_nMax : 0);
    EXPECT_EQ(this->m_cld.AddPnt(1.0, 2.0, 3.0), bDone);
    this->m_cld.Clear();
    EXPECT_TRUE(this->m_cld.Init(3));
    EXPECT_EQ(this->m_cld.GetNumPnts(), 3);
}

TYPED_TEST(CPntCld_robust, NullListener_IsNotCalled)
{
    CPntCld cld(nullptr);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(50);
    for (int i = 0; i < 50; ++i)
        cld.AddPnt(i, i, i, 255, 0, 0);
    cld.ComputeTree();
    CRecListener rec;
    cld.GetPnts(&rec, 8);
    EXPECT_EQ(rec.GetNumPnts(), 50);
    EXPECT_EQ(rec.GetPnts()[0].m_fG, CPntTrait<TypeParam>::c_bColor ? 0.0F : 1.0F);
    cld.GetPnts(nullptr, 8);
    cld.GetPnts_Lod(nullptr, 1.0, 8);
    cld.GetPnts_Clip(nullptr, {}, 8);
    cld.GetPnts_LodClip(nullptr, 1.0, {}, 8);
    EXPECT_EQ(rec.GetNumPnts(), 50);
}

TYPED_TEST(CPntCld_robust, Version_GoesRound)
{
    this->m_cld.SetVersion(std::numeric_limits<int>::max());
    this->m_cld.SetModified(true);
    EXPECT_EQ(this->m_cld.GetVersion(), std::numeric_limits<int>::min());
}

// Every operation in the state after a Clear and before any Init.
TYPED_TEST(CPntCld_robust, WithoutArray_NothingHappens)
{
    for (const bool bCleared : {false, true})
    {
        if (bCleared)
        {
            this->m_cld.Init(9);
            this->m_cld.AddPnt(1.0, 1.0, 1.0);
            this->m_cld.SelPnt(0, false);
            this->m_cld.Clear();
        }
        this->m_cld.SelPnt(0, true);
        this->m_cld.UnSelPnts();
        this->m_cld.DelSelPnts();
        this->m_cld.OnReadEnd();
        EXPECT_FALSE(this->m_cld.ComputeTree());
        EXPECT_EQ(this->QueryAll(), 0);
        CRecListener rec;
        this->m_cld.GetPnts(&rec, 5);
        EXPECT_EQ(rec.GetNumPnts(), 0);
        EXPECT_FALSE(this->m_cld.IsModified());
        this->m_cld.Clear();
    }
}

TYPED_TEST(CPntCld_robust, ManyPlanes)
{
    this->m_cld.Init(1000);
    for (int i = 0; i < 1000; ++i)
        this->m_cld.AddPnt(i % 10, i / 10 % 10, i / 100);
    this->m_cld.ComputeTree();
    const std::vector<PLANE_3D> vecPlanes(5000, PLANE_3D(1.0, 1.0, 1.0, -4.5));
    CRecListener rec;
    this->m_cld.GetPnts_Clip(&rec, vecPlanes, 100);
    EXPECT_EQ(rec.GetNumPnts(), 35); // x + y + z up to 4
}

// Slots that never came are points at the origin, one of which stays. A file of a few bytes can announce
// any number: it must not cost its time and memory (a count of this size took seconds and gigabytes).
TYPED_TEST(CPntCld_robust, OnReadEnd_ManySlotsNeverFilled)
{
    this->m_cld.OnReadNumPnts(100000000);
    for (int i = 0; i < 1000; ++i)
        this->m_cld.AddPnt(0.5 + i % 32, 0.5 + i / 32, 7.0);
    this->m_cld.OnReadEnd();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 1001 - 1); // the first point has its place at the origin
    CRecListener rec;
    this->m_cld.GetPnts_Clip(&rec, {}, 100);
    EXPECT_EQ(rec.GetNumPnts(), 1000);
}

} // namespace
