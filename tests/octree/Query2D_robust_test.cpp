// The plan-view queries on every kind of cloud with arguments that no host should give: a defined result.

#include <tests/octree/CPlanRobustTest.h>

#include <cmath>

using zor::geom::RECT_3D;

namespace
{

template <class T>
class Query2D_robust : public CPlanRobustTest<T>
{
};
TYPED_TEST_SUITE(Query2D_robust, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(Query2D_robust, GetPnts2D_OddNumbersAnywhere)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const RECT_3D b = this->GetBox(*cld);
        for (const double d : OddNumbers())
            for (int k = 0; k < 4; ++k)
            {
                double r[4] = {b.xmin, b.ymin, b.xmax, b.ymax};
                r[k] = d;
                CRecListener rec;
                cld->GetPnts2D(&rec, r[0], r[1], r[2], r[3]);
                this->ExpectGood(rec.GetSortedIndices(), *cld);
                EXPECT_EQ(cld->GetNumPnts2D(r[0], r[1], r[2], r[3]), rec.GetNumPnts());
            }
        if (cld->GetNumPnts() > 1 && b.xmax > b.xmin)
        {
            EXPECT_EQ(cld->GetNumPnts2D(b.xmax, b.ymin, b.xmin, b.ymax), 0); // inside out
        }
    }
}

TYPED_TEST(Query2D_robust, FindPnts2D_NearLine_OddNumbersAnywhere)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const RECT_3D b = this->GetBox(*cld);
        for (const double d : OddNumbers())
            for (int k = 0; k < 5; ++k)
            {
                double v[5] = {b.xmin, b.ymin, b.xmax, b.ymax, 0.5};
                v[k] = d;
                CRecListener rec;
                cld->FindPnts2D_NearLine(&rec, {v[0], v[1]}, {v[2], v[3]}, v[4], false, false);
                this->ExpectGood(rec.GetSortedIndices(), *cld);
                CRecListener ends;
                cld->FindPnts2D_NearLine(&ends, {v[0], v[1]}, {v[2], v[3]}, v[4], true, true);
                EXPECT_LE(ends.GetNumPnts(), rec.GetNumPnts() + 2);
            }
    }
}

TYPED_TEST(Query2D_robust, FindPnts2D_NearLine_FarOutside)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        CRecListener rec;
        for (const double d : {1e7, -1e7, 1e15, 1e100})
            cld->FindPnts2D_NearLine(&rec, {d, d}, {d + 0.1 * std::fabs(d), d}, 1.0, false, false);
        EXPECT_EQ(rec.GetNumPnts(), 0);
    }
}
