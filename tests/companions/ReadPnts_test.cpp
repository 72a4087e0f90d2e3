// A foreign file's points into any listener: the calls that a cloud makes on itself, and nothing kept.

#include <tests/companions/SmallFiles.h>
#include <tests/io/CRecReadListener.h>
#include <zor4data/ReadPnts.h>

#include <gtest/gtest.h>

#include <malloc.h>

namespace
{

namespace fs = std::filesystem;

/// A cloud that records what is called on it while it reads, and keeps no point.
class CRecCld final : public CPntCld
{
public:
    CRecCld() : CPntCld(nullptr) {}

    void OnReadType(enumPntCldType eType) override { m_rec.OnReadType(eType); }
    void OnReadNumPnts(int nNumPnts) override { m_rec.OnReadNumPnts(nNumPnts); }
    void OnReadPnt(double x, double y, double z) override { m_rec.OnReadPnt(x, y, z); }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        m_rec.OnReadPnt(x, y, z, r, g, b);
    }
    void OnReadEnd() override { m_rec.OnReadEnd(); }

    CRecReadListener m_rec;
};

void ExpectSameCalls(enumPntCldFile eType, const zor::String& sPath)
{
    CRecCld cld;
    CRecReadListener rec;
    EXPECT_EQ(ReadPnts(rec, &rec, eType, sPath), cld.ReadFromFile(&cld.m_rec, eType, sPath));
    EXPECT_TRUE(rec.m_vecCalls == cld.m_rec.m_vecCalls)
        << rec.m_vecCalls.size() << " calls, " << cld.m_rec.m_vecCalls.size() << " of the cloud";
    EXPECT_FALSE(rec.m_bOtherProgressCall);
}

TEST(ReadPnts, EachKind_SameCallsAsTheCloud)
{
    for (const CSmallFile& file : SmallForeignFiles())
    {
        SCOPED_TRACE(file.eType);
        const CMemFile memFile(file.sBytes);
        ExpectSameCalls(file.eType, memFile.GetPath());
    }
}

TEST(ReadPnts, CutOffAnywhere_SameCallsAsTheCloud)
{
    for (const CSmallFile& file : SmallForeignFiles())
        for (std::size_t nSize = 0; nSize < file.sBytes.size(); ++nSize)
        {
            SCOPED_TRACE(testing::Message() << file.eType << " cut off at " << nSize);
            const CMemFile memFile(file.sBytes.substr(0, nSize));
            ExpectSameCalls(file.eType, memFile.GetPath());
        }
}

TEST(ReadPnts, RealFiles_SameCallsAsTheCloud)
{
    if (!fs::is_directory(GetRealFolder()))
        GTEST_SKIP() << "no real files in " << GetRealFolder();
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(GetRealFolder()))
    {
        const std::string sExtension = entry.path().extension().string();
        const enumPntCldFile eType = sExtension == ".ply"                           ? PntCldFile_Ply
                                     : sExtension == ".asc"                         ? PntCldFile_AsciiGrid
                                     : sExtension == ".las" || sExtension == ".laz" ? PntCldFile_Las
                                                                                    : PntCldFile_Native;
        if (!entry.is_regular_file() || eType == PntCldFile_Native || entry.file_size() > 1000000)
            continue;
        SCOPED_TRACE(entry.path());
        ExpectSameCalls(eType, entry.path().c_str());
    }
}

TEST(ReadPnts, NativeOrUnknownKindOrNoFile_FalseWithoutAnyCall)
{
    const CMemFile native(SmallNative(PntCldType_Pnt));
    CRecReadListener rec;
    for (const int nType : {-1, 0, 4, 2147483647})
        EXPECT_FALSE(ReadPnts(rec, &rec, static_cast<enumPntCldFile>(nType), native.GetPath())) << nType;
    for (const CSmallFile& file : SmallForeignFiles())
        EXPECT_FALSE(ReadPnts(rec, &rec, file.eType, "/no/such/file")) << file.eType;
    EXPECT_TRUE(rec.m_vecCalls.empty());
}

