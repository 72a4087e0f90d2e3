// Companions when memory runs out, and how much they take.

#include <tests/companions/CRecipeCld.h>
#include <tests/companions/SmallFiles.h>
#include <tests/support/CFailingAlloc.h>
#include <zor4data/CFileFacts.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindLodRuns.h>
#include <zor4data/PickPnt.h>

#include <cstdint>
#include <functional>
#include <new>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

/// Runs an operation with the first allocation failing, the second, and so on, until it gets through.
/// @return how many failed.
int FailEach(const std::function<void()>& operation)
{
    for (int nNumGood = 0;; ++nNumGood)
    {
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        bool bDone = false;
        {
            const CFailingAlloc failing(nNumGood);
            try
            {
                operation();
                bDone = true;
            }
            catch (const std::bad_alloc&)
            {
            }
        }
        EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive) << "allocation " << nNumGood;
        if (bDone)
            return nNumGood;
    }
}

template <class T>
class Companions_alloc : public ::testing::Test
{
public:
    Companions_alloc() : m_cld({2, 5000, 3, true}) {}

    CRecipeCld<T> m_cld;
};
TYPED_TEST_SUITE(Companions_alloc, TBothPntTypes, CPntTypeName);

TYPED_TEST(Companions_alloc, GetPntArrays_OneAllocation)
{
    EXPECT_EQ(FailEach([this] { EXPECT_EQ(GetPntArrays(*this->m_cld).nNumPnts, 5000); }), 1);
    EXPECT_EQ(GetPntArrays(*this->m_cld).nNumPnts, 5000);
}

TYPED_TEST(Companions_alloc, PickPnt_TakesMemoryForPlanesOnly)
{
    const PNT_3D at = this->m_cld.GetPnt(77);
    const PNT_3D from(at.x + 10.0, at.y + 20.0, at.z + 1000.0);
    const PNT_3D direction(-10.0, -20.0, -1000.0);
    const std::vector<PLANE_3D> vecPlanes(5, PLANE_3D(0.0, 0.0, 1.0, -1e9));
    int nFound = -1;
    EXPECT_EQ(FailEach([&] { nFound = PickPnt(*this->m_cld, from, direction, 0.01, {}); }), 0);
    EXPECT_NE(nFound, -1);
    int nFoundBehind = -1;
    EXPECT_GT(FailEach([&] { nFoundBehind = PickPnt(*this->m_cld, from, direction, 0.01, vecPlanes); }), 0);
    EXPECT_EQ(nFoundBehind, nFound);
}

TYPED_TEST(Companions_alloc, FindIndices_OneAllocationABatch)
{
    EXPECT_EQ(FailEach([this] { FindIndices(*this->m_cld, nullptr, 64); }), 1);
    EXPECT_EQ(FailEach([this] { FindIndices_Lod(*this->m_cld, nullptr, 5.0, 64); }), 1);
    EXPECT_GT(FailEach([this] { FindIndices2D(*this->m_cld, nullptr, 0.0, 0.0, 9.0, 9.0, 64); }), 1);
}

TYPED_TEST(Companions_alloc, FindLodRuns_TakesMemoryForItsRuns)
{
    std::int64_t nNumInCube = 0; // not the runs, whose memory would seem lost
    EXPECT_GT(FailEach(
                  [&]
                  {
                      CLodRuns runs;
                      ASSERT_TRUE(FindLodRuns(*this->m_cld, 0.0, 0, 0, 0, 0, runs));
                      nNumInCube = runs.nNumInCube;
                  }),
              0);
    EXPECT_EQ(nNumInCube, 5000);
}

TYPED_TEST(Companions_alloc, FindNearest_TakesNone)
{
    const PNT_3D at = this->m_cld.GetPnt(77);
    const std::int64_t nNumBefore = CFailingAlloc::GetNumAllocs();
    const int nFound = FindNearestPnt(*this->m_cld, at, 1.0);
    const int nFoundInPlan = FindNearestPnt2D(*this->m_cld, PNT_2D(at.x, at.y), 1.0);
    const std::int64_t nNumAfter = CFailingAlloc::GetNumAllocs();
    EXPECT_NE(nFound, -1);
    EXPECT_NE(nFoundInPlan, -1);
    EXPECT_EQ(nNumAfter, nNumBefore);
}

// Whichever allocation fails, std::bad_alloc comes through, nothing leaks, and nothing counts as the file's
// fault.
TEST(Companions_alloc_files, FindFileFactsAndLosses_BadAllocOrTheResult)
{
    std::vector<CSmallFile> vecFiles = SmallForeignFiles();
    vecFiles.push_back({PntCldFile_Native, SmallNative(PntCldType_PntColor)});
    for (const CSmallFile& file : vecFiles)
    {
        const CMemFile memFile(file.sBytes);
        const zor::String sPath(memFile.GetPath());
        EXPECT_GT(FailEach([&] { EXPECT_EQ(FindFileFacts(sPath).eCause, FileCause_None); }), 0);
        const std::size_t nNumLosses = FindFileLosses(sPath, file.eType).size();
        FailEach([&] { EXPECT_EQ(FindFileLosses(sPath, file.eType).size(), nNumLosses); });
    }
}

} // namespace
