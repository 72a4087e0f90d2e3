// A host stops the reading of a file with an exception out of a slot of its own or of its progress object:
// the cloud holds what had come until then and no octree, can be cleared and filled again, and nothing is
// left behind. So it is where a plain listener is read into.

#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/io/ply/PlyBytes.h>
#include <tests/support/CCldState.h>
#include <tests/support/CStopper.h>
#include <tests/support/LasBytes.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif
#include <zor4data/ReadPnts.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace
{

/// A cloud that watches what is read into it, and stops it.
class CStopCld final : public CPntCld
{
public:
    explicit CStopCld(CStopHost& host) : CPntCld(&host), m_host(host) {}

    void OnReadType(enumPntCldType eType) override
    {
        m_host.Call(Slot_OnReadType);
        CPntCld::OnReadType(eType);
        m_bType = true;
    }
    void OnReadNumPnts(int nNumPnts) override
    {
        m_host.Call(Slot_OnReadNumPnts);
        CPntCld::OnReadNumPnts(nNumPnts);
        m_nAnnounced = nNumPnts;
    }
    void OnReadPnt(double x, double y, double z) override
    {
        m_host.Call(Slot_OnReadPnt);
        CPntCld::OnReadPnt(x, y, z);
        m_vecPnts.emplace_back(x, y, z);
    }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        m_host.Call(Slot_OnReadPnt);
        CPntCld::OnReadPnt(x, y, z, r, g, b);
        m_vecPnts.emplace_back(x, y, z);
    }
    void OnReadEnd() override
    {
        m_host.Call(Slot_OnReadEnd);
        CPntCld::OnReadEnd();
    }

    bool m_bType = false;
    int m_nAnnounced = 0;
    std::vector<zor::geom::PNT_3D> m_vecPnts;

private:
    CStopHost& m_host;
};

/// A listener without a cloud that notes what comes, and stops it.
class CStopListener final : public IPntCldReadListener
{
public:
    explicit CStopListener(CStopHost& host) : m_host(host) {}

    void OnReadType(enumPntCldType eType) override { Take(Slot_OnReadType, CReadCall::Type(eType)); }
    void OnReadNumPnts(int nNumPnts) override { Take(Slot_OnReadNumPnts, CReadCall::NumPnts(nNumPnts)); }
    void OnReadPnt(double x, double y, double z) override { Take(Slot_OnReadPnt, CReadCall::Pnt(x, y, z)); }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        Take(Slot_OnReadPnt, CReadCall::ColorPnt(x, y, z, r, g, b));
    }
    void OnReadEnd() override { Take(Slot_OnReadEnd, CReadCall::End()); }

    /// The calls before the one that it stopped at.
    TReadCalls m_vecCalls;

private:
    void Take(enumSlot eSlot, const CReadCall& call)
    {
        m_host.Call(eSlot);
        m_vecCalls.push_back(call);
    }

    CStopHost& m_host;
};

struct CCase
{
    std::string sName;
    enumPntCldFile eType;
    std::string sBytes;
    bool bProgress; // the reader tells progress
};

std::string GridBytes()
{
    return "ncols 6\nnrows 5\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -1\n"
           "1 2 3 4 5 6\n1 2 -1 4 5 6\n7 8 9 1 2 3\n1 2 3 4 5 6\n6 5 4 3 2 1\n";
}

std::string PlyOfColors(int nNum)
{
    std::string sFile = c_sPlyMagic + "element vertex " + std::to_string(nNum) + "\n" + c_sPlyXyz +
                        c_sPlyRgb + "element face 3\nproperty list uchar int vertex_indices\nend_header\n";
    for (int i = 0; i < nNum; ++i)
        sFile += Floats({static_cast<float>(i), static_cast<float>(i % 5), 1}) + Bytes({i, 2, 3});
    for (int i = 0; i < 3; ++i)
        sFile += Bytes({3}) + BytesOf(0) + BytesOf(1) + BytesOf(2);
    return sFile;
}

std::vector<CCase> MakeCases()
{
    std::vector<CCase> vecCases{{"PLY", PntCldFile_Ply, PlyOfXyz(40), true},
                                {"PLY with colour and faces", PntCldFile_Ply, PlyOfColors(40), true},
                                {"grid", PntCldFile_AsciiGrid, GridBytes(), false}};
#ifdef ZOR4DATA_TEST_LAS
    vecCases.push_back({"LAS", PntCldFile_Las, LasOf(0, 40).GetBytes(), true});
    vecCases.push_back({"LAS with colour", PntCldFile_Las, LasOf(2, 40).GetBytes(), true});
#endif
#ifdef ZOR4DATA_TEST_LAZ
    vecCases.push_back({"LAZ", PntCldFile_Las, LazBytes(LasOf(0, 40), 16), true});
    vecCases.push_back({"LAZ with colour", PntCldFile_Las, LazBytes(LasOf(2, 40), 16), true});
#endif
    return vecCases;
}

