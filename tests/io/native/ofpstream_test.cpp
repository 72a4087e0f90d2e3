#include <io/native/ofpstream.h>

#include <io/native/ifpstream.h>
#include <tests/io/CMemFile.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace
{

using namespace std::string_literals;

const std::string c_sPrologue = ":\x01\x01\x00\x00"s;

TEST(ofpstream, WritesThePrologueAndNothingElse)
{
    const CMemFile file("longer than five bytes");
    {
        const ofpstream stream(file.GetPath(), "tag", 1234);
        EXPECT_FALSE(stream.IsFailed());
        EXPECT_STREQ("tag", stream.GetTag().c_str());
        EXPECT_EQ(1234, stream.GetVersion());
    }
    EXPECT_EQ(c_sPrologue, ReadFileBytes(file.GetPath()));
}

TEST(ofpstream, WritesNumbersLittleEndian)
{
    const CMemFile file;
    {
        ofpstream stream(file.GetPath(), "", 0);
        stream.WriteNumber(std::int32_t{0x01020304});
        stream.WriteNumber(std::int16_t{-2});
        stream.WriteNumber(1.0F);
    }
    EXPECT_EQ(c_sPrologue + "\x04\x03\x02\x01\xfe\xff\x00\x00\x80\x3f"s, ReadFileBytes(file.GetPath()));
}

// Whatever the sizes, in one call or in rooms: the bytes come in order, over the ends of blocks too.
TEST(ofpstream, BlocksJoin)
{
    std::string sBytes(1000003, '\0');
    for (std::size_t i = 0; i < sBytes.size(); ++i)
        sBytes[i] = static_cast<char>(i * 31 + i / 251);
    for (const std::size_t nStep : {std::size_t{1}, std::size_t{128}, std::size_t{5000}, sBytes.size()})
        for (const bool bRoom : {false, true})
        {
            if (bRoom && nStep > ofpstream::c_nMaxRoom)
                continue;
            const CMemFile file;
            {
                ofpstream stream(file.GetPath(), "", 0);
                for (std::size_t i = 0; i < sBytes.size(); i += nStep)
                {
                    const std::size_t nNum = std::min(nStep, sBytes.size() - i);
                    if (!bRoom)
                    {
                        stream.Write(sBytes.data() + i, nNum);
                        continue;
                    }
                    unsigned char* const p = stream.GetPos();
                    std::memcpy(p, sBytes.data() + i, nNum);
                    stream.SetPos(p + nNum);
                }
            }
            EXPECT_TRUE(c_sPrologue + sBytes == ReadFileBytes(file.GetPath())) << nStep << bRoom;
        }
}

TEST(ofpstream, Failed_WhereTheFileCannotBeOpened)
{
    for (const char* sPath : {"", "/no/such/directory/file.cld", "/", "."})
        EXPECT_TRUE(ofpstream(sPath, "", 0).IsFailed()) << sPath;
}

// That the disk is full is not told.
TEST(ofpstream, FullDisk_Kept)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    ofpstream stream("/dev/full", "", 0);
    EXPECT_FALSE(stream.IsFailed());
    const std::string sBytes(1000000, 'x');
    stream.Write(sBytes.data(), sBytes.size());
    EXPECT_FALSE(stream.IsFailed());
}

TEST(ifpstream, ReadsBehindThePrologue)
{
    const CMemFile file(c_sPrologue + "abc");
    ifpstream stream(file.GetPath());
    EXPECT_FALSE(stream.IsFailed());
    EXPECT_FALSE(stream.IsForeign());
    EXPECT_TRUE(stream.IsNativeOrder());
    EXPECT_EQ(3U, stream.GetNumLeft());
    char ac[8] = {};
    EXPECT_EQ(2U, stream.Read(ac, 2));
    EXPECT_EQ(1U, stream.Read(ac + 2, 6));
    EXPECT_STREQ("abc", ac);
    EXPECT_EQ(0U, stream.Read(ac, 1));
    EXPECT_EQ(0U, stream.GetNumLeft());
}

TEST(ifpstream, BytesBehindTheEndAreZero)
{
    const CMemFile file(c_sPrologue + "\x01\x02");
    ifpstream stream(file.GetPath());
    EXPECT_EQ(0x0201, stream.ReadNumber<std::int32_t>());
    EXPECT_EQ(0, stream.ReadNumber<std::int32_t>());
}

TEST(ifpstream, Flags)
{
    const struct
    {
        std::string m_sBytes;
        bool m_bForeign;
        bool m_bNativeOrder;
    } aCases[] = {{"\0\x01\x01\x00\x00"s, true, true},
                  {":\x00\x00\x01\x01"s, false, false},
                  {":\x01\x01\x00\x01"s, false, false},
                  {"hello"s, true, false},
                  {":\x01\x01\x01\x00ab"s, false, false}};
    for (const auto& aCase : aCases)
    {
        const ifpstream stream(CMemFile(aCase.m_sBytes).GetPath());
        EXPECT_FALSE(stream.IsFailed());
        EXPECT_EQ(aCase.m_bForeign, stream.IsForeign());
        EXPECT_EQ(aCase.m_bNativeOrder, stream.IsNativeOrder());
    }
}

TEST(ifpstream, Failed_WhereThereIsNoPrologue)
{
    for (const char* sPath : {"", "/no/such/file.cld", "/", ".", "/dev/null", "/dev/zero"})
        EXPECT_TRUE(ifpstream(sPath).IsFailed()) << sPath;
    for (std::size_t n = 0; n < 5; ++n)
        EXPECT_TRUE(ifpstream(CMemFile(c_sPrologue.substr(0, n)).GetPath()).IsFailed()) << n;
    EXPECT_FALSE(std::filesystem::exists("/no/such/file.cld"));
}

} // namespace
