#include <formats/CLasGuard.h>
#include <formats/CLaszipReader.h>
#include <tests/io/las/ReadLas.h>
#include <tests/support/LazBytes.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace
{

using U16 = std::uint16_t;

constexpr std::size_t c_nNumRecordsAt = 100;
constexpr std::size_t c_nPntSizeAt = 105;

TEST(CLasReader_laz, Read_EveryFormatAndNumOfChunks)
{
    for (int nFormat = 0; nFormat <= 10; ++nFormat)
        for (const int nNum : {0, 1, 15, 16, 17, 100})
        {
            const CLasFile file = LasOf(nFormat, nNum);
            const CLasReading reading = ReadLas(LazBytes(file, 16));
            EXPECT_TRUE(reading.bResult) << nFormat << ", " << nNum;
            EXPECT_EQ(LasCalls(file), reading.vecCalls) << nFormat << ", " << nNum;
        }
}

TEST(CLasReader_laz, Read_ScaleAndOffset)
{
    CLasFile file = LasOf(2, 20);
    file.adScale = {0.001, 0.5, 3.0};
    file.adOffset = {-1000.0, 4000000.25, 1e-3};
    EXPECT_EQ(LasCalls(file), ReadLas(LazBytes(file, 7)).vecCalls);
}

TEST(CLasReader_laz, Read_Progress)
{
    const TReadCalls vecCalls = ReadLas(LazBytes(LasOf(0, 3), 2), true).vecCalls;
    ASSERT_EQ(9U, vecCalls.size());
    EXPECT_EQ(CReadCall::Progress(0), vecCalls[2]);
    EXPECT_EQ(CReadCall::Progress(33), vecCalls[4]);
    EXPECT_EQ(CReadCall::Progress(66), vecCalls[6]);
}

// Only the coordinates of formats 6 to 10 are decompressed: whatever else differs, they are the same.
TEST(CLasReader_laz, Read_PntsThatDifferInEverything)
{
    for (const int nFormat : {6, 7, 8, 9, 10})
    {
        CLasFile file = LasOf(nFormat, 500);
        for (std::size_t i = 0; i < file.vecPnts.size(); ++i)
            file.vecPnts[i].y = static_cast<int>(i * i % 1000 * 1000);
        EXPECT_EQ(LasCalls(file), ReadLas(LazBytes(file, 100, true)).vecCalls) << nFormat;
    }
}

/// A file of format 6 in one chunk, of which the layer of times, the last one, ends after some points.
std::string CutTimes(const CLasFile& file)
{
    constexpr std::size_t c_nTimes = 8; // of nine layers
    std::string sBytes = LazBytes(file, 1000, true);
    std::uint32_t nPosPnts = 0;
    std::memcpy(&nPosPnts, sBytes.data() + 96, sizeof nPosPnts);
    const std::size_t nSizes = nPosPnts + 8 + file.GetPntSize() + 4;
    std::array<std::uint32_t, c_nTimes + 1> anSize{};
    std::memcpy(anSize.data(), sBytes.data() + nSizes, sizeof anSize);
    std::size_t nTimes = nSizes + sizeof anSize;
    for (std::size_t i = 0; i < c_nTimes; ++i)
        nTimes += anSize[i];
    EXPECT_GT(anSize[c_nTimes], 500U);
    anSize[c_nTimes] = 20;
    std::memcpy(sBytes.data() + nSizes, anSize.data(), sizeof anSize);
    return sBytes.substr(0, nTimes + anSize[c_nTimes]); // without a table
}

// Times that cannot be decoded to their end do not matter, since they are not.
TEST(CLasReader_laz, Read_LayersOfOtherPartsAreLeftAlone)
{
    const CLasFile file = LasOf(6, 200);
    EXPECT_EQ(LasCalls(file), ReadLas(CutTimes(file)).vecCalls);
}

// LASzip would call itself for times without end: no stream stands between it and a layer that it has in
// memory.
TEST(CLasReader_laz, LaszipReader_LeavesTimesAlone)
{
    const CMemFile memFile(CutTimes(LasOf(6, 200)));
    for (const auto eParts : {CLaszipReader::Parts_AllButTimes, CLaszipReader::Parts_Coords})
    {
        CLasGuard guard(memFile.GetPath());
        ASSERT_TRUE(guard.Check());
        CLaszipReader reader(guard, eParts);
        ASSERT_TRUE(reader.IsOpen());
        for (int i = 0; i < 200; ++i)
            ASSERT_NE(nullptr, reader.Read()) << i;
    }
}

constexpr unsigned c_nVariableChunks = 0xFFFFFFFF;

std::int64_t GetMaxNumPnts(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    CLasGuard guard(file.GetPath());
    EXPECT_TRUE(guard.Check());
    return guard.GetMaxNumPnts();
}

TEST(CLasReader_laz, GetMaxNumPnts_WholeChunksOrWhatTheySay)
{
    EXPECT_EQ(48, GetMaxNumPnts(LazBytes(LasOf(1, 33), 16)));
    EXPECT_EQ(33, GetMaxNumPnts(LazBytes(LasOf(7, 33), 16)));
    for (const int nFormat : {1, 7})
        EXPECT_EQ(33, GetMaxNumPnts(LazBytes(LasOf(nFormat, 33), c_nVariableChunks))) << nFormat;
}

// Behind the last chunk stands the table: it is not taken for points.
TEST(CLasReader_laz, Read_MorePntsAnnouncedThanTheChunksHold)
{
    for (const int nFormat : {1, 7})
        for (const unsigned nChunkSize : {16U, c_nVariableChunks})
        {
            const CLasFile file = LasOf(nFormat, 32);
            std::string sBytes = LazBytes(file, nChunkSize);
            sBytes[nFormat < 6 ? 107 : 247] = 100; // the count
            const CLasReading reading = ReadLas(sBytes);
            EXPECT_TRUE(reading.bResult) << nFormat << ", " << nChunkSize;
            EXPECT_EQ(LasCalls(file, 100, 32), reading.vecCalls) << nFormat << ", " << nChunkSize;
        }
}

TEST(CLasReader_laz, Read_ChunkOfVariableSize)
{
    for (const int nFormat : {0, 3, 6, 7, 10})
        for (const int nNum : {1, 2, 1000})
        {
            const CLasFile file = LasOf(nFormat, nNum);
            const CLasReading reading = ReadLas(LazBytes(file, c_nVariableChunks));
            EXPECT_TRUE(reading.bResult) << nFormat << ", " << nNum;
            EXPECT_EQ(LasCalls(file), reading.vecCalls) << nFormat << ", " << nNum;
        }
}

// The table and the chunks of variable size must say the same.
TEST(CLasReader_laz, Check_TableOfChunksOfVariableSize)
{
    const CLasFile file = LasOf(7, 1000);
    const std::string sBytes = LazBytes(file, c_nVariableChunks);
    std::uint32_t nPosPnts = 0;
    std::int64_t nTable = 0;
    std::memcpy(&nPosPnts, sBytes.data() + 96, sizeof nPosPnts);
    std::memcpy(&nTable, sBytes.data() + nPosPnts, sizeof nTable);
    const auto nEntries = static_cast<std::size_t>(nTable) + 8;
    for (std::size_t n = nEntries; n < nEntries + 3; ++n)
    {
        std::string sChanged = sBytes;
        sChanged[n] = static_cast<char>(sChanged[n] ^ 0x40);
        EXPECT_FALSE(ReadLas(sChanged).bResult) << n - nEntries;
        EXPECT_FALSE(ReadLas(sBytes.substr(0, n)).bResult) << n - nEntries;
    }
    std::string sChanged = sBytes;
    sChanged[nPosPnts + 8 + file.GetPntSize()] ^= 1; // what the chunk says
    EXPECT_FALSE(ReadLas(sChanged).bResult);
}

/// What the tests below change: a LAZ file and where things stand in it.
class CLazGuardTest : public testing::TestWithParam<int>
{
protected:
    void SetUp() override { m_sBytes = LazBytes(m_file, 16); }

    template <class T>
    T ValueAt(std::size_t nPos) const
    {
        T value{};
        std::memcpy(&value, m_sBytes.data() + nPos, sizeof value);
        return value;
    }

    template <class T>
    std::string BytesWith(std::size_t nPos, T value) const
    {
        std::string sBytes = m_sBytes;
        std::memcpy(sBytes.data() + nPos, &value, sizeof value);
        return sBytes;
    }

    template <class T>
    bool IsLetWith(std::size_t nPos, T value) const
    {
        return IsLet(BytesWith(nPos, value));
    }

    static bool IsLet(const std::string& sBytes)
    {
        const CMemFile file(sBytes);
        return CLasGuard(file.GetPath()).Check();
    }

    std::size_t GetPosPnts() const { return ValueAt<std::uint32_t>(96); }
    std::size_t GetPosTable() const { return PosTableOf(m_sBytes); }

    static std::size_t PosTableOf(const std::string& sBytes)
    {
        std::uint32_t nPosPnts = 0;
        std::int64_t nPosTable = 0;
        std::memcpy(&nPosPnts, sBytes.data() + 96, sizeof nPosPnts);
        std::memcpy(&nPosTable, sBytes.data() + nPosPnts, sizeof nPosTable);
        return static_cast<std::size_t>(nPosTable);
    }

    /// Where codes begin: one in each chunk, or one in each layer that is not empty.
    std::vector<std::size_t> FindCodes() const
    {
        std::vector<std::size_t> vecCodes;
        for (int nChunk = 0; nChunk < 3; ++nChunk)
        {
            // A file of the chunks before ends here.
            std::size_t nPos = PosTableOf(LazBytes(LasOf(GetParam(), 16 * nChunk), 16)) + m_file.GetPntSize();
            if (GetParam() < 6)
            {
                vecCodes.push_back(nPos);
                continue;
            }
            const std::size_t nNumLayers = GetParam() == 6 ? 9U : GetParam() == 7 ? 10U : 12U;
            const std::size_t nSizes = nPos + 4; // behind the number of points
            nPos = nSizes + 4 * nNumLayers;
            for (std::size_t i = 0; i < nNumLayers; ++i)
            {
                const auto nSize = ValueAt<std::uint32_t>(nSizes + 4 * i);
                if (nSize > 0)
                    vecCodes.push_back(nPos);
                nPos += nSize;
            }
        }
        return vecCodes;
    }
    /// The data of the record that describes the compression: the only record.
    std::size_t GetPosRecord() const { return m_file.GetHeaderSize() + 54; }

    const CLasFile m_file = LasOf(GetParam(), 40);
    std::string m_sBytes;
};

TEST_P(CLazGuardTest, Check_CompressorAndItems)
{
    const std::size_t nPos = GetPosRecord();
    EXPECT_TRUE(IsLet(m_sBytes));
    for (const int nCompressor : {0, 1, 2, 3, 4, 16, 65535})
        EXPECT_EQ(nCompressor == ValueAt<U16>(nPos) || (nCompressor == 1 && GetParam() < 6),
                  IsLetWith(nPos, static_cast<U16>(nCompressor)))
            << nCompressor;
    for (const U16 nNumItems : {U16{0}, U16{100}, U16{65535}})
        EXPECT_FALSE(IsLetWith(nPos + 32, nNumItems)) << nNumItems;
    for (const U16 nType : {U16{1}, U16{5}, U16{15}, U16{255}})
        EXPECT_FALSE(IsLetWith(nPos + 34, nType)) << nType;
    EXPECT_FALSE(IsLetWith(nPos + 36, U16{21}));
    for (const U16 nVersion : {U16{0}, U16{5}, U16{65535}})
        EXPECT_FALSE(IsLetWith(nPos + 38, nVersion)) << nVersion;
    EXPECT_FALSE(IsLetWith(nPos + 12, std::uint32_t{0})); // points of a chunk
}

class CLazPartsTest : public CLazGuardTest
{
};

// LASzip has one place for the bytes of the user's own: it frees that of the first such part and writes
// there.
TEST_P(CLazPartsTest, Check_EachPartOfAPointOnce)
{
    const std::size_t nType = GetPosRecord() + 34;
    const std::size_t nNextType = nType + 6;
    EXPECT_TRUE(IsLetWith(nType, U16{0}));
    EXPECT_TRUE(IsLetWith(nNextType, U16{0}));
    m_sBytes = BytesWith(nType, U16{0});
    EXPECT_FALSE(IsLetWith(nNextType, U16{0}));
    EXPECT_FALSE(ReadLas(BytesWith(nNextType, U16{0})).bResult);
}

// The chunks are read from the first one on, whatever stands in the place of their table.
TEST_P(CLazGuardTest, Read_WithoutTableOfChunks)
{
    const auto ExpectAll = [&](const std::string& sBytes)
    {
        const CLasReading reading = ReadLas(sBytes);
        EXPECT_TRUE(reading.bResult);
        EXPECT_EQ(LasCalls(m_file), reading.vecCalls);
    };
    const std::size_t nTable = GetPosTable();
    for (const std::int64_t nPos :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{-2}, static_cast<std::int64_t>(GetPosPnts()),
          static_cast<std::int64_t>(m_sBytes.size()), std::numeric_limits<std::int64_t>::max(),
          std::numeric_limits<std::int64_t>::min()})
    {
        SCOPED_TRACE(nPos);
        ExpectAll(BytesWith(GetPosPnts(), nPos));
    }
    ExpectAll(BytesWith(nTable, std::uint32_t{1})); // version
    ExpectAll(BytesWith(nTable + 8, std::uint32_t{0xFFFFFFFF}));
    for (const std::uint32_t nNumChunks : {1000U, 0x7FFFFFFFU, 0xFFFFFFFFU})
        ExpectAll(BytesWith(nTable + 4, nNumChunks));
    for (std::size_t n = nTable; n < m_sBytes.size(); ++n)
        ExpectAll(m_sBytes.substr(0, n));
}

