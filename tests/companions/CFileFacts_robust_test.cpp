// Damaged files: no cause is found exactly where the library loads the file.

#include <tests/companions/SmallFiles.h>
#include <tests/io/CIdleListener.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif
#include <zor4data/CFileFacts.h>
#include <zor4data/ReadPnts.h>

#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

bool IsLoaded(enumPntCldFile eType, const zor::String& sPath)
{
    if (eType == PntCldFile_Native)
        return CPntCld(nullptr).ReadFromFile(nullptr, eType, sPath);
    CIdleListener nothing;
    return ReadPnts(nothing, nullptr, eType, sPath);
}

::testing::AssertionResult AgreesWithTheReader(enumPntCldFile eType, const zor::String& sPath)
{
    const CFileFacts facts = FindFileFacts(sPath, eType);
    const bool bLoaded = IsLoaded(eType, sPath);
    if ((facts.eCause == FileCause_None) == bLoaded && facts.sCause.empty() == bLoaded)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << (bLoaded ? "loaded, but " : "not loaded, but ") << facts.eCause << " '" << facts.sCause << "'";
}

/// Small files of every kind, also some that are odd and load all the same.
std::vector<CSmallFile> AllSmallFiles()
{
    std::vector<CSmallFile> vecFiles = SmallForeignFiles();
    vecFiles.push_back({PntCldFile_Native, SmallNative(PntCldType_Pnt)});
    vecFiles.push_back({PntCldFile_Native, SmallNative(PntCldType_PntColor)});
    vecFiles.push_back({PntCldFile_Las, LasOf(7, 3).GetBytes()});
    vecFiles.push_back({PntCldFile_Ply, "ply\nformat binary_little_endian 1.0\nelement a 2\nelement b 2\n"
                                        "property uchar c\nelement d 3\n"});
    vecFiles.push_back({PntCldFile_Ply, "ply\nformat binary_little_endian 1.0\nelement face 2\nproperty list "
                                        "uchar double i\nproperty short k\nelement vertex 1\nproperty float "
                                        "x\nproperty float y\nproperty double z\nend_header\n\1........ab\2"
                                        "................cdxxxxyyyyzzzzzzzz"});
    vecFiles.push_back({PntCldFile_AsciiGrid, "NCOLS 2\r\nNROWS 1\r\nXLLCENTER 1\r\nYLLCENTER 2\r\nCELLSIZE "
                                              "1\r\nNODATA_value 0\r\n0 1\r\n"});
#ifdef ZOR4DATA_TEST_LAZ
    vecFiles.push_back({PntCldFile_Las, LazBytes(LasOf(1, 20), 8, true)});
    vecFiles.push_back({PntCldFile_Las, LazBytes(LasOf(6, 20), 16, true)});
#endif
    return vecFiles;
}

TEST(CFileFacts_robust, CutOffAnywhere_CauseWhereItIsNotLoaded)
{
    CMemFile memFile;
    for (const CSmallFile& file : AllSmallFiles())
        for (std::size_t nSize = 0; nSize <= file.sBytes.size(); ++nSize)
        {
            memFile.Set(file.sBytes.substr(0, nSize));
            EXPECT_TRUE(AgreesWithTheReader(file.eType, memFile.GetPath()))
                << "kind " << file.eType << " of " << file.sBytes.size() << " cut off at " << nSize;
        }
}

/// One of the small files: most of the time goes to LASzip, which sets up its models for each chunk that is
/// read.
class CFileFactsOfSmallFile : public testing::TestWithParam<CSmallFile>
{
};

std::string GetNameOf(const testing::TestParamInfo<CSmallFile>& param)
{
    return "Kind" + std::to_string(param.param.eType) + "_" + std::to_string(param.index);
}

TEST_P(CFileFactsOfSmallFile, EachByteChanged_CauseWhereItIsNotLoaded)
{
    CMemFile memFile;
    const CSmallFile& file = GetParam();
    for (std::size_t nPos = 0; nPos < file.sBytes.size(); ++nPos)
        for (const char c : {'\0', ' ', '3', '\xff'})
        {
            std::string sBytes = file.sBytes;
            if (sBytes[nPos] == c)
                continue;
            sBytes[nPos] = c;
            memFile.Set(sBytes);
            EXPECT_TRUE(AgreesWithTheReader(file.eType, memFile.GetPath()))
                << "kind " << file.eType << " of " << file.sBytes.size() << ", byte " << nPos << " is "
                << static_cast<int>(c);
        }
}

INSTANTIATE_TEST_SUITE_P(CFileFacts_robust, CFileFactsOfSmallFile, testing::ValuesIn(AllSmallFiles()),
                         GetNameOf);

TEST(CFileFacts_robust, FileOfAnotherKind_CauseWhereItIsNotLoaded)
{
    CMemFile memFile;
    for (const CSmallFile& file : AllSmallFiles())
        for (int nType = -1; nType <= 4; ++nType)
        {
            memFile.Set(file.sBytes);
            EXPECT_TRUE(AgreesWithTheReader(static_cast<enumPntCldFile>(nType), memFile.GetPath()))
                << "kind " << file.eType << " as " << nType;
        }
}

TEST(CFileFacts_robust, NoFile_CauseWhereItIsNotLoaded)
{
    for (const std::string& sPath : {std::string(), std::string("/no/such/file"), std::string("/"),
                                     std::string("."), std::string(5000, 'a'), std::string("/dev/null/a")})
        for (int nType = 0; nType < 4; ++nType)
            EXPECT_TRUE(AgreesWithTheReader(static_cast<enumPntCldFile>(nType), zor::String(sPath.c_str())))
                << sPath;
}

TEST(CFileFacts_robust, RealFiles_CauseWhereTheyAreNotLoaded)
{
    if (!fs::is_directory(GetRealFolder()))
        GTEST_SKIP() << "no real files in " << GetRealFolder();
    int nNumFiles = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(GetRealFolder()))
    {
        const CFileFacts facts = FindFileFacts(entry.path().c_str());
        if (facts.eType < 0)
            continue;
        ++nNumFiles;
        EXPECT_TRUE(AgreesWithTheReader(facts.eType, entry.path().c_str())) << entry.path();
    }
    EXPECT_GT(nNumFiles, 50);
}

} // namespace
