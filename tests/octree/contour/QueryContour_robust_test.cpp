// The contour queries on every kind of cloud with arguments that no host should give: a defined result.

#include <tests/octree/CPlanRobustTest.h>
#include <zor3geom/IsPntInsidePolygon.h>

#include <algorithm>
#include <cmath>

using zor::geom::PNT_2D;
using zor::geom::RECT_3D;

namespace
{

using TRing = std::vector<PNT_2D>;

template <class T>
class QueryContour_robust : public CPlanRobustTest<T>
{
public:
    static void AskContours(const CPntCld& cld, const TRing& outer, const std::vector<TRing>& holes)
    {
        CRecListener cnts;
        cld.FindPnts2D_Cnts(&cnts, outer, holes);
        CPlanRobustTest<T>::ExpectGood(cnts.GetSortedIndices(), cld);
        CRecListener intCnt;
        cld.FindPnts2D_IntCnt(&intCnt, outer);
        CPlanRobustTest<T>::ExpectGood(intCnt.GetSortedIndices(), cld);
    }
};
TYPED_TEST_SUITE(QueryContour_robust, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(QueryContour_robust, Contours_OddNumbersAnywhere)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const RECT_3D box = this->GetBox(*cld);
        const double x = (box.xmin + box.xmax) / 2.0;
        const double y = (box.ymin + box.ymax) / 2.0;
        for (const double d : OddNumbers())
        {
            const TRing good = {{box.xmin, box.ymin}, {box.xmax, y}, {x, box.ymax}};
            TRing odd = good;
            odd[1].x = d;
            this->AskContours(*cld, odd, {});
            this->AskContours(*cld, good, {odd});
            odd[0].y = d;
            this->AskContours(*cld, odd, {good, odd});
            // Squares without area are inside whatever the region: a cloud at one place comes as a whole.
            const bool bOnePlace = box.xmin == box.xmax && box.ymin == box.ymax && box.zmin == box.zmax;
            if (!std::isfinite(d) && !bOnePlace) // a ring that is not finite holds nothing, as a hole too
            {
                CRecListener rec;
                cld->FindPnts2D_Cnts(&rec, odd, {});
                cld->FindPnts2D_IntCnt(&rec, odd);
                EXPECT_EQ(rec.GetNumPnts(), 0);
            }
        }
    }
}

TYPED_TEST(QueryContour_robust, Contours_OddShapes)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const CPlanRings r(this->GetBox(*cld));
        for (const TRing& outer : {TRing(), TRing{{r.x, r.y}}, TRing{{r.x, r.y}, {r.box[0].x, r.y}}, r.box,
                                   r.bow, r.line, r.dot, r.quarter})
        {
            this->AskContours(*cld, outer, {});
            this->AskContours(*cld, outer, {r.quarter, r.other}); // holes that touch each other and the ring
            this->AskContours(*cld, outer, {outer});              // nothing is left
            this->AskContours(*cld, outer, {r.bow, r.line, r.dot, TRing()});
        }
    }
}

// A contour of 100,000 corners, each a spike: time, and the same points as the plain test gives.
TYPED_TEST(QueryContour_robust, Contours_OfManyCorners)
{
    std::vector<zor::geom::PNT_3D> vecPnts;
    for (int i = 0; i < 40000; ++i)
        vecPnts.emplace_back(i % 200 * 10.0, static_cast<double>(i / 200) * 10.0, i % 7);
    CTestCld<TypeParam> cld(vecPnts);
    TRing ring;
    for (int i = 0; i < 100000; ++i)
    {
        const double dAngle = 6.283185307179586 * i / 100000;
        const double dRadius = i % 2 == 0 ? 900.0 : 885.0;
        ring.emplace_back(1003.0 + dRadius * std::cos(dAngle), 1001.0 + dRadius * std::sin(dAngle));
    }
    CRecListener rec;
    cld->FindPnts2D_Cnts(&rec, ring, {});
    const std::vector<int> vecFound = rec.GetSortedIndices();
    this->ExpectGood(vecFound, *cld);
    // Every hundredth point against the whole ring.
    for (int i = 0; i < cld->GetNumPnts(); i += 100)
    {
        const zor::geom::PNT_3D pnt = cld.GetPnt(i);
        ASSERT_EQ(std::binary_search(vecFound.begin(), vecFound.end(), i),
                  zor::geom::IsPntInsidePolygon(ring, {pnt.x, pnt.y}))
            << pnt.x << ' ' << pnt.y;
    }
}