// Of a file that is cut off within its points, those before come, and never others: of chunks in layers whole
// chunks.
TEST_P(CLazGuardTest, Read_CutOffWithinTheChunks)
{
    std::size_t nMost = 0;
    for (std::size_t n = GetPosPnts(); n < GetPosTable(); ++n)
    {
        const CLasReading reading = ReadLas(m_sBytes.substr(0, n));
        ASSERT_TRUE(reading.bResult) << n;
        ASSERT_GE(reading.vecCalls.size(), 3U) << n;
        const std::size_t nNum = reading.vecCalls.size() - 3;
        ASSERT_EQ(LasCalls(m_file, 40, nNum), reading.vecCalls) << n;
        ASSERT_GE(nNum, nMost) << n;
        ASSERT_TRUE(GetParam() < 6 || nNum % 16 == 0) << n;
        nMost = nNum;
    }
    EXPECT_GE(nMost, 32U);
}

// Many chunks: LASzip makes room for their beginnings as it comes to them.
TEST_P(CLazGuardTest, Read_ManyChunksWithoutTable)
{
    const CLasFile file = LasOf(GetParam(), 1500);
    const std::string sBytes = LazBytes(file, 2);
    EXPECT_EQ(LasCalls(file), ReadLas(sBytes.substr(0, PosTableOf(sBytes))).vecCalls);
}

