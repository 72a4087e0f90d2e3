// Any cloud that the tests can make survives being saved and loaded.

#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/CRandom.h>
#include <tests/support/CTestCld.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/RandomCld.h>
#include <tests/support/RealFiles.h>

#include <array>
#include <functional>
#include <utility>

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

/// Gives the runs of the leaves other places in the array, and moves the points with them.
class CRunShuffle
{
public:
    CRunShuffle(Ref::CTree& tree, std::vector<Ref::CPnt>& pnts, std::uint64_t nSeed)
    {
        ListLeaves(*tree.root);
        CRandom random(nSeed);
        for (std::size_t i = m_vecLeaves.size(); i > 1; --i)
            std::swap(m_vecLeaves[i - 1],
                      m_vecLeaves[static_cast<std::size_t>(random.Int(0, static_cast<int>(i) - 1))]);
        std::vector<Ref::CPnt> moved;
        for (Ref::CChild* const pLeaf : m_vecLeaves)
        {
            const auto it = pnts.begin() + static_cast<std::ptrdiff_t>(pLeaf->first);
            pLeaf->first = static_cast<decltype(pLeaf->first)>(moved.size());
            moved.insert(moved.end(), it, it + static_cast<std::ptrdiff_t>(pLeaf->count));
        }
        pnts = moved;
    }

private:
    void ListLeaves(Ref::CNode& node)
    {
        for (const auto& pChild : node.child)
        {
            if (pChild == nullptr)
                continue;
            if (pChild->leaf)
                m_vecLeaves.push_back(pChild.get());
            else
                ListLeaves(*pChild->node);
        }
    }

    std::vector<Ref::CChild*> m_vecLeaves;
};

/// The places that a query of the tree delivers, whatever their indices.
std::vector<std::array<double, 3>> Places(CPntCld& cld, double dLod)
{
    CRecListener rec;
    cld.GetPnts_LodClip(&rec, dLod, {}, 8);
    std::vector<std::array<double, 3>> vecPlaces;
    for (const CCldCadPnt& pnt : rec.GetPnts())
        vecPlaces.push_back({pnt.m_pnt.x, pnt.m_pnt.y, pnt.m_pnt.z});
    return vecPlaces;
}

// Where the runs of the leaves lie in the array is the file's affair: queries of the tree deliver the same
// points in the same order, the query of all points follows the array, and saved again it is the same file.
TYPED_TEST(ReadNative_prop, RunsInAnyOrder_SameAnswersAndSameBytes)
{
    CheckProp(200,
              [](const CCldRecipe& recipe)
              {
                  constexpr bool c_bColor = CPntTrait<TypeParam>::c_bColor;
                  std::vector<Ref::CPnt> pnts = MakePnts(recipe);
                  RC_PRE(!pnts.empty());
                  Ref::CTree tree = Ref::BuildTree(pnts);
                  CPntCld cld(nullptr);
                  const std::string sBytes = NativeBytes::File(c_bColor, 0, {}, pnts, tree);
                  RC_ASSERT(cld.ReadFromFile(nullptr, PntCldFile_Native, CMemFile(sBytes).GetPath()));

                  const CRunShuffle shuffle(tree, pnts, pnts.size());
                  const std::string sShuffled = NativeBytes::File(c_bColor, 0, {}, pnts, tree);
                  CPntCld loaded(nullptr);
                  RC_ASSERT(loaded.ReadFromFile(nullptr, PntCldFile_Native, CMemFile(sShuffled).GetPath()));
                  for (const double dLod : {0.0, 0.01, 1.0, 100.0})
                      RC_ASSERT(Places(cld, dLod) == Places(loaded, dLod));
                  CRecListener rec;
                  loaded.GetPnts(&rec, 8);
                  RC_ASSERT(rec.GetNumPnts() == static_cast<int>(pnts.size()));
                  RC_ASSERT(rec.GetIndices() == rec.GetSortedIndices());
                  RC_ASSERT(Save(loaded) == sShuffled);
              });
}

} // namespace
