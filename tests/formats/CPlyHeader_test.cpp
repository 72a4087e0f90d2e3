#include <formats/CByteReader.h>
#include <formats/CPlyHeader.h>
#include <formats/CPlyMeaning.h>
#include <tests/io/CMemFile.h>
#include <tests/io/ply/PlyBytes.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

class CPlyHeaderTest : public testing::Test
{
protected:
    bool Read(const std::string& sBytes)
    {
        m_header = CPlyHeader();
        m_file.Set(sBytes);
        m_meaning = CPlyMeaning();
        CByteReader reader(CFilePtr(std::fopen(m_file.GetPath(), "rb")));
        return m_header.Read(reader, &m_meaning);
    }

    /// Reads a header of the given lines, "end_header" added.
    bool ReadLines(const std::string& sLines) { return Read(c_sPlyMagic + sLines + "end_header\n"); }

    std::vector<std::int32_t> GetCounts() const
    {
        std::vector<std::int32_t> vecCounts;
        for (const CPlyElement& element : m_header.GetElements())
            vecCounts.push_back(element.nCount);
        return vecCounts;
    }

    /// Of the first element.
    std::vector<int> GetTypes() const
    {
        std::vector<int> vecTypes;
        for (std::size_t i = 0; i < m_header.GetElements().at(0).nNumProps; ++i)
            vecTypes.push_back(m_header.GetProperties(m_header.GetElements()[0])[i].ucType);
        return vecTypes;
    }

    std::vector<int> GetRoles() const
    {
        std::vector<int> vecRoles;
        for (std::size_t i = 0; i < m_header.GetElements().at(0).nNumProps; ++i)
            vecRoles.push_back(m_header.GetProperties(m_header.GetElements()[0])[i].eRole);
        return vecRoles;
    }

    bool IsVertex(std::size_t nElement) const { return m_header.GetElements().at(nElement).bVertex; }

    CMemFile m_file;
    CPlyHeader m_header;
    CPlyMeaning m_meaning;
};

using TCounts = std::vector<std::int32_t>;
using TInts = std::vector<int>;

TEST_F(CPlyHeaderTest, Magic_MustBeTheFirstLines)
{
    EXPECT_TRUE(ReadLines(""));
    EXPECT_FALSE(Read(""));
    EXPECT_FALSE(Read("ply\n"));
    EXPECT_FALSE(Read("ply"));
    EXPECT_FALSE(Read("PLY\nformat binary_little_endian 1.0\nend_header\n"));
    EXPECT_FALSE(Read("ply \nformat binary_little_endian 1.0\nend_header\n"));
    EXPECT_FALSE(Read("\nply\nformat binary_little_endian 1.0\nend_header\n"));
    EXPECT_FALSE(Read("ply\nformat ascii 1.0\nend_header\n"));
    EXPECT_FALSE(Read("ply\nformat binary_big_endian 1.0\nend_header\n"));
    EXPECT_FALSE(Read("ply\nformat binary_little_endian 1.1\nend_header\n"));
    EXPECT_FALSE(Read("ply\nformat binary_little_endian 1.0")); // no line feed
    EXPECT_FALSE(Read("ply\ncomment before the format\nformat binary_little_endian 1.0\nend_header\n"));
}

TEST_F(CPlyHeaderTest, Comment_IsSkippedFromTheThirdLineOn)
{
    EXPECT_TRUE(ReadLines("comment element vertex 5\ncomment \nelement a 1\ncomment property int b\n"));
    EXPECT_EQ(TCounts({1}), GetCounts());
    EXPECT_EQ(0U, m_header.GetElements()[0].nNumProps);
}

TEST_F(CPlyHeaderTest, OtherLines_AreIgnored)
{
    EXPECT_TRUE(
        ReadLines("obj_info a\n\n \ncomment\nElement b 2\n element c 3\nelement\nproperty\nend_header \n"
                  "element\ta 4\nelement d 5\n"));
    EXPECT_EQ(TCounts({5}), GetCounts());
}

TEST_F(CPlyHeaderTest, Element_CountIsTheIntegerBehindTheLastBlank)
{
    EXPECT_TRUE(
        ReadLines("element a 3\nelement b c 4\nelement d  5\nelement e +6\nelement f 7x\nelement g \t8\n"
                  "element 9\n"));
    EXPECT_EQ(TCounts({3, 4, 5, 6, 7, 8, 9}), GetCounts());
}