// Where the header announces more points than there are, what stands behind the chunks in layers is not taken
// for points.
TEST_P(CLazGuardTest, GetMaxNumPnts_WithoutTableOfChunks)
{
    std::string sBytes = BytesWith(GetPosPnts(), std::int64_t{-2});
    EXPECT_EQ(GetParam() < 6 ? std::numeric_limits<std::int64_t>::max() : 40, ::GetMaxNumPnts(sBytes));
    sBytes.resize(GetPosPnts() + 7);
    EXPECT_EQ(0, ::GetMaxNumPnts(sBytes));
}

// Which chunk has how many points is said by the table only.
TEST_P(CLazGuardTest, Check_ChunksOfVariableSizeNeedTheirTable)
{
    const std::string sBytes = LazBytes(m_file, c_nVariableChunks);
    EXPECT_TRUE(IsLet(sBytes));
    for (std::size_t n = GetPosPnts(); n < PosTableOf(sBytes) + 12; ++n)
        ASSERT_FALSE(IsLet(sBytes.substr(0, n))) << n;
}

// A chunk is where the one before has ended: a table that says something else tells of a damaged chunk.
TEST_P(CLazGuardTest, Check_ChunksOfTheTableFillTheRoomBeforeIt)
{
    const auto BytesWithTableOf = [&](int nNumPnts, unsigned nChunkSize)
    {
        const std::string sOther = LazBytes(LasOf(GetParam(), nNumPnts), nChunkSize);
        return m_sBytes.substr(0, GetPosTable()) + sOther.substr(PosTableOf(sOther));
    };
    EXPECT_EQ(LasCalls(m_file), ReadLas(BytesWithTableOf(40, 16)).vecCalls);
    // Three longer chunks, or ten, are more than there is room for: such a table is none.
    EXPECT_EQ(LasCalls(m_file), ReadLas(BytesWithTableOf(300, 100)).vecCalls);
    EXPECT_EQ(LasCalls(m_file), ReadLas(BytesWithTableOf(10, 1)).vecCalls);
    // Shorter ones are found out behind the first one, unless the chunks themselves say their length.
    const CLasReading reading = ReadLas(BytesWithTableOf(6, 2));
    EXPECT_EQ(GetParam() < 6, reading.bResult);
    EXPECT_EQ(GetParam() < 6 ? LasCalls(m_file, 40, 16) : TReadCalls{}, reading.vecCalls);
}

