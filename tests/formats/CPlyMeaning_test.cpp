// One header, two readings: what the library makes of it and what it means. Where they part is pinned here.
#include <formats/CByteReader.h>
#include <formats/CPlyHeader.h>
#include <formats/CPlyMeaning.h>
#include <tests/io/CMemFile.h>
#include <tests/io/ply/PlyBytes.h>

#include <gtest/gtest.h>

namespace
{

using namespace std::string_literals;

/// Both readings of a file's bytes.
class CBoth
{
public:
    explicit CBoth(const std::string& sBytes)
    {
        const CMemFile file(sBytes);
        CByteReader reader(CFilePtr(std::fopen(file.GetPath(), "rb")));
        m_bTaken = m_header.Read(reader, &m_meaning);
        CByteReader again(CFilePtr(std::fopen(file.GetPath(), "rb")));
        CPlyHeader alone; // the other reading has no influence on the library's
        EXPECT_EQ(m_bTaken, alone.Read(again));
        EXPECT_EQ(m_header.FindCause(), alone.FindCause());
        EXPECT_EQ(m_header.GetElements().size(), alone.GetElements().size());
        if (m_bTaken)
        {
            EXPECT_EQ(m_header.GetDataOffset(), alone.GetDataOffset());
        }
    }

    const CPlyElement& GetElement(std::size_t i) const { return m_header.GetElements().at(i); }
    const CPlyMeantElement& GetMeant(std::size_t i) const { return m_meaning.GetElements().at(i); }
    std::string FindCauseOf(std::size_t i) const { return m_header.FindCause(GetElement(i)); }

