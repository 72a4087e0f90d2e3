#include <io/ply/CPlyBuffer.h>

#include <formats/CFilePtr.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace
{

/// The window as it is described: filled by one read of 10000 bytes from where the position is.
class CSlowPlyBuffer
{
public:
    explicit CSlowPlyBuffer(std::string sFile) : m_sFile(std::move(sFile)) {}

    bool MakeAvailable(std::size_t nSize)
    {
        if (m_nPos + nSize <= m_nValid)
            return true;
        m_nStart += m_nPos;
        m_nPos = 0;
        m_nValid = m_sFile.copy(m_acBytes.data(), m_acBytes.size(), std::min(m_nStart, m_sFile.size()));
        return m_nValid > 0;
    }

    const char* GetPos() const { return m_acBytes.data() + m_nPos; }
    std::size_t GetNumAhead() const { return m_nPos < m_nValid ? m_nValid - m_nPos : 0; }
    void Skip(std::size_t nSize) { m_nPos += nSize; }

    long CalcNumLeft() const
    {
        return static_cast<long>(m_sFile.size() - std::min(m_nStart + m_nPos, m_sFile.size()));
    }

private:
    std::string m_sFile;
    std::size_t m_nStart = 0;
    std::size_t m_nPos = 0;
    std::size_t m_nValid = 0;
    std::array<char, 10000> m_acBytes{};
};

std::string RandomBytes(CRandom& random, std::int64_t nNumBytes)
{
    std::string sBytes(static_cast<std::size_t>(nNumBytes), '\0');
    for (char& c : sBytes)
        c = static_cast<char>(random.Int(-128, 127));
    return sBytes;
}

/// What the next step skips: a value, a list of up to 255 entries, or most of the items in the window.
std::size_t CalcStep(CRandom& random, std::size_t nSize, std::size_t nNumAhead)
{
    switch (random.Int(0, 3))
    {
    case 0:
        return 1 + static_cast<std::size_t>(random.Int(0, 255)) * nSize;
    case 1:
        return std::max(nNumAhead / 15 * 15, nSize);
    default:
        return nSize;
    }
}

/// Reads a file to its end through both, in random steps.
void Compare(CRandom& random, const std::string& sFile)
{
    const CMemFile file(sFile);
    const CFilePtr pFile(std::fopen(file.GetPath(), "rb"));
    ASSERT_NE(nullptr, pFile);
    std::setvbuf(pFile.get(), nullptr, _IONBF, 0);
    CPlyBuffer buffer(pFile.get());
    CSlowPlyBuffer slow(sFile);
    for (bool bAvailable = true; bAvailable;)
    {
        const std::size_t nSize = std::size_t{1} << random.Int(0, 3);
        bAvailable = buffer.MakeAvailable(nSize);
        ASSERT_EQ(slow.MakeAvailable(nSize), bAvailable);
        ASSERT_EQ(slow.GetNumAhead(), buffer.GetNumAhead());
        ASSERT_EQ(slow.CalcNumLeft(), buffer.CalcNumLeft());
        if (bAvailable)
        {
            ASSERT_EQ(0, std::memcmp(slow.GetPos(), buffer.GetPos(), nSize));
        }
        const std::size_t nStep = CalcStep(random, nSize, buffer.GetNumAhead());
        buffer.Skip(nStep);
        slow.Skip(nStep);
    }
}

TEST(CPlyBuffer, HoldsWhatAWindowFilledFromTheFileHolds)
{
    CRandom random(20);
    for (int i = 0; i < 300; ++i)
        ASSERT_NO_FATAL_FAILURE(Compare(random, RandomBytes(random, random.Int(0, 30000)))) << i;
}

TEST(CPlyBuffer, BlocksOfTheFileAreNotSeen)
{
    CRandom random(21);
    for (int i = 0; i < 40; ++i)
        ASSERT_NO_FATAL_FAILURE(Compare(random, RandomBytes(random, random.Int(100000, 500000)))) << i;
}

TEST(CPlyBuffer, NothingReadYetIsTheWholeFileLeft)
{
    const CMemFile file("seven..");
    const CFilePtr pFile(std::fopen(file.GetPath(), "rb"));
    CPlyBuffer buffer(pFile.get());
    EXPECT_EQ(7, buffer.CalcNumLeft());
    EXPECT_EQ(0U, buffer.GetNumAhead());
}

} // namespace