TEST_F(CPlyHeaderTest, Element_WithoutPositiveCountIsDropped)
{
    EXPECT_TRUE(ReadLines(
        "element a 0\nelement b -3\nelement c\nelement d 2 \nelement e x\nelement \nelement f 1\n"));
    EXPECT_EQ(TCounts({1}), GetCounts());
}

TEST_F(CPlyHeaderTest, Element_CountSaturates)
{
    EXPECT_TRUE(ReadLines("element a 2147483647\nelement b 2147483648\nelement c 99999999999999999999999\n"
                          "element d -99999999999999999999999\n"));
    EXPECT_EQ(TCounts({2147483647, 2147483647, 2147483647}), GetCounts());
}

TEST_F(CPlyHeaderTest, Element_IsVertexByTheWordBehindTheFirstBlank)
{
    EXPECT_TRUE(ReadLines("element vertex 1\nelement vertexes 2\nelement face 3\nelement Vertex 4\n"
                          "element vertex a 5\nelement  vertex 6\nelement vertex\t7\n"));
    EXPECT_EQ(TCounts({1, 2, 3, 4, 5, 6}), GetCounts()); // of the last the count is that of "vertex\t7"
    EXPECT_TRUE(IsVertex(0));
    EXPECT_FALSE(IsVertex(1));
    EXPECT_FALSE(IsVertex(2));
    EXPECT_FALSE(IsVertex(3));
    EXPECT_TRUE(IsVertex(4));
    EXPECT_FALSE(IsVertex(5));
}

// An element without items leaves the vertex mark to the next one.
TEST_F(CPlyHeaderTest, Element_AfterEmptyVertexIsVertex_Kept)
{
    EXPECT_TRUE(ReadLines("element vertex 0\nelement face 2\nelement edge 3\n"));
    EXPECT_EQ(TCounts({2, 3}), GetCounts());
    EXPECT_TRUE(IsVertex(0));
    EXPECT_FALSE(IsVertex(1));
}

TEST_F(CPlyHeaderTest, Element_DroppedTakesItsPropertiesAlong)
{
    EXPECT_TRUE(ReadLines("property float x\nelement a 0\nproperty float y\nelement b 1\nproperty float z\n"
                          "element c -1\nproperty uchar red\nelement d 1\nproperty uchar blue\n"));
    ASSERT_EQ(TCounts({1, 1}), GetCounts());
    EXPECT_EQ(TInts({PlyRole_Z}), GetRoles());
    const CPlyElement& last = m_header.GetElements()[1];
    ASSERT_EQ(1U, last.nNumProps);
    EXPECT_EQ(PlyRole_Blue, m_header.GetProperties(last)[0].eRole);
}

TEST_F(CPlyHeaderTest, Property_ClassicTypes)
{
    EXPECT_TRUE(
        ReadLines("element a 1\nproperty char p\nproperty uchar p\nproperty short p\nproperty ushort p\n"
                  "property int p\nproperty uint p\nproperty float p\nproperty double p\n"));
    EXPECT_EQ(TInts({1, 2, 3, 4, 5, 6, 7, 8}), GetTypes());
    const CPlyProperty* pProps = m_header.GetProperties(m_header.GetElements()[0]);
    const std::vector<std::size_t> vecSizes = {1, 1, 2, 2, 4, 4, 4, 8};
    for (std::size_t i = 0; i < vecSizes.size(); ++i)
    {
        EXPECT_EQ(vecSizes[i], pProps[i].GetSize());
        EXPECT_TRUE(pProps[i].IsReadable());
        EXPECT_FALSE(pProps[i].IsList());
    }
}

TEST_F(CPlyHeaderTest, Property_Lists)
{
    EXPECT_TRUE(
        ReadLines("element a 1\nproperty list uchar char p\nproperty list uchar uchar p\n"
                  "property list uchar short p\nproperty list uchar ushort p\nproperty list uchar int p\n"
                  "property list uchar uint p\nproperty list uchar float p\n"
                  "property list uchar double p\n"));
    EXPECT_EQ(TInts({9, 10, 11, 12, 13, 14, 15, 16}), GetTypes());
    const CPlyProperty* pProps = m_header.GetProperties(m_header.GetElements()[0]);
    const std::vector<std::size_t> vecSizes = {1, 1, 2, 2, 4, 4, 4, 8};
    for (std::size_t i = 0; i < vecSizes.size(); ++i)
    {
        EXPECT_EQ(vecSizes[i], pProps[i].GetSize());
        EXPECT_TRUE(pProps[i].IsList());
    }
}

