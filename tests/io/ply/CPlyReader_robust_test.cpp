#include <tests/io/ply/PlyBytes.h>
#include <tests/io/ply/ReadPly.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

/// Small files of each layout that the reader tells apart.
std::vector<std::string> SmallFiles()
{
    return {
        PlyOfTriangle(),
        PlyOfXyz(3),
        c_sPlyMagic + "element face 2\nproperty list uchar short l\nelement vertex 2\nproperty double x\n" +
            c_sPlyXyz + "end_header\n" + Bytes({1, 2, 3, 0}) + BytesOf(1.0) + Floats({1, 2, 3}) +
            BytesOf(2.0) + Floats({4, 5, 6}),
        c_sPlyMagic +
            "element vertex 2\nproperty ushort x\nproperty char y\nproperty list uchar char l\n"
            "property float z\nend_header\n" +
            Bytes({1, 2, 3, 2, 9, 9}) + Floats({4}) + Bytes({5, 6, 7, 0}) + Floats({8}),
        c_sPlyMagic + "element a 3\nelement vertex 1\n" + c_sPlyXyz +
            "element b 2\nproperty double d\nend_header\n" + Floats({1, 2, 3}) + BytesOf(4.0) + BytesOf(5.0),
        "ply\r\nformat binary_little_endian 1.0\r\nelement vertex 1\r\nproperty float x\r\nproperty float "
        "y\r\n"
        "property float z\r\nend_header\r\n" +
            Floats({1, 2, 3}),
    };
}

// A file cut off anywhere makes the calls that the rules make, with and without progress.
TEST(CPlyReader_robust, Read_EveryTruncation)
{
    CMemFile file;
    for (const std::string& sFile : SmallFiles())
        for (std::size_t n = 0; n <= sFile.size(); ++n)
        {
            const std::string sPart = sFile.substr(0, n);
            file.Set(sPart);
            for (const bool bProgress : {false, true})
                ASSERT_EQ(ReadPlySlowly(sPart, bProgress), ReadPlyFile(file.GetPath(), bProgress))
                    << n << " bytes of\n"
                    << sFile;
        }
}

/// Values for a byte: all of them, or those that a header or a number can turn on.
std::vector<char> ValuesFor(char cBefore, bool bAll)
{
    std::vector<char> vecValues = {'\0', '\n', '\r', '\t', ' ', '-',    '0',
                                   '1',  '9',  'e',  'p',  'x', '\x7f', '\xff'};
    vecValues.push_back(static_cast<char>(cBefore ^ 1));
    vecValues.push_back(static_cast<char>(cBefore ^ 0x80));
    if (!bAll)
        return vecValues;
    vecValues.clear();
    for (int n = 0; n < 256; ++n)
        vecValues.push_back(static_cast<char>(n));
    return vecValues;
}

// A byte changed anywhere: no crash, no endless loop, the calls that the rules make.
TEST(CPlyReader_robust, Read_EveryOneByteChange)
{
    CMemFile file;
    bool bAll = true; // of the first file every byte to every value
    for (const std::string& sFile : SmallFiles())
    {
        std::string sChanged = sFile;
        file.Set(sChanged);
        for (std::size_t n = 0; n < sFile.size(); ++n)
        {
            for (const char c : ValuesFor(sFile[n], bAll))
            {
                sChanged[n] = c;
                file.Write(sChanged.substr(n, 1), n);
                ASSERT_EQ(ReadPlySlowly(sChanged, true), ReadPlyFile(file.GetPath(), true))
                    << "byte " << n << " as " << static_cast<int>(c) << " in\n"
                    << sFile;
            }
            sChanged[n] = sFile[n];
            file.Write(sChanged.substr(n, 1), n);
        }
        bAll = false;
    }
}

/// Two windows and a bit of vertices whose values fall differently on the ends of the windows.
std::string LongFile(const std::string& sProperties, std::size_t nSize)
{
    const std::size_t nNum = 20030 / nSize + 1;
    std::string sFile =
        c_sPlyMagic + "element vertex " + std::to_string(nNum) + "\n" + sProperties + "end_header\n";
    for (std::size_t i = 0; i < nNum * nSize; ++i)
        sFile += static_cast<char>(i * 7 + i / 256);
    return sFile;
}

/// The file with another count of vertices.
std::string WithCount(std::string sFile, std::size_t nCount)
{
    const std::size_t nStart = sFile.find("vertex ") + std::string("vertex ").size();
    return sFile.replace(nStart, sFile.find('\n', nStart) - nStart, std::to_string(nCount));
}

// Around the ends of the windows too: what a cut-off value lacks comes from the window before.
TEST(CPlyReader_robust, Read_TruncationsAroundTheWindows)
{
    const struct
    {
        std::string m_sProperties;
        std::size_t m_nSize;
    } aLayouts[] = {
        {c_sPlyXyz, 12},
        {c_sPlyXyz + c_sPlyRgb, 15},
        {"property double a\n" + c_sPlyXyz + "property char b\n", 21},
        {"property char x\nproperty short y\nproperty uchar a\nproperty double z\n", 12},
        {c_sPlyXyz + "property double d\n", 20},
    };
    CMemFile file;
    for (const auto& layout : aLayouts)
    {
        const std::string sFile = LongFile(layout.m_sProperties, layout.m_nSize);
        const std::size_t nData = sFile.find("end_header\n") + std::string("end_header\n").size();
        for (const std::size_t nWindow : {std::size_t{10000}, std::size_t{20000}})
            for (std::size_t n = nWindow - 30; n <= nWindow + 30; ++n)
            {
                // As many vertices as begin in the data: the last one may be there but for its end.
                const std::size_t nCount = (n + layout.m_nSize - 1) / layout.m_nSize;
                const std::string sPart = WithCount(sFile.substr(0, nData + n), nCount);
                file.Set(sPart);
                ASSERT_EQ(ReadPlySlowly(sPart), ReadPlyFile(file.GetPath()))
                    << n << " bytes of data, properties\n"
                    << layout.m_sProperties;
            }
    }
}

} // namespace