/// Throws at one of its calls, whichever slot that is.
class CThrower final : public IPntCldReadListener, public IDlgProgress
{
public:
    explicit CThrower(int nNumGood) : m_nNumGood(nNumGood) {}

    void OnReadType(enumPntCldType) override { Count(); }
    void OnReadNumPnts(int) override { Count(); }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override { Count(); }
    void OnReadPnt(double, double, double) override { Count(); }
    void OnReadEnd() override { Count(); }
    void Start() override {}
    void Stop() override {}
    bool SetPos(int) override
    {
        Count();
        return true;
    }

private:
    void Count()
    {
        if (m_nNumGood-- == 0)
            throw std::string("stop");
    }

    int m_nNumGood;
};

std::ptrdiff_t CountOpenFiles()
{
    const fs::directory_iterator it("/proc/self/fd");
    return std::distance(begin(it), end(it));
}

TEST(ReadPnts, ExceptionOfAnyCall_PassesThroughAndClosesTheFile)
{
    for (const CSmallFile& file : SmallForeignFiles())
    {
        const CMemFile memFile(file.sBytes);
        const std::ptrdiff_t nNumOpen = CountOpenFiles();
        int nNumThrown = 0;
        for (bool bThrown = true; bThrown;)
        {
            CThrower thrower(nNumThrown);
            bThrown = false;
            try
            {
                static_cast<void>(ReadPnts(thrower, &thrower, file.eType, memFile.GetPath()));
            }
            catch (const std::string& sWhat)
            {
                bThrown = sWhat == "stop";
            }
            nNumThrown += bThrown ? 1 : 0;
            EXPECT_EQ(CountOpenFiles(), nNumOpen) << file.eType << ", call " << nNumThrown;
        }
        EXPECT_GE(nNumThrown, 6) << file.eType;
    }
}

/// Adds up points, and looks at each call how much memory is in use.
class CMemoryWatch final : public IPntCldReadListener
{
public:
    void OnReadType(enumPntCldType) override {}
    void OnReadNumPnts(int nNumPnts) override
    {
        m_nAnnounced = nNumPnts;
        Look();
    }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
    void OnReadPnt(double x, double y, double z) override
    {
        if (++m_nNumPnts % 1000000 == 1)
            Look();
        m_dSum += x + 2.0 * y + 3.0 * z;
    }
    void OnReadEnd() override { m_bEnded = true; }

    std::size_t m_nMaxBytes = 0;
    int m_nAnnounced = 0;
    int m_nNumPnts = 0;
    double m_dSum = 0.0;
    bool m_bEnded = false;

private:
    void Look()
    {
        const struct mallinfo2 info = mallinfo2();
        m_nMaxBytes = std::max(m_nMaxBytes, info.uordblks + info.hblkhd);
    }
};

TEST(ReadPnts, GridOfVeryManyValues_TakesBoundedMemory)
{
    constexpr int c_nNumRows = 900;
    constexpr int c_nNumCols = 10000;
    CMemFile file;
    {
        std::string sText = "ncols 10000\nnrows 900\nxllcorner 1\nyllcorner 1\ncellsize 1\nNODATA_value -9\n";
        for (int i = 0; i < c_nNumRows; ++i)
        {
            for (int k = 0; k < c_nNumCols; ++k)
                sText += "7 ";
            sText += '\n';
        }
        file.Set(sText);
    }
    const struct mallinfo2 before = mallinfo2();
    CMemoryWatch watch;
    EXPECT_TRUE(ReadPnts(watch, nullptr, PntCldFile_AsciiGrid, file.GetPath()));
    EXPECT_TRUE(watch.m_bEnded);
    EXPECT_EQ(watch.m_nAnnounced, c_nNumRows * c_nNumCols);
    EXPECT_EQ(watch.m_nNumPnts, c_nNumRows * c_nNumCols);
    EXPECT_EQ(watch.m_dSum, 9e6 * (0.5 * (1.0 + c_nNumCols) + 2.0 * (1.5 + 0.5 * c_nNumRows) + 21.0));
    EXPECT_LT(watch.m_nMaxBytes, before.uordblks + before.hblkhd + (std::size_t{64} << 20));
}

} // namespace
