// How often `check` opens a large file, and how much of it it reads: seen in its system calls.
#include <tests/host/support/CTracedTest.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>

namespace
{

// Above the size up to which the library is asked to load a file.
constexpr std::int64_t c_nLarge = 70 << 20;

struct CReads
{
    int nNumOpened = 0;
    std::int64_t nNumBytes = 0;
};

/// @param sTrace  the calls that name one file, or a descriptor of it, a line each.
CReads CountReads(const std::string& sTrace)
{
    CReads reads;
    std::istringstream lines(sTrace);
    for (std::string sLine; std::getline(lines, sLine);)
    {
        const std::size_t nResult = sLine.rfind(" = ");
        if (nResult == std::string::npos)
            continue;
        const std::int64_t nValue = std::strtoll(sLine.c_str() + nResult + 3, nullptr, 10);
        if (sLine.find("open") < sLine.find('('))
            reads.nNumOpened += nValue >= 0 ? 1 : 0;
        else
            reads.nNumBytes += std::max<std::int64_t>(nValue, 0);
    }
    return reads;
}

/// Writes what comes before and behind a gap of zeros, which takes no room on the disk.
std::string WriteSparse(const CZorcld& zorcld, const std::string& sName, const std::string& sHead,
                        std::int64_t nGap, const std::string& sTail)
{
    const std::string sPath = zorcld.Write(sName, sHead);
    std::fstream file(sPath, std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(static_cast<std::streamoff>(sHead.size()) + nGap - 1);
    file << '\0' << sTail;
    return sPath;
}

std::string Repeat(const std::string& sText, std::int64_t nTimes)
{
    std::string sResult;
    for (std::int64_t i = 0; i < nTimes; ++i)
        sResult += sText;
    return sResult;
}

class ZorcldReads : public CTracedTest
{
protected:
    /// One pass at most, beside the blocks in which a pass, or a look at the head, begins.
    void ExpectOnePass(const std::string& sPath, std::int64_t nNumPnts) const
    {
        constexpr std::int64_t c_nBlock = 1 << 16;
        const std::string sTrace = m_zorcld.GetPath("trace");
        const CRun run = m_zorcld.RunAfter(
            "strace -f -P '" + sPath + "' -e trace=open,openat,read,pread64,readv,preadv -o '" + sTrace + "'",
            {"check", "-q", "--json", sPath});
        EXPECT_NE(run.sOut.find("\"points\": " + std::to_string(nNumPnts) + ','), std::string::npos)
            << run.sOut;
        const CReads reads = CountReads(ReadBytes(sTrace));
        std::ifstream file(sPath, std::ios::binary | std::ios::ate);
        EXPECT_GE(reads.nNumOpened, 1);
        EXPECT_LE(reads.nNumOpened, 4);
        EXPECT_GT(reads.nNumBytes, 0);
        EXPECT_LE(reads.nNumBytes, static_cast<std::int64_t>(file.tellg()) + 4 * c_nBlock);
    }
};

const std::string c_sXyz = "property float x\nproperty float y\nproperty float z\n";

} // namespace

// Points too far from the first one, and lists behind them.
TEST_F(ZorcldReads, Check_PlyOnce)
{
    constexpr std::int64_t c_nPnts = 4000000;
    constexpr std::int64_t c_nFaces = (c_nLarge - 12 * c_nPnts) / 5;
    const std::string sHeader =
        MakePlyHeader("element vertex " + std::to_string(c_nPnts) + "\n" + c_sXyz + "element face " +
                      std::to_string(c_nFaces) + "\nproperty list uchar int i\n");
    ExpectOnePass(WriteSparse(m_zorcld, "faces.ply", sHeader + PackFloats({1e6F}), 12 * c_nPnts - 4,
                              Repeat(std::string("\1\0\0\0\0", 5), c_nFaces)),
                  c_nPnts);
}

TEST_F(ZorcldReads, Check_PlyOfListsOnce)
{
    constexpr std::int64_t c_nPnts = c_nLarge / 21;
    const std::string sHeader = MakePlyHeader("element vertex " + std::to_string(c_nPnts) + "\n" + c_sXyz +
                                              "property list uchar double d\n");
    const std::string sVertex = std::string(12, '\0') + '\1' + std::string(8, '\0');
    ExpectOnePass(m_zorcld.Write("lists.ply", sHeader + Repeat(sVertex, c_nPnts)), c_nPnts);
}

TEST_F(ZorcldReads, Check_GridOnce)
{
    const std::string sRow = Repeat("1234567.125 ", 100) + "\n";
    const auto nRows = c_nLarge / static_cast<std::int64_t>(sRow.size());
    ExpectOnePass(m_zorcld.Write("large.asc", "ncols 100\nnrows " + std::to_string(nRows) +
                                                  "\nxllcorner 10\nyllcorner 20\ncellsize 5\n"
                                                  "NODATA_value -1\n" +
                                                  Repeat(sRow, nRows)),
                  100 * nRows);
}

TEST_F(ZorcldReads, Check_NativeOnce)
{
    constexpr std::int32_t c_nPnts = c_nLarge / 12;
    std::string sHead = std::string(":\1\1\0\0", 5) + std::string(18, '\0') + std::string(4, '\0');
    std::string sTree = std::string("\1\1", 2) + std::string(8, '\0');
    std::memcpy(sHead.data() + 23, &c_nPnts, sizeof c_nPnts);
    std::memcpy(sTree.data() + 2, &c_nPnts, sizeof c_nPnts);
    ExpectOnePass(WriteSparse(m_zorcld, "large.cld", sHead, std::int64_t{12} * c_nPnts + 28, sTree), c_nPnts);
}

TEST_F(ZorcldReads, Check_LasOnce)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    constexpr std::int64_t c_nPnts = c_nLarge / 34;
    CLasFile las = LasOf(3, 1);
    las.nAnnounced = c_nPnts;
    ExpectOnePass(WriteSparse(m_zorcld, "large.las", las.GetBytes(), 34 * (c_nPnts - 1), ""), c_nPnts);
}
