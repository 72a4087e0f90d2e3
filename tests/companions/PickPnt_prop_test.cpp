// Picking and nearest points against a look at every point: the same index, whatever the cloud and the
// question.

#include <tests/companions/CRecipeCld.h>
#include <tests/companions/PickModel.h>
#include <tests/support/CheckProp.h>
#include <zor4data/PickPnt.h>

#include <limits>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

constexpr double c_dInfinity = std::numeric_limits<double>::infinity();

template <class T>
class PickPnt_prop : public ::testing::Test
{
public:
    /// A cloud, its points as the model sees them, and places that have to do with it.
    struct CCase
    {
        CCase(const CCldRecipe& recipe, bool bTree) : cld(recipe, bTree), random(recipe.seed + 99)
        {
            static const std::vector<int> vecOneIn{0, 0, 1, 2, 5};
            cld.Delete(random.Pick(vecOneIn));
            for (int i = 0; i < cld->GetNumPnts(); ++i)
                vecPnts.push_back(cld.GetPnt(i));
            const CPntArrays arrays = GetPntArrays(*cld);
            for (const PNT_3D& pnt : vecPnts)
                vecCompact.push_back({static_cast<std::int32_t>(std::lround((pnt.x - arrays.fOrgX) * 1e4)),
                                      static_cast<std::int32_t>(std::lround((pnt.y - arrays.fOrgY) * 1e4)),
                                      static_cast<std::int32_t>(std::lround((pnt.z - arrays.fOrgZ) * 1e4))});
            org = {arrays.fOrgX, arrays.fOrgY, arrays.fOrgZ};
        }

        PNT_3D AnyPnt() { return vecPnts.empty() ? PNT_3D(0.0, 0.0, 0.0) : random.Pick(vecPnts); }

        double AnySize() { return std::ldexp(random.Unit() - 0.5, static_cast<int>(random.Int(-12, 20))); }

        /// On a point, near one, or far from all of them.
        PNT_3D AnyPlace()
        {
            PNT_3D place = AnyPnt();
            if (random.Chance(3))
                return place;
            const double dSize = random.Chance(20) ? 1e12 : 1.0;
            for (double* const pCoord : {&place.x, &place.y, &place.z})
                if (!random.Chance(4))
                    *pCoord += AnySize() * dSize;
            return place;
        }

        /// Towards a point, along the axes, or anywhere; of any length.
        PNT_3D AnyDirection(const PNT_3D& from)
        {
            const PNT_3D pnt = AnyPnt();
            PNT_3D direction(pnt.x - from.x, pnt.y - from.y, pnt.z - from.z);
            if (random.Chance(3))
                direction =
                    PNT_3D(static_cast<double>(random.Int(-1, 1)), static_cast<double>(random.Int(-1, 1)),
                           static_cast<double>(random.Int(-1, 1)));
            else if (random.Chance(3))
                direction = PNT_3D(AnySize(), AnySize(), AnySize());
            static const std::vector<double> vecLengths{1.0, 1.0, 1.0, 1e-300, 1e290, 0.001};
            const double dLength = random.Pick(vecLengths);
            return {direction.x * dLength, direction.y * dLength, direction.z * dLength};
        }

        std::vector<PLANE_3D> AnyPlanes()
        {
            std::vector<PLANE_3D> planes;
            if (random.Chance(2))
                return planes;
            for (const Ref::CPlane& plane : MakePlanes(vecCompact, org, random.Next()))
                planes.emplace_back(plane.a, plane.b, plane.c, plane.d);
            return planes;
        }

        CRecipeCld<T> cld;
        CRandom random;
        std::vector<PNT_3D> vecPnts;
        std::vector<Ref::CPnt> vecCompact;
        std::array<float, 3> org{};
    };

    /// @return whether a pick finds what the model finds.
    static bool CheckPick(CCase& any)
    {
        static const std::vector<double> vecTans{0.0, 1e-9, 1e-4, 0.005, 0.005, 0.02,        0.1,
                                                 1.0, 10.0, 1e6,  1e300, -0.1,  c_dInfinity, 1e-200};
        const PNT_3D from = any.AnyPlace();
        const PNT_3D direction = any.AnyDirection(from);
        const double dTan = any.random.Pick(vecTans);
        const std::vector<PLANE_3D> planes = any.AnyPlanes();
        return PickPnt(*any.cld, from, direction, dTan, planes) ==
               PickModel::Pick(
                   any.vecPnts, [&](int i) { return any.cld.IsLive(i); }, from, direction, dTan, planes);
    }

    /// @return whether both nearest points are the model's.
    static bool CheckNearest(CCase& any)
    {
        const PNT_3D place = any.AnyPlace();
        const PNT_3D pnt = any.AnyPnt();
        // The distance of a point, so that it lies right at the limit, or another.
        const double dToPnt = std::hypot(pnt.x - place.x, pnt.y - place.y, pnt.z - place.z);
        const std::vector<double> vecMax{dToPnt, dToPnt, 0.0, 0.01, 1.0, 1000.0, 1.7e200, c_dInfinity, -1.0};
        const double dMax = any.random.Pick(vecMax);
        const auto isLive = [&](int i) { return any.cld.IsLive(i); };
        return FindNearestPnt(*any.cld, place, dMax) ==
                   PickModel::FindNearest(any.vecPnts, isLive, place, dMax, false) &&
               FindNearestPnt2D(*any.cld, PNT_2D(place.x, place.y), dMax) ==
                   PickModel::FindNearest(any.vecPnts, isLive, place, dMax, true);
    }
};
TYPED_TEST_SUITE(PickPnt_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(PickPnt_prop, Pick_SameAsAFullScan)
{
    CheckProp(800,
              [](const CCldRecipe& recipe)
              {
                  typename TestFixture::CCase any(recipe, true);
                  for (int i = 0; i < 40; ++i)
                      RC_ASSERT(TestFixture::CheckPick(any));
              });
}

TYPED_TEST(PickPnt_prop, Nearest_SameAsAFullScan)
{
    CheckProp(800,
              [](const CCldRecipe& recipe)
              {
                  typename TestFixture::CCase any(recipe, true);
                  for (int i = 0; i < 25; ++i)
                      RC_ASSERT(TestFixture::CheckNearest(any));
              });
}

TYPED_TEST(PickPnt_prop, WithoutAnOctree_SameAsAFullScan)
{
    CheckProp(100,
              [](const CCldRecipe& recipe)
              {
                  typename TestFixture::CCase any(recipe, false);
                  for (int i = 0; i < 10; ++i)
                      RC_ASSERT(TestFixture::CheckPick(any) && TestFixture::CheckNearest(any));
              });
}

} // namespace