// The library prints a word about them, and allocates a place for each record; it gets what is there.
TEST_P(CLazGuardTest, Read_RecordsBeyondThoseThereAre)
{
    for (const std::uint32_t nNum : {2U, 1069128089U, 0xFFFFFFFFU})
        EXPECT_EQ(LasCalls(m_file), ReadLas(BytesWith(c_nNumRecordsAt, nNum)).vecCalls) << nNum;
}

// A size of 0 means that of the parts; any other must be theirs.
TEST_P(CLazGuardTest, Read_PntSize)
{
    const auto nSize = static_cast<U16>(m_file.GetPntSize());
    EXPECT_EQ(LasCalls(m_file), ReadLas(BytesWith(c_nPntSizeAt, U16{0})).vecCalls);
    EXPECT_FALSE(IsLetWith(c_nPntSizeAt, static_cast<U16>(nSize - 1)));
    EXPECT_FALSE(IsLetWith(c_nPntSizeAt, static_cast<U16>(nSize + 1)));
}

// Where the first four bytes of a code are 255, the library finds symbols that there are not, and reads where
// nothing of its own is.
TEST_P(CLazGuardTest, Check_CodesAreBelowOne)
{
    const std::vector<std::size_t> vecCodes = FindCodes();
    EXPECT_GE(vecCodes.size(), 3U);
    for (const std::size_t nPos : vecCodes)
    {
        EXPECT_FALSE(IsLetWith(nPos, std::uint32_t{0xFFFFFFFF})) << nPos;
        EXPECT_TRUE(IsLetWith(nPos, std::uint32_t{0xFEFFFFFF})) << nPos; // the last byte is 254
        // Without a table they are found on the way.
        const std::string sCut = BytesWith(nPos, std::uint32_t{0xFFFFFFFF}).substr(0, GetPosTable());
        const CLasReading reading = ReadLas(sCut);
        EXPECT_TRUE(reading.bResult) << nPos;
        EXPECT_EQ(LasCalls(m_file, 40, reading.vecCalls.size() - 3), reading.vecCalls) << nPos;
        EXPECT_LT(reading.vecCalls.size(), 43U) << nPos;
    }
    if (GetParam() >= 6)
        return;
    // As one stream: it begins with a point too, but no position before.
    m_sBytes[GetPosRecord()] = 1;
    const std::size_t nPos = GetPosPnts() + m_file.GetPntSize();
    EXPECT_FALSE(IsLetWith(nPos, std::uint32_t{0xFFFFFFFF}));
    EXPECT_TRUE(IsLetWith(nPos, std::uint32_t{0xFEFFFFFF}));
    EXPECT_TRUE(IsLet(m_sBytes.substr(0, nPos + 3))); // too short to begin
}