TEST_F(CPlyHeaderTest, Property_OtherTypesAreUnreadable)
{
    EXPECT_TRUE(ReadLines("element a 1\nproperty bool p\nproperty list int int p\nproperty list uint8 int p\n"
                          "property list char int p\nproperty list uchar bool p\nproperty Float p\n"
                          "property  float p\nproperty list uchar  int p\nproperty list  uchar int p\n"
                          "property \nproperty f\n"));
    EXPECT_EQ(TInts(11, 0), GetTypes());
    EXPECT_FALSE(m_header.GetProperties(m_header.GetElements()[0])[0].IsReadable());
}

// A type is told by the start of its name.
TEST_F(CPlyHeaderTest, Property_SizedTypesGoByPrefix_Kept)
{
    EXPECT_TRUE(
        ReadLines("element a 1\nproperty int8 p\nproperty int16 p\nproperty int32 p\nproperty uint8 p\n"
                  "property uint16 p\nproperty uint32 p\nproperty float32 p\nproperty float64 p\n"
                  "property list uchar int8 p\nproperty list uchar float64 p\nproperty charm p\n"));
    EXPECT_EQ(TInts({5, 5, 5, 6, 6, 6, 7, 7, 13, 15, 1}), GetTypes());
}

TEST_F(CPlyHeaderTest, Property_Roles)
{
    EXPECT_TRUE(
        ReadLines("element a 1\n" + c_sPlyXyz + c_sPlyRgb + "property uchar alpha\nproperty int X\n"));
    EXPECT_EQ(TInts({1, 2, 3, 4, 5, 6, 0, 0}), GetRoles());
}

TEST_F(CPlyHeaderTest, Property_RoleOfSizedTypesAndLists)
{
    EXPECT_TRUE(ReadLines("element a 1\nproperty float32 x\nproperty uint8 red\nproperty list uchar int y\n"
                          "property bool z\n"));
    EXPECT_EQ(TInts({PlyRole_X, PlyRole_Red, PlyRole_Y, PlyRole_Z}), GetRoles());
}

TEST_F(CPlyHeaderTest, Property_RoleTakesTheWholeRestOfTheLine)
{
    EXPECT_TRUE(
        ReadLines("element a 1\nproperty float x \nproperty float  x\nproperty float a x\nproperty floatx\n"
                  "property float xx\nproperty float\tx\nproperty float\nproperty float \n"));
    EXPECT_EQ(TInts(8, 0), GetRoles());
}

TEST_F(CPlyHeaderTest, Line_OfMoreThan511CharactersIsSeveralLines)
{
    const std::string sFill(511 - std::string("comment ").size(), 'c');
    EXPECT_TRUE(ReadLines("comment " + sFill + "element a 3\n"));
    EXPECT_EQ(TCounts({3}), GetCounts());
    EXPECT_TRUE(ReadLines("comment " + sFill + "celement a 3\n"));
    EXPECT_EQ(TCounts(), GetCounts());
    EXPECT_TRUE(ReadLines("comment " + sFill + "\nelement a 3\n")); // its line feed is a line of its own
    EXPECT_EQ(TCounts({3}), GetCounts());
}

TEST_F(CPlyHeaderTest, Line_CountAcrossTheEndOfALineIsCut)
{
    const std::string sStart = "element a ";
    const std::string sFill(510 - sStart.size() - 1, 'b');
    EXPECT_TRUE(ReadLines(sStart + sFill + " 34\n")); // 511 characters up to the 3
    EXPECT_EQ(TCounts({3}), GetCounts());
}

TEST_F(CPlyHeaderTest, Line_CarriageReturnAndLineFeedAreOneCharacter)
{
    const std::string sFill(510 - std::string("comment ").size(), 'c');
    // 510 characters and the line end make 511: the next line starts behind it.
    EXPECT_TRUE(ReadLines("comment " + sFill + "\r\nelement a 3\n"));
    EXPECT_EQ(TCounts({3}), GetCounts());
    EXPECT_TRUE(ReadLines("comment " + sFill + "\nelement a 3\n"));
    EXPECT_EQ(TCounts({3}), GetCounts());
}

TEST_F(CPlyHeaderTest, Line_MayEndInCarriageReturnAndLineFeed)
{
    std::string sFile = c_sPlyMagic + "element vertex 3\n" + c_sPlyXyz + "end_header\n";
    for (std::size_t n = sFile.find('\n'); n != std::string::npos; n = sFile.find('\n', n + 2))
        sFile.insert(n, 1, '\r');
    EXPECT_TRUE(Read(sFile + "data"));
    EXPECT_EQ(TCounts({3}), GetCounts());
    EXPECT_EQ(TInts({1, 2, 3}), GetRoles());
    EXPECT_EQ(static_cast<long>(sFile.size()), m_header.GetDataOffset());
}

