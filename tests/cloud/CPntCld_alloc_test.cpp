// Every operation of a cloud when memory runs out: the cloud is as before, and nothing leaks.

#include <tests/support/CNoColors.h>
#include <tests/support/CTestCld.h>
#include <tests/support/FailEveryAlloc.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <tuple>

namespace
{

using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

/// What a host can see of a cloud.
struct CView
{
    using TPnt = std::tuple<double, double, double, int, int, int, bool>;

    explicit CView(const CPntCld& cld)
        : bModified(cld.IsModified()), nVersion(cld.GetVersion()), nFileType(cld.GetFileType()),
          sPath(cld.GetFilePath().c_str())
    {
        RECT_3D rect;
        bHasTree = cld.GetBdry(rect);
        CRecListener rec;
        cld.GetPnts(&rec, 100);
        for (const CCldCadPnt& pnt : rec.GetPnts())
        {
            unsigned char r = 0;
            unsigned char g = 0;
            unsigned char b = 0;
            cld.GetPntColor(pnt.m_nIndex, r, g, b);
            vecPnts.emplace_back(pnt.m_pnt.x, pnt.m_pnt.y, pnt.m_pnt.z, r, g, b, pnt.m_bSel);
        }
        CRecListener recTree;
        cld.GetPnts_Clip(&recTree, {}, 100);
        vecTree = recTree.GetIndices();
    }

    /// Forgets what a build may change before it fails: the order of the points.
    void SortPnts() { std::sort(vecPnts.begin(), vecPnts.end()); }

    bool operator==(const CView& other) const
    {
        return bModified == other.bModified && nVersion == other.nVersion && nFileType == other.nFileType &&
               sPath == other.sPath && bHasTree == other.bHasTree && vecPnts == other.vecPnts &&
               vecTree == other.vecTree;
    }

    bool bModified;
    int nVersion;
    int nFileType;
    std::string sPath;
    bool bHasTree = false;
    std::vector<TPnt> vecPnts;
    std::vector<int> vecTree;
};

template <class T>
class CPntCld_alloc : public ::testing::Test
{
public:
    using TOperation = std::function<void(CPntCld&)>;

    /// A cloud with points that share their place, some of them selected; not built.
    std::unique_ptr<CPntCld> Make()
    {
        auto pCld = std::make_unique<CPntCld>(&m_colors);
        pCld->OnReadType(CPntTrait<T>::c_eType);
        pCld->Init(600);
        for (int i = 0; i < 600; ++i)
            pCld->AddPnt(i * 17 % 90, i * 7 % 30, i % 3, static_cast<unsigned char>(i), 2, 3);
        return pCld;
    }

    /// Each allocation of the operation fails in turn: the cloud is as before or as it should be.
    void FailEach(const std::function<std::unique_ptr<CPntCld>()>& make, const TOperation& operation,
                  bool bOrderMayChange)
    {
        const std::unique_ptr<CPntCld> pWhole = make();
        operation(*pWhole);
        const CView whole(*pWhole);
        const auto attempt = [&](CAllocPlan& plan)
        {
            const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
            {
                const std::unique_ptr<CPntCld> pCld = make();
                CView before(*pCld);
                const bool bThrough = plan.Run([&] { operation(*pCld); });
                CView after(*pCld);
                if (bOrderMayChange && !bThrough)
                {
                    before.SortPnts();
                    after.SortPnts();
                }
                EXPECT_TRUE(after == (bThrough ? whole : before));
                EXPECT_EQ(pCld->GetNumPnts(), static_cast<int>((bThrough ? whole : before).vecPnts.size()));
            }
            EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive);
        };
        EXPECT_GT(FailEveryAlloc(attempt), 0);
    }

    CNoColors m_colors;
};
TYPED_TEST_SUITE(CPntCld_alloc, TBothPntTypes, CPntTypeName);

TYPED_TEST(CPntCld_alloc, Init)
{
    this->FailEach(
        [this]
        {
            auto pCld = this->Make();
            pCld->Clear();
            return pCld;
        },
        [](CPntCld& cld) { cld.Init(1000); }, false);
}

TYPED_TEST(CPntCld_alloc, ComputeTree)
{
    this->FailEach([this] { return this->Make(); }, [](CPntCld& cld) { cld.ComputeTree(); }, true);
}

TYPED_TEST(CPntCld_alloc, ComputeTree_OfAnIndexedCloud)
{
    this->FailEach(
        [this]
        {
            auto pCld = this->Make();
            pCld->ComputeTree();
            pCld->SelPnt(5, false);
            return pCld;
        },
        [](CPntCld& cld) { cld.ComputeTree(); }, false);
}