TEST_P(CLazGuardTest, Check_TableOfChunksNamedAtTheEndOfTheFile)
{
    std::string sBytes = m_sBytes + m_sBytes.substr(GetPosPnts(), 8);
    sBytes.replace(GetPosPnts(), 8, 8, '\xff');
    EXPECT_TRUE(IsLet(sBytes));
    const CLasReading reading = ReadLas(sBytes);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(LasCalls(m_file), reading.vecCalls);
    sBytes.back() = '\x7f'; // there is none
    EXPECT_EQ(LasCalls(m_file), ReadLas(sBytes).vecCalls);
}

TEST_P(CLazGuardTest, Check_DescribedOnce)
{
    std::string sBytes = m_sBytes;
    const std::size_t nStart = m_file.GetHeaderSize();
    const std::string sRecord = sBytes.substr(nStart, GetPosPnts() - nStart);
    sBytes.insert(nStart, sRecord);
    sBytes[100] = 2; // records
    const auto nPosPnts = static_cast<std::uint32_t>(GetPosPnts() + sRecord.size());
    const auto nTable = static_cast<std::int64_t>(GetPosTable() + sRecord.size());
    std::memcpy(sBytes.data() + 96, &nPosPnts, sizeof nPosPnts);
    std::memcpy(sBytes.data() + nPosPnts, &nTable, sizeof nTable);
    EXPECT_FALSE(IsLet(sBytes));
    sBytes[nStart + 2] = 'L'; // another name: another record
    EXPECT_TRUE(IsLet(sBytes));
}

