// A host's class derived from the cloud stands between the file and the cloud.

#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/io/ply/PlyBytes.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace
{

/// Records what the reader says, and lets the cloud take it.
class CWatchedCld : public CPntCld
{
public:
    explicit CWatchedCld(int* pnNumGone = nullptr) : CPntCld(nullptr), m_pnNumGone(pnNumGone) {}
    CWatchedCld(const CWatchedCld&) = default;
    CWatchedCld& operator=(const CWatchedCld&) = delete;
    ~CWatchedCld() override
    {
        if (m_pnNumGone != nullptr)
            ++*m_pnNumGone;
    }

    void OnReadType(enumPntCldType eType) override
    {
        m_vecCalls.push_back(CReadCall::Type(eType));
        CPntCld::OnReadType(eType);
    }
    void OnReadNumPnts(int nNumPnts) override
    {
        m_vecCalls.push_back(CReadCall::NumPnts(nNumPnts));
        CPntCld::OnReadNumPnts(nNumPnts);
    }
    void OnReadPnt(double x, double y, double z) override
    {
        m_vecCalls.push_back(CReadCall::Pnt(x, y, z));
        CPntCld::OnReadPnt(x, y, z);
    }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        m_vecCalls.push_back(CReadCall::ColorPnt(x, y, z, r, g, b));
        CPntCld::OnReadPnt(x, y, z, r, g, b);
    }
    void OnReadEnd() override
    {
        m_vecCalls.push_back(CReadCall::End());
        CPntCld::OnReadEnd();
    }

    TReadCalls m_vecCalls;

private:
    int* m_pnNumGone;
};

/// Keeps the points up to a height: gathers them, and tells the cloud how many at the end.
class CLowCld final : public CPntCld
{
public:
    explicit CLowCld(double dMax) : CPntCld(nullptr), m_dMax(dMax) {}

    void OnReadNumPnts(int) override {}
    void OnReadPnt(double x, double y, double z) override
    {
        if (z <= m_dMax)
            m_vecPnts.emplace_back(x, y, z);
    }
    void OnReadPnt(double x, double y, double z, unsigned char, unsigned char, unsigned char) override
    {
        OnReadPnt(x, y, z);
    }
    void OnReadEnd() override
    {
        CPntCld::OnReadNumPnts(static_cast<int>(m_vecPnts.size()));
        for (const zor::geom::PNT_3D& pnt : m_vecPnts)
            CPntCld::OnReadPnt(pnt.x, pnt.y, pnt.z);
        CPntCld::OnReadEnd();
    }

private:
    double m_dMax;
    std::vector<zor::geom::PNT_3D> m_vecPnts;
};

/// Has enough after some points.
class CFullCld final : public CPntCld
{
public:
    explicit CFullCld(int nMax) : CPntCld(nullptr), m_nNumLeft(nMax) {}

    void OnReadPnt(double x, double y, double z) override
    {
        if (m_nNumLeft-- == 0)
            throw std::runtime_error("enough");
        CPntCld::OnReadPnt(x, y, z);
    }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}

private:
    int m_nNumLeft;
};

const char* const c_pGrid =
    "ncols 2\nnrows 1\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -1\n7 8\n";

TEST(CPntCld_Derive, ReadFromFile_CallsTheSlotsOfTheObject)
{
    CWatchedCld grid;
    ASSERT_TRUE(grid.ReadFromFile(nullptr, PntCldFile_AsciiGrid, CMemFile(c_pGrid).GetPath()));
    EXPECT_EQ(TReadCalls({CReadCall::Type(0), CReadCall::NumPnts(2), CReadCall::Pnt(100, 210, 7),
                          CReadCall::Pnt(110, 210, 8), CReadCall::End()}),
              grid.m_vecCalls);
    EXPECT_EQ(2, grid.GetNumPnts());

    CWatchedCld ply;
    ASSERT_TRUE(ply.ReadFromFile(nullptr, PntCldFile_Ply, CMemFile(PlyOfTriangle()).GetPath()));
    EXPECT_EQ(TReadCalls({CReadCall::Type(1), CReadCall::NumPnts(3), CReadCall::ColorPnt(0, 0, 0, 255, 0, 0),
                          CReadCall::ColorPnt(1, 0, 0.5, 0, 255, 0), CReadCall::ColorPnt(0, 1, -2, 0, 0, 255),
                          CReadCall::End()}),
              ply.m_vecCalls);
    EXPECT_EQ(3, ply.GetNumPnts());
    EXPECT_TRUE(ply.IsWithColor());
}

// A native file goes into the store as it is.
TEST(CPntCld_Derive, ReadFromFile_OfANativeFileCallsNone)
{
    CWatchedCld cld;
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Ply, CMemFile(PlyOfXyz(5)).GetPath()));
    const CMemFile file;
    ASSERT_TRUE(cld.WriteToFile(file.GetPath(), 0));
    CWatchedCld loaded;
    ASSERT_TRUE(loaded.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
    EXPECT_EQ(5, loaded.GetNumPnts());
    EXPECT_TRUE(loaded.m_vecCalls.empty());
}

TEST(CPntCld_Derive, ReadFromFile_AFilterTakesWhatItWants)
{
    CLowCld cld(2.5);
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Ply, CMemFile(PlyOfXyz(100)).GetPath()));
    EXPECT_EQ(3, cld.GetNumPnts()); // heights of 0.5, 1.5, 2.5
    zor::geom::RECT_3D rect;
    ASSERT_TRUE(cld.GetBdry(rect));
    EXPECT_EQ(2.5, rect.zmax);
}

TEST(CPntCld_Derive, ReadFromFile_AnExceptionPassesAndTheCloudStaysUsable)
{
    const CMemFile ply(PlyOfXyz(100));
    const CMemFile grid(c_pGrid);
    for (const bool bPly : {true, false})
    {
        CFullCld cld(1);
        EXPECT_THROW(cld.ReadFromFile(nullptr, bPly ? PntCldFile_Ply : PntCldFile_AsciiGrid,
                                      (bPly ? ply : grid).GetPath()),
                     std::runtime_error);
        EXPECT_EQ(bPly ? 100 : 2, cld.GetNumPnts()); // announced
        EXPECT_TRUE(cld.ComputeTree());
        cld.Clear();
        EXPECT_EQ(0, cld.GetNumPnts());
    }
}

TEST(CPntCld_Derive, Destruction_ThroughTheCloud)
{
    int nNumGone = 0;
    std::unique_ptr<CPntCld> pCld = std::make_unique<CWatchedCld>(&nNumGone);
    pCld.reset();
    EXPECT_EQ(1, nNumGone);
}

// A copy of the cloud in it is a cloud that shares its points, and nothing more.
TEST(CPntCld_Derive, Copy_IsACloud)
{
    CWatchedCld cld;
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Ply, CMemFile(PlyOfXyz(5)).GetPath()));
    const CPntCld copy(cld);
    const CWatchedCld same(cld);
    cld.Clear();
    EXPECT_EQ(5, copy.GetNumPnts());
    EXPECT_EQ(5, same.GetNumPnts());
}

} // namespace
