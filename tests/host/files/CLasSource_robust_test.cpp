// The host's reader of LAS and LAZ on damaged files: it ends with the points that can be read or with a
// cause, whatever the bytes are, and never delivers more points than the header announces.
#include <formats/IPntSource.h>
#include <host/files/CInputOptions.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CFailure.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CRandom.h>
#include <tests/support/LazBytes.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>

namespace zorcld
{

namespace
{

/// @return the points that were read; -1: refused, for a reason that is told.
std::int64_t ReadFile(const std::string& sPath)
{
    std::int64_t nNumPnts = 0;
    try
    {
        const std::unique_ptr<CInputFile> pFile = OpenInputFile({sPath, "las"});
        const std::unique_ptr<IPntSource> pSource = pFile->MakeSource();
        pSource->ForEach([&](const CSourcePnt&) { ++nNumPnts; });
        // Points that are not announced take bytes.
        EXPECT_LE(nNumPnts, std::max<std::int64_t>(pSource->GetNumAnnounced(), 8 * pFile->GetSize()));
    }
    catch (const CFailure& failure)
    {
        EXPECT_NE(failure.GetCause(), "");
        return -1;
    }
    return nNumPnts;
}

std::int64_t ReadBytes(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    return ReadFile(file.GetPath());
}

} // namespace

TEST(CLasSource_robust, EveryTruncationAndChangedByte)
{
    for (const int nFormat : {1, 3, 7, 10})
        for (const unsigned nChunkSize : {8U, std::numeric_limits<unsigned>::max()})
        {
            const std::string sBytes = LazBytes(LasOf(nFormat, 20), nChunkSize);
            ASSERT_EQ(ReadBytes(sBytes), 20);
            for (std::size_t n = 0; n < sBytes.size(); ++n)
            {
                ReadBytes(sBytes.substr(0, n));
                for (const int nValue : {1, 0x80, 0xff})
                {
                    std::string sChanged = sBytes;
                    sChanged[n] = static_cast<char>(nValue);
                    ReadBytes(sChanged);
                }
            }
        }
}

// The files that fuzzing of the library has found, as they are and with bytes changed.
TEST(CLasSource_robust, Corpus)
{
    CRandom random(1);
    int nNumFiles = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZOR4DATA_LAS_CORPUS))
    {
        SCOPED_TRACE(entry.path().string());
        ReadFile(entry.path().string());
        const std::string sBytes = ReadFileBytes(entry.path().string());
        for (int i = 0; i < 100 && !sBytes.empty(); ++i)
        {
            std::string sChanged = sBytes;
            for (std::int64_t k = random.Int(1, 4); k > 0; --k)
                sChanged[static_cast<std::size_t>(random.Next() % sBytes.size())] =
                    static_cast<char>(random.Int(0, 255));
            ReadBytes(sChanged);
        }
        ++nNumFiles;
    }
    EXPECT_GT(nNumFiles, 30);
}

// LASzip calls itself as often as these data say, and would go deeper than the stack.
TEST(CLasSource_robust, CallsThatGoTooDeepEnd)
{
    EXPECT_GE(ReadFile(std::string(ZOR4DATA_LAS_CORPUS) + "/times_of_other_sequences.laz"), 0);
}

} // namespace zorcld