TEST_F(CPlyHeaderTest, Line_CarriageReturnAloneIsACharacter)
{
    EXPECT_FALSE(Read("ply\rformat binary_little_endian 1.0\rend_header\r"));
    EXPECT_TRUE(ReadLines("element a 1\nproperty float x\r\r\nproperty float x\ry\nproperty float \rx\n"));
    EXPECT_EQ(TInts({0, 0, 0}), GetRoles());
    EXPECT_TRUE(Read(c_sPlyMagic + "element a 1\nend_header\r"));
    EXPECT_EQ(TCounts(), GetCounts());
}

TEST_F(CPlyHeaderTest, Line_EndsAtAZeroByte)
{
    using namespace std::string_literals;
    EXPECT_TRUE(ReadLines("element a 1\nproperty float x\0\nproperty float y\n\0element b 3\n"s));
    EXPECT_EQ(TCounts({1}), GetCounts());
    EXPECT_EQ(TInts({PlyRole_None, PlyRole_Y}), GetRoles());
    EXPECT_TRUE(ReadLines("element vertex\0 5\nelement a 4\0\n"s));
    EXPECT_EQ(TCounts({4}), GetCounts());
    EXPECT_FALSE(Read("ply\0\nformat binary_little_endian 1.0\nend_header\n"s));
    EXPECT_TRUE(Read(c_sPlyMagic + "element a 1\nend_header\0\nelement b 2\nend_header\n"s)); // goes on
    EXPECT_EQ(TCounts({1, 2}), GetCounts());
}

// A header that the end of the file cuts off gives the elements completed until then.
TEST_F(CPlyHeaderTest, EndOfFile_DropsTheOpenElement_Kept)
{
    EXPECT_TRUE(Read(c_sPlyMagic));
    EXPECT_EQ(TCounts(), GetCounts());
    EXPECT_TRUE(Read(c_sPlyMagic + "element a 1\nelement b 2\nproperty int c\n"));
    EXPECT_EQ(TCounts({1}), GetCounts());
    EXPECT_TRUE(Read(c_sPlyMagic + "element a 1\nelement b 2\nend_header")); // no line feed: not the line
    EXPECT_EQ(TCounts({1}), GetCounts());
    EXPECT_TRUE(Read(c_sPlyMagic + "element a 1\nelement b 2")); // the line counts, unfinished as it is
    EXPECT_EQ(TCounts({1}), GetCounts());
}

TEST_F(CPlyHeaderTest, DataOffset_IsBehindTheLastHeaderLine)
{
    const std::string sHeader = c_sPlyMagic + "element a 1\nend_header\n";
    EXPECT_TRUE(Read(sHeader));
    EXPECT_EQ(static_cast<long>(sHeader.size()), m_header.GetDataOffset());
    EXPECT_TRUE(Read(sHeader + "\nend_header\n"));
    EXPECT_EQ(static_cast<long>(sHeader.size()), m_header.GetDataOffset());
    const std::string sCut = c_sPlyMagic + "element a 1\nelement b";
    EXPECT_TRUE(Read(sCut));
    EXPECT_EQ(static_cast<long>(sCut.size()), m_header.GetDataOffset());
    using namespace std::string_literals;
    const std::string sZeros = c_sPlyMagic + "comment \0\0\0 and more\nend_header\n"s;
    EXPECT_TRUE(Read(sZeros + "data"));
    EXPECT_EQ(static_cast<long>(sZeros.size()), m_header.GetDataOffset());
}

TEST_F(CPlyHeaderTest, Read_LongHeader)
{
    std::string sLines;
    for (int i = 0; i < 1000; ++i)
    {
        sLines += "element e " + std::to_string(i + 1) + "\n";
        for (int k = 0; k < 50; ++k)
            sLines += "property int p\n";
    }
    EXPECT_TRUE(ReadLines(sLines + "comment " + std::string(1000000, 'c') + "\n"));
    ASSERT_EQ(1000U, m_header.GetElements().size());
    EXPECT_EQ(1000, m_header.GetElements()[999].nCount);
    EXPECT_EQ(50U, m_header.GetElements()[999].nNumProps);
    EXPECT_EQ(999U * 50U, m_header.GetElements()[999].nFirstProp);
}

} // namespace
