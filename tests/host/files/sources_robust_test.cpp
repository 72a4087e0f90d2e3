// The host's own readers on every truncation and every changed byte of small files: they end, deliver no more
// than the file can hold, and touch no foreign memory.
#include <formats/IPntSource.h>
#include <formats/NativeFacts.h>
#include <host/files/CInputOptions.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CFailure.h>
#include <tests/host/files/ExpectSamePlaces.h>
#include <tests/io/CMemFile.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

namespace zorcld
{

namespace
{

CNativeFacts FindFacts(const CMemFile& file)
{
    CByteReader reader(CFilePtr(std::fopen(file.GetPath(), "rb")));
    return FindNativeFacts(reader);
}

/// @param pType  name of the kind as which the file is read.
void ReadAll(const char* pType, const std::string& sBytes)
{
    const CMemFile file(sBytes);
    std::int64_t nNumPnts = 0;
    try
    {
        const std::unique_ptr<CInputFile> pFile = OpenInputFile({file.GetPath(), pType});
        const std::unique_ptr<IPntSource> pSource = pFile->MakeSource();
        if (pSource == nullptr) // a changed byte says that the points are compressed
            return;
        ExpectSamePlaces(*pSource);
        pSource->ForEach([&](const CSourcePnt&) { ++nNumPnts; });
        static_cast<void>(pSource->GetFindings());
        static_cast<void>(pFile->FindCause());
        EXPECT_EQ(pFile->FindCause(), OpenInputFile({file.GetPath(), pType})->FindCause());
    }
    catch (const CFailure& failure)
    {
        EXPECT_NE(failure.GetCause(), "");
    }
    EXPECT_LE(nNumPnts, static_cast<std::int64_t>(sBytes.size()));
    static_cast<void>(FindFacts(file));
}

void ReadChanged(const char* pType, const std::string& sBytes)
{
    for (std::size_t n = 0; n <= sBytes.size(); ++n)
    {
        ReadAll(pType, sBytes.substr(0, n));
        for (const int nValue : {0, 0x20, 0x0a, 0x39, 0x7f, 0x80, 0xff})
        {
            std::string sChanged = sBytes;
            if (n < sBytes.size())
                sChanged[n] = static_cast<char>(nValue);
            ReadAll(pType, sChanged);
        }
    }
}

const std::string c_sElements =
    "element face 1\nproperty list uchar int i\nelement vertex 2\nproperty float x\n"
    "property list ushort char l\nproperty double y\nproperty int8 z\n"
    "property uchar red\nproperty float green\nproperty uint16 blue\nend_header\n";

} // namespace

TEST(SourcesRobust, Ply)
{
    ReadChanged("ply", "ply\nformat ascii 1.0\n" + c_sElements + "1 7\n1 2 8 8 2 3 4 0.5 6\n1 0 2 3 4 1 6\n");
    const std::string sVertex =
        std::string("abcd\1\0e", 7) + std::string(8, 'y') + "zr" + std::string(4, 'g') + "bb";
    const std::string sData = "\1" + std::string(4, 'i') + sVertex + sVertex;
    ReadChanged("ply", "ply\nformat binary_little_endian 1.0\n" + c_sElements + sData);
    ReadChanged("ply", "ply\r\nformat binary_big_endian 1.0\r\n" + c_sElements + sData);
}

TEST(SourcesRobust, Grid)
{
    ReadChanged(
        "grid",
        "ncols 3\nnrows\t2\nxllcorner 10\nyllcenter 20\ncellsize 5\nnodata -1\n1 2 -1\n\n4 5.5e3 x\n");
}

TEST(SourcesRobust, Las)
{
    for (const int nFormat : {3, 10})
        ReadChanged("las", LasOf(nFormat, 2).GetBytes());
}

// Endless masks, runs outside the array, counts beyond the file.
TEST(SourcesRobust, NativeFacts)
{
    std::string sBytes(std::string(":\1\1\0\0", 5) + std::string(4, '\0') + std::string(2, '\0') +
                       std::string(12, '\0') + std::string("\2\0\0\0", 4) + std::string(24 + 28, '\0'));
    const std::string sTree =
        std::string("\x81\x81", 2) + std::string("\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0", 16);
    {
        const CMemFile file(sBytes + sTree);
        EXPECT_TRUE(FindFacts(file).IsWhole());
    }
    ReadChanged("ply", sBytes + sTree);
    const CMemFile deep(sBytes + std::string(200000, '\1').replace(1, 1, 1, '\0'));
    EXPECT_FALSE(FindFacts(deep).IsWhole());
    std::string sInner;
    for (int i = 0; i < 1000; ++i)
        sInner += std::string("\1\0", 2);
    const CMemFile inner(sBytes + sInner);
    EXPECT_FALSE(FindFacts(inner).bTreeWhole);
}

} // namespace zorcld
