// Any cloud that the tests can make survives being saved and loaded.

#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/CTestCld.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/RandomCld.h>
#include <tests/support/RealFiles.h>

#include <functional>

namespace
{

using zor::geom::PLANE_3D;

std::string Save(CPntCld& cld)
{
    const CMemFile file;
    EXPECT_TRUE(cld.WriteToFile(file.GetPath(), 3));
    return ReadFileBytes(file.GetPath());
}

/// Everything that a query delivers, as one comparable text.
std::string Delivered(CPntCld& cld, const std::function<void(CPntCld&, IPntCldListener*)>& query)
{
    CRecListener rec;
    query(cld, &rec);
    std::string sText;
    for (const CCldCadPnt& pnt : rec.GetPnts())
        sText += NativeBytes::BytesOf(pnt.m_pnt.x) + NativeBytes::BytesOf(pnt.m_pnt.y) +
                 NativeBytes::BytesOf(pnt.m_pnt.z) + NativeBytes::BytesOf(pnt.m_fR) +
                 NativeBytes::BytesOf(pnt.m_fG) + NativeBytes::BytesOf(pnt.m_fB) +
                 NativeBytes::BytesOf(pnt.m_nIndex);
    for (const int nBatch : rec.GetBatches())
        sText += NativeBytes::BytesOf(nBatch);
    return sText;
}

std::string BoxOf(const CPntCld& cld)
{
    zor::geom::RECT_3D rect;
    std::string sText = NativeBytes::BytesOf(cld.GetBdry(rect));
    for (const double d : {rect.xmin, rect.ymin, rect.zmin, rect.xmax, rect.ymax, rect.zmax})
        sText += NativeBytes::BytesOf(d);
    return sText;
}

void ExpectSameAnswers(CPntCld& cld, CPntCld& loaded)
{
    EXPECT_EQ(cld.GetNumPnts(), loaded.GetNumPnts());
    EXPECT_EQ(cld.GetVersion(), loaded.GetVersion());
    EXPECT_EQ(cld.IsWithColor(), loaded.IsWithColor());
    EXPECT_EQ(BoxOf(cld), BoxOf(loaded));
    zor::geom::RECT_3D rect;
    cld.GetBdry(rect);
    const double dX = (rect.xmin + rect.xmax) / 2.0;
    const double dSize = rect.xmax - rect.xmin;
    const std::vector<PLANE_3D> vecPlanes = {PLANE_3D(1.0, 0.0, 0.0, -dX),
                                             PLANE_3D(-1.0, 0.3, 0.1, dX - dSize / 3.0)};
    using TListener = IPntCldListener*;
    const std::vector<std::function<void(CPntCld&, TListener)>> vecQueries = {
        [](CPntCld& c, TListener p) { c.GetPnts(p, 100); },
        [&](CPntCld& c, TListener p) { c.GetPnts_Lod(p, dSize / 10.0, 7); },
        [&](CPntCld& c, TListener p) { c.GetPnts_Lod(p, dSize / 100.0, 50); },
        [](CPntCld& c, TListener p) { c.GetPnts_Clip(p, {}, 9); },
        [&](CPntCld& c, TListener p) { c.GetPnts_Clip(p, vecPlanes, 20); },
        [&](CPntCld& c, TListener p) { c.GetPnts_LodClip(p, dSize / 20.0, vecPlanes, 20); },
    };
    for (std::size_t i = 0; i < vecQueries.size(); ++i)
        EXPECT_TRUE(Delivered(cld, vecQueries[i]) == Delivered(loaded, vecQueries[i])) << "query " << i;
}

template <class T>
class ReadNative_prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(ReadNative_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(ReadNative_prop, WriteToFile_ReadFromFile_SameAnswers)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        cld->SetVersion(11);
        const std::string sBytes = Save(*cld);
        CRecColorListener color;
        CPntCld loaded(&color);
        EXPECT_TRUE(loaded.ReadFromFile(nullptr, PntCldFile_Native, CMemFile(sBytes).GetPath()));
        if (cldCase.GetPnts().empty()) // no points are loaded as none, without a tree
        {
            EXPECT_EQ(0, loaded.GetNumPnts());
            continue;
        }
        ExpectSameAnswers(*cld, loaded);
        EXPECT_TRUE(sBytes == Save(loaded));
    }
}

// The file is what the format says, built by the model from the model's tree; and loaded it is that tree.
TYPED_TEST(ReadNative_prop, WriteToFile_BytesByTheBook)
{
    CheckProp(200,
              [](const CCldRecipe& recipe)
              {
                  std::vector<Ref::CPnt> pnts = MakePnts(recipe);
                  RC_PRE(!pnts.empty());
                  CPntCld cld(nullptr);
                  cld.OnReadType(CPntTrait<TypeParam>::c_eType);
                  // The origin, 0, is the first point; it is far from none of the others.
                  cld.Init(static_cast<int>(pnts.size()) + 1);
                  cld.AddPnt(0.0, 0.0, 0.0, 1, 2, 3);
                  for (const Ref::CPnt& pnt : pnts)
                      cld.AddPnt(CoordFromUnits(pnt.x), CoordFromUnits(pnt.y), CoordFromUnits(pnt.z), pnt.r,
                                 pnt.g, pnt.b);
                  cld.ComputeTree();
                  pnts.insert(pnts.begin(), {0, 0, 0, 1, 2, 3});
                  const Ref::CTree tree = Ref::BuildTree(pnts);
                  const std::string sBytes = Save(cld);
                  RC_ASSERT(sBytes == NativeBytes::File(CPntTrait<TypeParam>::c_bColor, 0, {}, pnts, tree));
                  CPntCld loaded(nullptr);
                  RC_ASSERT(loaded.ReadFromFile(nullptr, PntCldFile_Native, CMemFile(sBytes).GetPath()));
                  RC_ASSERT(Save(loaded) == sBytes);
              });
}

} // namespace