    CPlyHeader m_header;
    CPlyMeaning m_meaning;
    bool m_bTaken = false;
};

CBoth ReadLines(const std::string& sLines)
{
    return CBoth(c_sPlyMagic + sLines + "end_header\n");
}

const std::string c_sNoEnd = "its header has no end, 'end_header' is missing";

TEST(CPlyMeaning, Alike_WhereTheHeaderIsClassic)
{
    const CBoth both = ReadLines("comment c\nelement vertex 3\n" + c_sPlyXyz + c_sPlyRgb +
                                 "element face 2\nproperty list uchar int vertex_indices\n");
    EXPECT_TRUE(both.m_bTaken);
    EXPECT_EQ("", both.m_header.FindCause());
    EXPECT_EQ("", both.m_meaning.GetCause());
    EXPECT_EQ(PlyFormat_Little, both.m_meaning.GetFormat());
    EXPECT_EQ(both.m_header.GetDataOffset(), both.m_meaning.GetDataOffset());
    ASSERT_EQ(2U, both.m_header.GetElements().size());
    ASSERT_EQ(2U, both.m_meaning.GetElements().size());
    EXPECT_EQ("vertex", both.m_header.GetName(both.GetElement(0)));
    EXPECT_EQ("vertex", both.GetMeant(0).sName);
    EXPECT_EQ(3, both.GetMeant(0).nCount);
    EXPECT_EQ(15, both.GetMeant(0).CalcItemSize());
    EXPECT_EQ(&both.GetElement(0), both.m_header.FindVertices());
    EXPECT_EQ(&both.GetMeant(0), both.m_meaning.FindVertices());
    const CPlyMeantProperty& list = both.GetMeant(1).vecProps.at(0);
    EXPECT_TRUE(list.bList);
    EXPECT_EQ("uchar", list.pCount->sName);
    EXPECT_EQ("int", list.pType->sName);
    EXPECT_EQ(-1, both.GetMeant(1).CalcItemSize());
    EXPECT_EQ("", both.FindCauseOf(0));
    EXPECT_EQ("", both.FindCauseOf(1));
}

// To the library the name is the rest of the line; by its words it is the word behind the type.
TEST(CPlyMeaning, PropertyLineOfThreeWords)
{
    const CBoth both =
        ReadLines("element vertex 1\nproperty float x y\nproperty float y \nproperty float z\n");
    EXPECT_EQ("its vertices have no x, y", both.FindCauseOf(0));
    EXPECT_EQ("x", both.GetMeant(0).vecProps.at(0).sName);
    EXPECT_EQ("y", both.GetMeant(0).vecProps.at(1).sName);
    EXPECT_EQ("", both.m_meaning.GetCause());
}

TEST(CPlyMeaning, VertexMarkOverAnEmptyElement)
{
    const CBoth both = ReadLines("element vertex 0\n" + c_sPlyXyz +
                                 "element face 2\nproperty list uchar int i\nelement edge 1\n");
    EXPECT_EQ(&both.GetElement(0), both.m_header.FindVertices());
    EXPECT_EQ("face", both.m_header.GetName(both.GetElement(0)));
    EXPECT_EQ("its element face is taken for the vertices and has no x, y, z", both.FindCauseOf(0));
    EXPECT_EQ("edge", both.m_header.GetName(both.GetElement(1)));
    EXPECT_EQ(0, both.m_meaning.FindVertices()->nCount);
    EXPECT_EQ(3U, both.m_meaning.GetElements().size());
}

TEST(CPlyMeaning, SizedTypes)
{
    const CBoth both = ReadLines("element vertex 1\nproperty float64 x\nproperty uint8 y\nproperty bool z\n");
    const auto& vecProps = both.GetMeant(0).vecProps;
    EXPECT_EQ("double", vecProps.at(0).pType->sName);
    EXPECT_EQ("float", vecProps.at(0).FindTaken()->sName);
    EXPECT_EQ(1U, vecProps.at(1).pType->nSize);
    EXPECT_EQ(4U, vecProps.at(1).FindTaken()->nSize);
    EXPECT_EQ(1U, vecProps.at(2).pType->nSize);
    EXPECT_EQ(nullptr, vecProps.at(2).FindTaken());
    EXPECT_EQ("property type not supported: 'bool' of z in element vertex", both.FindCauseOf(0));
}

TEST(CPlyMeaning, Lists_CountedByOtherTypes)
{
    const CBoth both = ReadLines("element face 1\nproperty list int float32 i\nproperty list float int k\n");
    EXPECT_EQ("property type not supported: 'list int float32' of i in element face", both.FindCauseOf(0));
    EXPECT_EQ("int", both.GetMeant(0).vecProps.at(0).pCount->sName);
    EXPECT_EQ(nullptr, both.GetMeant(0).vecProps.at(1).pType);
}

TEST(CPlyMeaning, TabsAndBlanks)
{
    const CBoth both = ReadLines("element\tvertex  3\n  property\tfloat x\n");
    EXPECT_TRUE(both.m_header.GetElements().empty());
    EXPECT_EQ("no element holds anything, every count is 0", both.m_header.FindCause());
    EXPECT_EQ(3, both.GetMeant(0).nCount);
    EXPECT_EQ("x", both.GetMeant(0).vecProps.at(0).sName);
}

TEST(CPlyMeaning, LineEnds)
{
    const std::string sLines =
        "ply\nformat binary_little_endian 1.0\nelement vertex 1\n" + c_sPlyXyz + "end_header\n";
    const auto with = [&](const std::string& sEnd)
    {
        std::string sBytes;
        for (const char c : sLines)
            sBytes += c == '\n' ? sEnd : std::string(1, c);
        return sBytes;
    };
    for (const std::string& sEnd : {"\n"s, "\r\n"s, "\r"s})
    {
        const std::string sHeader = with(sEnd);
        const CBoth both(sHeader + "\n\r\n");
        EXPECT_EQ(sEnd != "\r", both.m_bTaken);
        EXPECT_EQ(sEnd == "\r" ? "not a PLY file" : "", both.m_header.FindCause());
        EXPECT_EQ("", both.m_meaning.GetCause());
        EXPECT_EQ(static_cast<std::int64_t>(sHeader.size()), both.m_meaning.GetDataOffset());
        EXPECT_EQ(3U, both.GetMeant(0).vecProps.size());
    }
    const CBoth stray = ReadLines("element vertex 1\nproperty float x\r\r\n"); // one is left to the name
    EXPECT_EQ("its vertices have no x, y, z", stray.FindCauseOf(0));
    EXPECT_EQ("x", stray.GetMeant(0).vecProps.at(0).sName);
}

TEST(CPlyMeaning, OtherFormats)
{
    const std::string sRest = "element vertex 1\n" + c_sPlyXyz + "end_header\n";
    const CBoth ascii("ply\nformat ascii 1.0\n" + sRest);
    EXPECT_FALSE(ascii.m_bTaken);
    EXPECT_EQ("ASCII PLY is not supported, only binary little-endian", ascii.m_header.FindCause());
    EXPECT_EQ("", ascii.m_meaning.GetCause());
    EXPECT_EQ(3U, ascii.GetMeant(0).vecProps.size());
    const CBoth big("ply\ncomment first\nformat binary_big_endian 1.0\n" + sRest);
    EXPECT_EQ("its second line is not 'format binary_little_endian 1.0'", big.m_header.FindCause());
    EXPECT_EQ(PlyFormat_Big, big.m_meaning.GetFormat());
    EXPECT_EQ("", big.m_meaning.GetCause());
    EXPECT_EQ("its format 'text' is not known", CBoth("ply\nformat text 1\n" + sRest).m_meaning.GetCause());
    EXPECT_EQ("its header has no line 'format'", CBoth("ply\n" + sRest).m_meaning.GetCause());
}

// A header that is cut off is a cause, though the library takes what stands whole in it.
TEST(CPlyMeaning, NoEnd)
{
    const CBoth both(c_sPlyMagic + "element face 2\nelement vertex 1\nend_header");
    EXPECT_TRUE(both.m_bTaken);
    EXPECT_EQ(1U, both.m_header.GetElements().size());
    EXPECT_EQ(c_sNoEnd, both.m_header.FindCause());
    EXPECT_EQ(c_sNoEnd, both.m_meaning.GetCause());
    EXPECT_EQ("not a PLY file", CBoth("").m_meaning.GetCause());
    EXPECT_EQ(c_sNoEnd, CBoth("ply\n").m_meaning.GetCause());
}

TEST(CPlyMeaning, LongLines)
{
    const CBoth pieces =
        ReadLines("comment " + std::string(503, 'c') + "element vertex 3\n"); // 511, then the rest
    EXPECT_EQ(1U, pieces.m_header.GetElements().size());
    EXPECT_TRUE(pieces.m_meaning.GetElements().empty());
    EXPECT_EQ("", ReadLines(std::string(4095, 'c') + "\nelement vertex 3\n").m_meaning.GetCause());
    const CBoth tooLong = ReadLines(std::string(4096, 'c') + "\nelement vertex 3\n");
    EXPECT_EQ(c_sNoEnd, tooLong.m_meaning.GetCause());
    EXPECT_EQ(1U, tooLong.m_header.GetElements().size());
    EXPECT_EQ("", tooLong.m_header.FindCause());
}

TEST(CPlyMeaning, Counts)
{
    const CBoth both = ReadLines("element vertex 3000000000\nelement face 7 8\n");
    EXPECT_EQ(2147483647, both.GetElement(0).nCount);
    EXPECT_EQ(3000000000, both.GetElement(0).nAnnounced);
    EXPECT_EQ(3000000000, both.GetMeant(0).nCount);
    EXPECT_EQ(8, both.GetElement(1).nCount);
    EXPECT_EQ(7, both.GetMeant(1).nCount);
    const CBoth word = ReadLines("element vertex 3x\n");
    EXPECT_EQ(3, word.GetElement(0).nCount);
    EXPECT_EQ("the count '3x' of element vertex is not a number", word.m_meaning.GetCause());
}

TEST(CPlyMeaning, TooMany)
{
    std::string sLines;
    for (int i = 0; i < 1001; ++i)
        sLines += "element e 1\n";
    const CBoth elements = ReadLines(sLines);
    EXPECT_EQ(1001U, elements.m_header.GetElements().size());
    EXPECT_NE(std::string::npos, elements.m_meaning.GetCause().find("too many of them"));
    sLines = "element vertex 1\n";
    for (int i = 0; i < 10001; ++i)
        sLines += "property int i\n";
    const CBoth props = ReadLines(sLines);
    EXPECT_EQ(10001U, props.GetElement(0).nNumProps);
    EXPECT_NE(std::string::npos, props.m_meaning.GetCause().find("too many of them"));
}

} // namespace
