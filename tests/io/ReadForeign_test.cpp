#include <tests/io/ply/PlyBytes.h>
#include <tests/io/ply/ReadPly.h>

#include <gtest/gtest.h>

namespace
{

TEST(ReadForeign, Ply_IsRead)
{
    const CMemFile file(PlyOfXyz(1));
    CRecReadListener rec;
    EXPECT_TRUE(ReadForeign(rec, nullptr, PntCldFile_Ply, file.GetPath()));
    EXPECT_EQ(TReadCalls({CReadCall::Type(0), CReadCall::NumPnts(1), CReadCall::Pnt(0, 0.25, 0.5),
                          CReadCall::End()}),
              rec.m_vecCalls);
}

TEST(ReadForeign, KindWithoutReader_IsFalseWithoutAnyCall)
{
    const CMemFile file(PlyOfXyz(1));
    for (const int nType : {-1, 4, 5, 1000, -2147483647 - 1, 2147483647})
    {
        CRecReadListener rec;
        EXPECT_FALSE(ReadForeign(rec, &rec, static_cast<enumPntCldFile>(nType), file.GetPath())) << nType;
        EXPECT_TRUE(rec.m_vecCalls.empty()) << nType;
    }
}

TEST(ReadForeign, MissingFile_IsFalseWithoutAnyCall)
{
    for (const char* sPath : {"", "/no/such/file.ply", "/", "."})
    {
        CRecReadListener rec;
        EXPECT_FALSE(ReadForeign(rec, &rec, PntCldFile_Ply, sPath)) << sPath;
        EXPECT_TRUE(rec.m_vecCalls.empty()) << sPath;
    }
}

} // namespace
