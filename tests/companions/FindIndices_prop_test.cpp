// Indices alone are those of the records that the queries deliver, in their order, whatever the cloud, the
// marks of deletion and the question.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CheckProp.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindPntsInPolygons.h>
#include <zor4data/IPntIndexListener.h>

#include <cmath>
#include <functional>
#include <string>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::TMultiPartPolygon;

/// Records indices, and whether every batch but the last was full.
class CRecIndices final : public IPntIndexListener
{
public:
    explicit CRecIndices(int nBatch) : m_nBatch(std::max(nBatch, 1)) {}

    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        m_bGood = m_bGood && nNumPnts >= 1 && nNumPnts <= m_nBatch;
        m_nNumShort += nNumPnts < m_nBatch ? 1 : 0;
        m_vecIndices.insert(m_vecIndices.end(), pIndices, pIndices + nNumPnts);
    }

    const std::vector<int>& GetIndices() const { return m_vecIndices; }

    /// @param nNumParts  parts of the query that end with a batch of their own.
    bool IsFull(int nNumParts) const { return m_bGood && m_nNumShort <= nNumParts; }

private:
    int m_nBatch;
    bool m_bGood = true;
    int m_nNumShort = 0;
    std::vector<int> m_vecIndices;
};

template <class T>
class FindIndices_prop : public ::testing::Test
{
public:
    using TRecords = std::function<void(const CPntCld&, IPntCldListener*)>;
    using TIndices = std::function<void(const CPntCld&, IPntIndexListener*, int)>;

    /// A cloud with marks of deletion, and places and sizes that have to do with it.
    struct CCase
    {
        CCase(const CCldRecipe& recipe, bool bTree) : cld(recipe, bTree), random(recipe.seed + 51)
        {
            static const std::vector<int> vecOneIn{0, 0, 1, 2, 9};
            cld.Delete(random.Pick(vecOneIn));
            nBatch = static_cast<int>(random.Chance(8) ? random.Int(-2, 1) : random.Int(1, 50));
        }

        PNT_3D AnyPlace()
        {
            const int nNum = cld->GetNumPnts();
            PNT_3D pnt(0.0, 0.0, 0.0);
            if (nNum > 0)
                pnt = cld.GetPnt(static_cast<int>(random.Int(0, nNum - 1)));
            if (random.Chance(2))
                pnt.x += AnySize();
            return pnt;
        }

        double AnySize() { return std::ldexp(random.Unit() - 0.25, static_cast<int>(random.Int(-12, 18))); }

        std::vector<PLANE_3D> AnyPlanes()
        {
            std::vector<PLANE_3D> planes;
            for (std::int64_t n = random.Int(0, 4); n > 0; --n)
            {
                const PNT_3D at = AnyPlace();
                const double a = random.Unit() - 0.5;
                const double b = random.Unit() - 0.5;
                const double c = random.Chance(2) ? 0.0 : random.Unit() - 0.5;
                planes.emplace_back(a, b, c, -(a * at.x + b * at.y + c * at.z));
            }
            return planes;
        }

        TMultiPartPolygon AnyPolygon()
        {
            TMultiPartPolygon polygon;
            for (std::int64_t n = random.Int(3, 8); n > 0; --n)
            {
                const PNT_3D at = AnyPlace();
                polygon.outer.emplace_back(at.x, at.y);
            }
            return polygon;
        }

        CRecipeCld<T> cld;
        CRandom random;
        int nBatch;
    };

    static std::string Diff(CCase& question, const std::string& sName, const TRecords& records,
                            const TIndices& indices, int nNumParts = 1)
    {
        CRecListener rec;
        records(*question.cld, &rec);
        CRecIndices recIndices(question.nBatch);
        indices(*question.cld, &recIndices, question.nBatch);
        if (rec.GetIndices() != recIndices.GetIndices())
            return sName + ": " + std::to_string(recIndices.GetIndices().size()) + " instead of " +
                   std::to_string(rec.GetNumPnts()) + "; ";
        return recIndices.IsFull(nNumParts) ? "" : sName + ": batches; ";
    }

    static std::string DiffInSpace(CCase& question)
    {
        const double dLod = question.AnySize();
        const std::vector<PLANE_3D> planes = question.AnyPlanes();
        return Diff(
                   question, "all", [](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts(p, 9); },
                   [](const CPntCld& cld, IPntIndexListener* p, int n) { FindIndices(cld, p, n); }) +
               Diff(
                   question, "lod", [=](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts_Lod(p, dLod); },
                   [=](const CPntCld& cld, IPntIndexListener* p, int n)
                   { FindIndices_Lod(cld, p, dLod, n); }) +
               Diff(
                   question, "clip",
                   [=](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts_Clip(p, planes); },
                   [=](const CPntCld& cld, IPntIndexListener* p, int n)
                   { FindIndices_Clip(cld, p, planes, n); }) +
               Diff(
                   question, "lod and clip",
                   [=](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts_LodClip(p, dLod, planes, 9); },
                   [=](const CPntCld& cld, IPntIndexListener* p, int n)
                   { FindIndices_LodClip(cld, p, dLod, planes, n); });
    }

    static std::string DiffInPlan(CCase& question)
    {
        const PNT_3D a = question.AnyPlace();
        const PNT_3D b = question.AnyPlace();
        const PNT_2D p1(a.x, a.y);
        const PNT_2D p2(b.x, b.y);
        const double dDist = question.AnySize();
        const bool bStart = question.random.Chance(2);
        const bool bEnd = question.random.Chance(2);
        const std::vector<TMultiPartPolygon> polygons{question.AnyPolygon(), question.AnyPolygon()};
        return Diff(
                   question, "rectangle",
                   [=](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts2D(p, a.x, a.y, b.x, b.y); },
                   [=](const CPntCld& cld, IPntIndexListener* p, int n)
                   { FindIndices2D(cld, p, a.x, a.y, b.x, b.y, n); }) +
               Diff(
                   question, "line",
                   [=](const CPntCld& cld, IPntCldListener* p)
                   { cld.FindPnts2D_NearLine(p, p1, p2, dDist, bStart, bEnd); },
                   [=](const CPntCld& cld, IPntIndexListener* p, int n)
                   { FindIndices2D_NearLine(cld, p, p1, p2, dDist, bStart, bEnd, n); },
                   3) +
               Diff(
                   question, "polygons",
                   [=](const CPntCld& cld, IPntCldListener* p)
                   { FindPntsInPolygons(cld, p, polygons, bEnd, 9); },
                   [=](const CPntCld& cld, IPntIndexListener* p, int n)
                   { FindIndicesInPolygons(cld, p, polygons, bEnd, n); });
    }
};
TYPED_TEST_SUITE(FindIndices_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(FindIndices_prop, RandomClouds_IndicesOfTheRecords)
{
    CheckProp(500,
              [](const CCldRecipe& recipe)
              {
                  typename TestFixture::CCase question(recipe, true);
                  const std::string sDiff =
                      TestFixture::DiffInSpace(question) + TestFixture::DiffInPlan(question);
                  RC_LOG() << sDiff;
                  RC_ASSERT(sDiff.empty());
              });
}

TYPED_TEST(FindIndices_prop, WithoutOctree_IndicesOfTheRecords)
{
    CheckProp(100,
              [](const CCldRecipe& recipe)
              {
                  typename TestFixture::CCase question(recipe, false);
                  const std::string sDiff =
                      TestFixture::DiffInSpace(question) + TestFixture::DiffInPlan(question);
                  RC_LOG() << sDiff;
                  RC_ASSERT(sDiff.empty());
              });
}

} // namespace