INSTANTIATE_TEST_SUITE_P(Formats, CLazGuardTest, testing::Values(0, 3, 7, 10));
INSTANTIATE_TEST_SUITE_P(Formats, CLazPartsTest, testing::Values(1, 2, 3));

// The sizes of layers are what the library allocates: those of every chunk lie in the file.
TEST(CLasReader_laz, Check_LayersLieInTheFile)
{
    const CLasFile file = LasOf(7, 40);
    std::string sBytes = LazBytes(file, 16);
    std::uint32_t nPosPnts = 0;
    std::memcpy(&nPosPnts, sBytes.data() + 96, sizeof nPosPnts);
    std::size_t nPos = nPosPnts + 8;
    for (int nChunk = 0; nChunk < 3; ++nChunk)
    {
        nPos += file.GetPntSize() + 4;
        std::size_t nNumBytes = 0;
        for (std::size_t k = 0; k < 10; ++k) // nine of the coordinates and so on, one of the colour
        {
            std::uint32_t nSize = 0;
            std::memcpy(&nSize, sBytes.data() + nPos + 4 * k, sizeof nSize);
            nNumBytes += nSize;
            for (const std::uint32_t nBad : {nSize + 0x10000U, 0x7FFFFFFFU, 0xFFFFFFFFU})
            {
                std::string sBad = sBytes;
                std::memcpy(sBad.data() + nPos + 4 * k, &nBad, sizeof nBad);
                const CLasReading reading = ReadLas(sBad);
                EXPECT_FALSE(reading.bResult) << "chunk " << nChunk << ", layer " << k << ", " << nBad;
                EXPECT_TRUE(reading.vecCalls.empty());
            }
        }
        nPos += 40 + nNumBytes;
    }
}

} // namespace