class StoppedReading : public ::testing::Test
{
public:
    /// What the header of the class says of a reading that was stopped.
    static void CheckStopped(const CStopCld& cld, const CCase& file)
    {
        EXPECT_EQ(cld.GetFileType(), file.eType);
        EXPECT_EQ(cld.GetVersion(), cld.m_bType ? 0 : -1);
        EXPECT_EQ(cld.GetNumPnts(), cld.m_nAnnounced);
        zor::geom::RECT_3D rect;
        EXPECT_FALSE(cld.GetBdry(rect));
        for (std::size_t i = 0; i < cld.m_vecPnts.size(); ++i)
        {
            zor::geom::PNT_3D pnt;
            cld.GetPnt(static_cast<int>(i), pnt);
            EXPECT_NEAR(pnt.x, cld.m_vecPnts[i].x, 1e-4);
            EXPECT_NEAR(pnt.y, cld.m_vecPnts[i].y, 1e-4);
            EXPECT_NEAR(pnt.z, cld.m_vecPnts[i].z, 1e-4);
        }
    }

    /// The points that have come can be used as they are.
    static void CheckUsable(CStopCld& cld)
    {
        EXPECT_EQ(cld.ComputeTree(), cld.m_nAnnounced > 0);
        cld.Clear();
        EXPECT_EQ(cld.GetNumPnts(), 0);
    }

    void StopEach(const CCase& file, enumSlot eSlot)
    {
        const CMemFile memFile(file.sBytes);
        const zor::String sPath(memFile.GetPath());
        CStopCld whole(m_host);
        ASSERT_TRUE(whole.ReadFromFile(&m_host, file.eType, sPath));
        const CCldState expected(whole);
        const auto attempt = [&](const auto& run)
        {
            CStopCld cld(m_host);
            if (run([&] { cld.ReadFromFile(&m_host, file.eType, sPath); }))
                return;
            CheckStopped(cld, file);
            if (cld.m_vecPnts.size() % 2 == 0)
                CheckUsable(cld);
            cld.Clear();
            EXPECT_TRUE(cld.ReadFromFile(&m_host, file.eType, sPath));
            EXPECT_TRUE(CCldState(cld).HasSame(expected));
        };
        EXPECT_GT(StopEverywhere(m_host, eSlot, 1, attempt), 0) << "slot " << eSlot;
    }

    /// Without a cloud: the listener has got the first of the calls, and nobody calls it again.
    void StopEachOfReadPnts(const CCase& file, enumSlot eSlot)
    {
        const CMemFile memFile(file.sBytes);
        const zor::String sPath(memFile.GetPath());
        CStopListener whole(m_host);
        ASSERT_TRUE(ReadPnts(whole, &m_host, file.eType, sPath));
        const auto attempt = [&](const auto& run)
        {
            CStopListener listener(m_host);
            bool bResult = false;
            const bool bThrough = run([&] { bResult = ReadPnts(listener, &m_host, file.eType, sPath); });
            EXPECT_EQ(bResult, bThrough);
            const TReadCalls& vecCalls = listener.m_vecCalls;
            ASSERT_LE(vecCalls.size(), whole.m_vecCalls.size());
            EXPECT_EQ(vecCalls.size() == whole.m_vecCalls.size(), bThrough);
            EXPECT_TRUE(std::equal(vecCalls.begin(), vecCalls.end(), whole.m_vecCalls.begin()));
        };
        EXPECT_GT(StopEverywhere(m_host, eSlot, 1, attempt), 0) << "slot " << eSlot;
    }

    CStopHost m_host;
};

TEST_F(StoppedReading, EverySlotOfEveryReader_HoldsWhatHadCome)
{
    for (const CCase& file : MakeCases())
    {
        SCOPED_TRACE(file.sName);
        for (const enumSlot eSlot : {Slot_OnReadType, Slot_OnReadNumPnts, Slot_OnReadPnt, Slot_OnReadEnd})
            StopEach(file, eSlot);
        if (file.bProgress)
            StopEach(file, Slot_SetPos);
    }
}

TEST_F(StoppedReading, EverySlotWithoutACloud_NothingIsLeftBehind)
{
    for (const CCase& file : MakeCases())
    {
        SCOPED_TRACE(file.sName);
        for (const enumSlot eSlot : {Slot_OnReadType, Slot_OnReadNumPnts, Slot_OnReadPnt, Slot_OnReadEnd})
            StopEachOfReadPnts(file, eSlot);
        if (file.bProgress)
            StopEachOfReadPnts(file, Slot_SetPos);
    }
}

std::ptrdiff_t CountOpenFiles()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST_F(StoppedReading, NoFileStaysOpen)
{
    for (const CCase& file : MakeCases())
    {
        SCOPED_TRACE(file.sName);
        const CMemFile memFile(file.sBytes);
        const std::ptrdiff_t nNumOpen = CountOpenFiles();
        CStopCld cld(m_host);
        m_host.SetStop(Slot_OnReadPnt, 3);
        EXPECT_THROW(cld.ReadFromFile(nullptr, file.eType, memFile.GetPath()), CStop);
        EXPECT_EQ(CountOpenFiles(), nNumOpen);
        CStopListener listener(m_host);
        m_host.SetStop(Slot_OnReadPnt, 3);
        EXPECT_THROW(ReadPnts(listener, nullptr, file.eType, memFile.GetPath()), CStop);
        EXPECT_EQ(CountOpenFiles(), nNumOpen);
    }
}

} // namespace
