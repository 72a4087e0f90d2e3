// Points in polygons on every kind of cloud, with numbers that no host should give as well: a defined result.

#include <tests/companions/CExactPolygons.h>
#include <tests/octree/CPlanRobustTest.h>
#include <zor4data/FindPntsInPolygons.h>

#include <numeric>

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;
using zor::geom::TMultiPartPolygon;

namespace
{

using TRing = std::vector<PNT_2D>;
using TPolygons = std::vector<TMultiPartPolygon>;

template <class T>
class FindPntsInPolygons_robust : public CPlanRobustTest<T>
{
};
TYPED_TEST_SUITE(FindPntsInPolygons_robust, TBothPntTypes, CPntTypeName);

std::vector<int> Find(const CPntCld& cld, const TPolygons& vecPolygons, bool bOutside)
{
    CRecListener rec;
    FindPntsInPolygons(cld, &rec, vecPolygons, bOutside, 100);
    return rec.GetSortedIndices();
}

} // namespace

TYPED_TEST(FindPntsInPolygons_robust, EveryCloud_SameAsExactScan)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const CPlanRings r(this->GetBox(*cld));
        const TRing wide = {{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}};
        for (const TPolygons& vecPolygons :
             std::vector<TPolygons>{{},
                                    {{r.box, {}}},
                                    {{r.box, {r.quarter, r.bow}}},
                                    {{r.bow, {r.dot, r.line}}},
                                    {{r.line, {}}, {r.dot, {}}},
                                    {{wide, {r.box}}},
                                    {{wide, {r.quarter}}, {r.quarter, {r.quarter}}}})
        {
            const CExactPolygons exact(vecPolygons);
            EXPECT_EQ(Find(*cld, vecPolygons, false), cld.Scan(
                                                          [&](const PNT_3D& pnt) {
                                                              return exact.IsInside({pnt.x, pnt.y});
                                                          }));
            EXPECT_EQ(Find(*cld, vecPolygons, true), cld.Scan(
                                                         [&](const PNT_3D& pnt) {
                                                             return !exact.IsInside({pnt.x, pnt.y});
                                                         }));
        }
    }
}

TYPED_TEST(FindPntsInPolygons_robust, OddNumbersAnywhere_EachPntInsideOrOutside)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const RECT_3D box = this->GetBox(*cld);
        std::vector<int> vecAll(static_cast<std::size_t>(cld->GetNumPnts()));
        std::iota(vecAll.begin(), vecAll.end(), 0);
        for (const double d : OddNumbers())
        {
            const TRing good = {{box.xmin, box.ymin}, {box.xmax, box.ymin}, {box.xmin, box.ymax}};
            TRing odd = good;
            odd[1].x = d;
            TRing odder = odd;
            odder[0].y = d;
            for (const TPolygons& vecPolygons :
                 {TPolygons{{odd, {}}}, TPolygons{{good, {odd}}}, TPolygons{{odder, {good, odd}}, {odd, {}}}})
            {
                std::vector<int> vecBoth = Find(*cld, vecPolygons, false);
                const std::vector<int> vecOutside = Find(*cld, vecPolygons, true);
                vecBoth.insert(vecBoth.end(), vecOutside.begin(), vecOutside.end());
                std::sort(vecBoth.begin(), vecBoth.end());
                EXPECT_EQ(vecBoth, vecAll) << d;
            }
        }
    }
}