TYPED_TEST(CPntCld_alloc, OnReadEnd_OfAnIndexedCloud)
{
    this->FailEach(
        [this]
        {
            auto pCld = this->Make();
            pCld->ComputeTree();
            return pCld;
        },
        [](CPntCld& cld) { cld.OnReadEnd(); }, false);
}

// The build comes first and may be through when the removal of duplicates fails: the cloud then has its
// octree and all of its points.
TYPED_TEST(CPntCld_alloc, OnReadEnd_KeepsEveryPoint)
{
    const CView all(*this->Make());
    const auto pWhole = this->Make();
    pWhole->OnReadEnd();
    const CView whole(*pWhole);
    const auto attempt = [&](CAllocPlan& plan)
    {
        const auto pCld = this->Make();
        const bool bThrough = plan.Run([&] { pCld->OnReadEnd(); });
        const CView after(*pCld);
        if (bThrough)
        {
            EXPECT_TRUE(after == whole);
            return;
        }
        EXPECT_EQ(after.vecPnts.size(), all.vecPnts.size());
        EXPECT_EQ(after.vecTree.size(), after.bHasTree ? all.vecPnts.size() : 0U);
        EXPECT_FALSE(after.bModified);
        EXPECT_EQ(pCld->GetNumPnts(), 600);
    };
    EXPECT_GT(FailEveryAlloc(attempt), 5);
}

TYPED_TEST(CPntCld_alloc, DelSelPnts)
{
    this->FailEach(
        [this]
        {
            auto pCld = this->Make();
            pCld->ComputeTree();
            for (int i = 0; i < 600; i += 3)
                pCld->SelPnt(i, false);
            return pCld;
        },
        [](CPntCld& cld) { cld.DelSelPnts(); }, false);
}

// What PCL would pass over in silence, but for a line on the terminal, is an exception.
TYPED_TEST(CPntCld_alloc, Morph)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    this->FailEach(
        [this]
        {
            auto pCld = this->Make();
            pCld->ComputeTree();
            pCld->SelPnt(5, false);
            return pCld;
        },
        [](CPntCld& cld) { cld.Morph(nullptr); }, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TYPED_TEST(CPntCld_alloc, Queries)
{
    const std::vector<zor::geom::PLANE_3D> vecPlanes{zor::geom::PLANE_3D(1.0, 0.1, 0.0, -40.0)};
    const std::vector<std::function<void(CPntCld&)>> vecQueries{
        [](CPntCld& cld) { cld.GetPnts(nullptr, 50); },
        [](CPntCld& cld) { cld.GetPnts_Lod(nullptr, 5.0, 50); },
        [&](CPntCld& cld) { cld.GetPnts_Clip(nullptr, vecPlanes, 50); },
        [&](CPntCld& cld) { cld.GetPnts_LodClip(nullptr, 5.0, vecPlanes, 50); }};
    for (const auto& query : vecQueries)
        this->FailEach(
            [this]
            {
                auto pCld = this->Make();
                pCld->ComputeTree();
                return pCld;
            },
            query, false);
}

const char* const c_pLongPath = "a/path/that/is/longer/than/a/short/string/can/be";

TYPED_TEST(CPntCld_alloc, Assignment)
{
    const auto pSource = this->Make();
    pSource->ReadFromFile(nullptr, static_cast<enumPntCldFile>(7), zor::String(c_pLongPath));
    pSource->ComputeTree();
    this->FailEach([this] { return this->Make(); }, [&](CPntCld& cld) { cld = *pSource; }, false);
}

TYPED_TEST(CPntCld_alloc, Copy)
{
    this->FailEach(
        [this]
        {
            auto pCld = this->Make();
            pCld->ReadFromFile(nullptr, static_cast<enumPntCldFile>(7), zor::String(c_pLongPath));
            return pCld;
        },
        [](CPntCld& cld) { const CPntCld copy(cld); }, false);
}

TYPED_TEST(CPntCld_alloc, ReadFromFile_Path)
{
    const zor::String sPath(c_pLongPath);
    this->FailEach([this] { return this->Make(); },
                   [&](CPntCld& cld) { cld.ReadFromFile(nullptr, static_cast<enumPntCldFile>(7), sPath); },
                   false);
}

// A filling that goes on allocates nothing.
TYPED_TEST(CPntCld_alloc, AddPnt_AllocatesNothing)
{
    CPntCld cld(&this->m_colors);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(100);
    const std::int64_t nNumAllocs = CFailingAlloc::GetNumAllocs();
    for (int i = 0; i < 100; ++i)
        cld.AddPnt(i, i, i);
    EXPECT_EQ(CFailingAlloc::GetNumAllocs(), nNumAllocs);
}

} // namespace
