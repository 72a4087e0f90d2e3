#include <formats/CLazFile.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace
{

/// Bytes that differ from their neighbours, more than two blocks of them.
std::string ManyBytes()
{
    std::string sBytes;
    for (std::uint32_t i = 0; i < 600000; ++i)
        sBytes.push_back(static_cast<char>((i * 2654435761U) >> 24U));
    return sBytes;
}

/// Does one thing that LASzip does with a stream, and tells what has come of it.
std::string Do(std::istream& stream, std::int64_t nWhat, std::int64_t nNum)
{
    std::string sBytes(static_cast<std::size_t>(nNum), '\0');
    switch (nWhat)
    {
    case 0:
        return "get " + std::to_string(stream.get());
    case 1:
        stream.read(sBytes.data(), nNum);
        return "read " + sBytes.substr(0, static_cast<std::size_t>(stream.gcount()));
    case 2:
        return "tell " + std::to_string(stream.tellg());
    case 3:
        stream.seekg(nNum);
        break;
    case 4:
        stream.seekg(-nNum, std::ios::end);
        break;
    default:
        stream.seekg(-nNum % 50, std::ios::cur);
        break;
    }
    return "seek";
}

TEST(CLazFile, SameAsAFileStream)
{
    const CMemFile file(ManyBytes());
    CLazFile tested(file.GetPath());
    std::ifstream expected(file.GetPath(), std::ios::binary);
    CRandom random(1);
    for (int i = 0; i < 20000; ++i)
    {
        const std::int64_t nWhat = random.Int(0, 5);
        // Mostly a few bytes, now and then many.
        const std::int64_t nNum = random.Int(0, random.Chance(20) ? 600000 : 40);
        const bool bSeek = nWhat > 2 && !random.Chance(4);
        ASSERT_EQ(Do(expected, bSeek ? 0 : nWhat, nNum), Do(tested, bSeek ? 0 : nWhat, nNum)) << i;
        ASSERT_EQ(expected.eof(), tested.eof()) << i;
        ASSERT_EQ(expected.good(), tested.good()) << i;
        expected.clear();
        tested.clear();
    }
}

TEST(CLazFile, SeekOutsideTheFileFails)
{
    const CMemFile file("123");
    for (const std::int64_t nPos : {std::int64_t{-1}, std::int64_t{4}, std::int64_t{1} << 62U})
    {
        CLazFile tested(file.GetPath());
        EXPECT_FALSE(tested.seekg(nPos).good()) << nPos;
    }
    CLazFile tested(file.GetPath());
    EXPECT_TRUE(tested.seekg(3).good());
    EXPECT_EQ(std::char_traits<char>::eof(), tested.get());
}

TEST(CLazFile, NoFile_NoBytes)
{
    CLazFile tested("no such file");
    EXPECT_EQ(std::char_traits<char>::eof(), tested.get());
    EXPECT_TRUE(tested.eof());
}

/// Calls itself with 256 bytes on the stack for each byte that comes.
/// @return how often.
int CallForEachByte(std::istream& stream, int nDepth)
{
    volatile char acUsed[256];
    acUsed[nDepth % 256] = 1;
    if (stream.get() == std::char_traits<char>::eof())
        return nDepth;
    return CallForEachByte(stream, nDepth + 1) + (acUsed[nDepth % 256] - 1);
}

TEST(CLazFile, EndsWhereTheCallsAreTooDeep)
{
    const CMemFile file(ManyBytes());
    CLazFile tested(file.GetPath());
    tested.StartHere();
    const int nDepth = CallForEachByte(tested, 0);
    EXPECT_TRUE(tested.eof());
    EXPECT_GT(nDepth, 8);
    EXPECT_LT(nDepth, 500);
}

// Not one byte more comes in a call that is too deep, whatever was read before it.
TEST(CLazFile, NothingIsGivenOutInAdvance)
{
    const CMemFile file(ManyBytes());
    CLazFile tested(file.GetPath());
    tested.StartHere();
    EXPECT_NE(std::char_traits<char>::eof(), tested.get());
    const auto getDeep = [&](int nSteps, const auto& self) -> int
    {
        volatile char acMore[20000];
        acMore[0] = 0;
        return nSteps > 0 ? self(nSteps - 1, self) + acMore[0] : tested.get();
    };
    EXPECT_EQ(std::char_traits<char>::eof(), getDeep(10, getDeep));
}

// The whole file comes in a call that is deep, but not deeper than where it is told to start.
TEST(CLazFile, DepthCountsFromTheStart)
{
    const std::string sBytes = ManyBytes();
    const CMemFile file(sBytes);
    CLazFile tested(file.GetPath());
    volatile char acUsed[100000];
    acUsed[0] = 1;
    const auto readAll = [&](int nSteps, const auto& self) -> std::size_t
    {
        volatile char acMore[20000];
        acMore[0] = acUsed[0];
        if (nSteps > 0)
            return self(nSteps - 1, self) + static_cast<std::size_t>(acMore[0] - 1);
        tested.StartHere();
        std::size_t n = 0;
        while (tested.get() != std::char_traits<char>::eof())
            ++n;
        return n;
    };
    EXPECT_EQ(sBytes.size(), readAll(10, readAll));
}

// Also where a patch lies across two blocks, and over the end of the file.
TEST(CLazFile, Patches_TakeThePlaceOfBytes)
{
    std::string sBytes = ManyBytes();
    const CMemFile memFile(sBytes);
    const CFilePtr pFile(std::fopen(memFile.GetPath(), "rb"));
    const auto nEnd = static_cast<std::int64_t>(sBytes.size());
    CLazFile tested(pFile.get(),
                    {CFilePatch(100, std::uint32_t{0x04030201}), CFilePatch((1 << 18) - 3, std::int64_t{-2}),
                     CFilePatch(nEnd - 1, std::uint16_t{0x0807})});
    sBytes.replace(100, 4, "\1\2\3\4");
    sBytes.replace((1 << 18) - 3, 8, "\xfe\xff\xff\xff\xff\xff\xff\xff");
    sBytes.back() = '\7';
    for (int i = 0; i < 2; ++i)
    {
        std::string sRead(sBytes.size(), ' ');
        tested.seekg(0);
        tested.read(sRead.data(), nEnd);
        EXPECT_TRUE(sBytes == sRead);
    }
    EXPECT_EQ(std::char_traits<char>::eof(), tested.get());
}

// A code is taken byte by byte: of the bytes with which none begins nothing comes. Wherever they stand, also
// across two blocks, and however many bytes were read before.
TEST(CLazFile, EndsWhereACodeWouldBeNone)
{
    for (const std::size_t nPos :
         {std::size_t{0}, std::size_t{1}, std::size_t{100}, (std::size_t{1} << 18U) - 2})
        for (const unsigned nLast : {255U, 254U})
        {
            std::string sBytes(300000, 'x');
            sBytes.replace(nPos, 3, "\xff\xff\xff");
            sBytes[nPos + 3] = static_cast<char>(nLast);
            const CMemFile file(sBytes);
            CLazFile tested(file.GetPath());
            std::string sRead(nPos, ' ');
            tested.read(sRead.data(), static_cast<std::streamsize>(nPos));
            EXPECT_EQ(nLast == 255 ? std::char_traits<char>::eof() : 255, tested.get()) << nPos;
        }
    const CMemFile file("a\xff\xff\xff\xff");
    CLazFile inside(file.GetPath()); // within a code they may come
    for (const int n : {static_cast<int>('a'), 255, 255, 255, 255})
        EXPECT_EQ(n, inside.get());
    CLazFile apiece(file.GetPath());
    std::string sRead(5, ' ');
    EXPECT_TRUE(apiece.read(sRead.data(), 5).good());
    CLazFile atEnd(file.GetPath());
    atEnd.read(sRead.data(), 2);
    for (const int n : {255, 255, 255, std::char_traits<char>::eof()})
        EXPECT_EQ(n, atEnd.get());
}

} // namespace
