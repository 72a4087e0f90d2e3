#include <formats/CByteReader.h>
#include <tests/io/CMemFile.h>

#include <gtest/gtest.h>

namespace
{

CByteReader Open(const CMemFile& file)
{
    return CByteReader(CFilePtr(std::fopen(file.GetPath(), "rb")));
}

/// More than a block.
std::string MakeBytes()
{
    std::string sBytes;
    for (int i = 0; i < 200000; ++i)
        sBytes += static_cast<char>(i % 251);
    return sBytes;
}

TEST(CByteReader, Read_AcrossBlocks)
{
    const std::string sBytes = MakeBytes();
    const CMemFile file(sBytes);
    CByteReader reader = Open(file);
    EXPECT_EQ(200000, reader.GetSize());
    std::string sRead(sBytes.size(), '\0');
    EXPECT_TRUE(reader.Read(sRead.data(), 65530));
    EXPECT_EQ(65530, reader.GetPos());
    EXPECT_TRUE(reader.Read(sRead.data() + 65530, 100000));
    EXPECT_EQ(sBytes.size() - 165530, reader.ReadUpTo(sRead.data() + 165530, 100000));
    EXPECT_EQ(sBytes, sRead);
    EXPECT_EQ(-1, reader.Get());
    EXPECT_FALSE(reader.Read(sRead.data(), 1));
}

TEST(CByteReader, SetPos_AndSkip)
{
    const std::string sBytes = MakeBytes();
    const CMemFile file(sBytes);
    CByteReader reader = Open(file);
    for (const std::int64_t nPos : {70000, 3, 65536, 65535, 199999, 0})
    {
        reader.SetPos(nPos);
        EXPECT_EQ(nPos, reader.GetPos());
        EXPECT_EQ(static_cast<unsigned char>(sBytes[static_cast<std::size_t>(nPos)]), reader.Get()) << nPos;
    }
    EXPECT_TRUE(reader.Skip(149999));
    EXPECT_EQ(150000, reader.GetPos());
    EXPECT_FALSE(reader.Skip(50001));
    EXPECT_EQ(150000, reader.GetPos());
    EXPECT_TRUE(reader.Skip(50000));
    EXPECT_EQ(-1, reader.Peek());
    reader.SetPos(-5);
    EXPECT_EQ(0, reader.GetPos());
    reader.SetPos(300000);
    EXPECT_EQ(200000, reader.GetPos());
}

TEST(CByteReader, ReadWord)
{
    const CMemFile file(" one\t two\r\n" + std::string(255, 'a') + "\n" + std::string(256, 'b') + " c");
    CByteReader reader = Open(file);
    std::string_view sWord;
    EXPECT_TRUE(reader.ReadWord(sWord));
    EXPECT_EQ("one", sWord);
    EXPECT_TRUE(reader.ReadWord(sWord));
    EXPECT_EQ("two", sWord);
    EXPECT_TRUE(reader.ReadWord(sWord));
    EXPECT_EQ(255U, sWord.size());
    EXPECT_FALSE(reader.ReadWord(sWord)); // too long for a word
    const CMemFile blanks(" \n");
    CByteReader none = Open(blanks);
    EXPECT_FALSE(none.ReadWord(sWord));
}

} // namespace
