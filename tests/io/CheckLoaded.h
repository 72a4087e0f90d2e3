#ifndef TESTS_IO_CHECKLOADED_H
#define TESTS_IO_CHECKLOADED_H

#include <tests/io/CMemFile.h>
#include <tests/io/native/CSlowNativeReader.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/CRecListener.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

/// What the file would be if the cloud were saved now.
inline std::string SavedBytes(CPntCld& cld)
{
    const CMemFile file;
    cld.WriteToFile(file.GetPath(), 1);
    return ReadFileBytes(file.GetPath());
}

/// What the rectangle and the contour queries deliver of the square of this half edge about the origin.
inline std::vector<CRecListener> AskInPlan(const CPntCld& cld, double dHalf)
{
    const std::vector<zor::geom::PNT_2D> square = {
        {-dHalf, -dHalf}, {dHalf, -dHalf}, {dHalf, dHalf}, {-dHalf, dHalf}};
    std::vector<CRecListener> vecRecs(3);
    cld.GetPnts2D(&vecRecs[0], -dHalf, -dHalf, dHalf, dHalf);
    cld.FindPnts2D_Cnts(&vecRecs[1], square, {});
    cld.FindPnts2D_IntCnt(&vecRecs[2], square);
    return vecRecs;
}

/// Every query of the tree: only points of `vecFound`, each once at most, all of them where nothing is left
/// out.
inline void CheckQueries(CPntCld& cld, const std::vector<int>& vecFound)
{
    using zor::geom::PLANE_3D;
    std::vector<int> vecSorted = vecFound;
    std::sort(vecSorted.begin(), vecSorted.end());
    const std::vector<PLANE_3D> vecPlanes = {PLANE_3D(1.0, 0.5, 0.25, -0.4), PLANE_3D(0.0, 0.0, -1.0, -0.7)};
    for (const std::vector<PLANE_3D>& planes : {std::vector<PLANE_3D>(), vecPlanes})
        for (const double dLod : {0.0, 1e-4, 0.05, 0.4, 10.0, std::numeric_limits<double>::infinity()})
        {
            CRecListener rec;
            cld.GetPnts_LodClip(&rec, dLod, planes, 3);
            std::vector<int> vecIndices = rec.GetSortedIndices();
            ASSERT_TRUE(std::adjacent_find(vecIndices.begin(), vecIndices.end()) == vecIndices.end());
            ASSERT_TRUE(
                std::includes(vecSorted.begin(), vecSorted.end(), vecIndices.begin(), vecIndices.end()));
        }
    CRecListener recClip;
    cld.GetPnts_Clip(&recClip, {}, 5);
    ASSERT_EQ(vecFound, recClip.GetIndices());
    CRecListener recLod;
    cld.GetPnts_Lod(&recLod, 0.0, 2);
    ASSERT_EQ(vecFound, recLod.GetIndices());
    CRecListener recThin;
    cld.GetPnts_Lod(&recThin, 0.1, 2);
    ASSERT_LE(recThin.GetNumPnts(), recLod.GetNumPnts());
    for (const CRecListener& rec : AskInPlan(cld, 1e9))
    {
        const std::vector<int> vecIndices = rec.GetSortedIndices();
        ASSERT_TRUE(std::adjacent_find(vecIndices.begin(), vecIndices.end()) == vecIndices.end());
        ASSERT_TRUE(std::includes(vecSorted.begin(), vecSorted.end(), vecIndices.begin(), vecIndices.end()));
    }
}

/// Loads bytes into an empty cloud and compares everything with what the rules make of them; then uses
/// the cloud as a host may: queries, saving, deleting, building anew.
inline void CheckLoaded(CMemFile& file, const std::string& sBytes)
{
    file.Set(sBytes);
    const CSlowNativeReader expected(sBytes);
    CRecColorListener color;
    CPntCld cld(&color);
    ASSERT_EQ(expected.m_bResult, cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
    ASSERT_EQ(expected.m_bResult ? expected.m_nVersion : -1, cld.GetVersion());
    ASSERT_EQ(expected.m_nType == 1, cld.IsWithColor());
    ASSERT_EQ(expected.m_nNumPnts, cld.GetNumPnts());
    ASSERT_FALSE(cld.IsModified());
    zor::geom::RECT_3D rect;
    ASSERT_EQ(expected.m_bTree, cld.GetBdry(rect));

    CRecListener recAll;
    cld.GetPnts(&recAll, 4);
    ASSERT_EQ(expected.m_nNumPnts, recAll.GetNumPnts());
    ASSERT_NO_FATAL_FAILURE(CheckQueries(cld, expected.m_vecFound));

    // What was left out is left out for good: saved, loaded and saved again it is the same.
    const std::string sSaved = SavedBytes(cld);
    if (expected.m_bTree)
    {
        ASSERT_EQ(NativeBytes::c_sPrologue + sBytes.substr(5, 22 - 4), sSaved.substr(0, 23));
        ASSERT_EQ(NativeBytes::BytesOf(static_cast<std::int32_t>(expected.m_nNumPnts)), sSaved.substr(23, 4));
        ASSERT_EQ(expected.m_sPnts, sSaved.substr(27, expected.m_sPnts.size()));
        if (!expected.m_bLost) // the octree is used as it stands
        {
            ASSERT_EQ(NativeBytes::c_sPrologue + sBytes.substr(5, expected.m_nPos - 5), sSaved);
        }
        CPntCld again(&color);
        ASSERT_TRUE(again.ReadFromFile(nullptr, PntCldFile_Native, CMemFile(sSaved).GetPath()));
        ASSERT_EQ(sSaved, SavedBytes(again));
        ASSERT_NO_FATAL_FAILURE(CheckQueries(again, expected.m_vecFound));
    }
    else
        ASSERT_EQ(11U, sSaved.size());

    if (expected.m_nNumPnts == 0)
        return;
    cld.SelPnt(static_cast<int>(expected.m_nNumPnts - 1), true);
    cld.DelSelPnts();
    ASSERT_EQ(expected.m_nNumPnts - 1, cld.GetNumPnts());
    cld.ComputeTree(); // all points that are left can be found again
    CRecListener recBuilt;
    cld.GetPnts_Clip(&recBuilt, {}, 100);
    ASSERT_EQ(expected.m_nNumPnts - 1, recBuilt.GetNumPnts());
}

#endif
