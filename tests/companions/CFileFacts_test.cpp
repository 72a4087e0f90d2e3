// What a file says of itself, and a file for each cause that keeps one from loading.

#include <tests/companions/SmallFiles.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif
#include <zor4data/CFileFacts.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

/// Puts the bytes of a value in place of others.
template <class T>
std::string With(std::string sBytes, std::size_t nPos, T value)
{
    std::memcpy(sBytes.data() + nPos, &value, sizeof value);
    return sBytes;
}

/// A file that is refused, and the number of the cause.
struct CRefused
{
    int nCause;
    CSmallFile file;
};

std::vector<CRefused> RefusedNative()
{
    return {{20, {PntCldFile_Native, ":\1\1"}},
            {21, {PntCldFile_Native, With(SmallNative(PntCldType_Pnt), 9, std::int16_t{2})}}};
}

std::vector<CRefused> RefusedPly()
{
    const std::string sFormat = "ply\nformat binary_little_endian 1.0\n";
    std::vector<CRefused> vecRefused;
    const auto add = [&](int nCause, const std::string& sBytes) {
        vecRefused.push_back({nCause, {PntCldFile_Ply, sBytes}});
    };
    add(40, "solid\n");
    add(41, "ply\nformat ascii 1.0\nelement vertex 1\nend_header\n");
    add(42, "ply\nformat binary_big_endian 1.0\nend_header\n");
    add(43, "ply\ncomment\nend_header\n");
    add(44, SmallPlyHeader(""));
    add(45, sFormat + "element vertex 0\nend_header\n");
    add(46, sFormat + "element vertex 1\nproperty float x\nproperty float y\nend_header\n........");
    add(47, sFormat + "element face 1\nproperty list int int i\nend_header\n........");
    add(48, SmallPly().substr(0, SmallPlyHeader().size() + 20));
    return vecRefused;
}

std::vector<CRefused> RefusedGrid()
{
    const std::string sSize = "ncols 1\nnrows 1\n";
    const std::string sPlace = "xllcorner 1\nyllcorner 1\n";
    const std::string sCell = "cellsize 1\n";
    const std::string sNoData = "NODATA_value -9\n";
    std::vector<CRefused> vecRefused;
    const auto add = [&](int nCause, const std::string& sBytes) {
        vecRefused.push_back({nCause, {PntCldFile_AsciiGrid, sBytes + "5\n"}});
    };
    add(60, "ncols 0\nnrows 1\n" + sPlace + sCell + sNoData);
    add(61, sSize + sPlace + sNoData);
    add(62, sSize + sPlace + "dx 1\ndy 1\n" + sNoData);
    add(63, sSize + sPlace + "CellSize 1\n" + sNoData);
    add(64, "ncols\t1\nnrows 1\n" + sPlace + sCell + sNoData);
    add(65, sSize + sCell + sNoData);
    add(66, sSize + "xllcorner nan\nyllcorner 1\n" + sCell + sNoData);
    add(67, sSize + "xllcorner 1\nyllcenter 1\n" + sCell + sNoData);
    add(68, sSize + sPlace + sCell);
    add(69, sSize + sPlace + sCell + "NODATA_value nan\n");
    add(70, sSize + " \n" + sPlace + sCell + sNoData);
    vecRefused.push_back({71, {PntCldFile_AsciiGrid, sSize + sPlace + sCell + sNoData + "-9\n"}});
    return vecRefused;
}

std::vector<CRefused> RefusedLas()
{
    const std::string sLas = LasOf(0, 2).GetBytes();
    std::vector<CRefused> vecRefused;
    const auto add = [&](int nCause, const std::string& sBytes) {
        vecRefused.push_back({nCause, {PntCldFile_Las, sBytes}});
    };
    add(80, "LASG" + sLas.substr(4));
    add(81, sLas.substr(0, 100));
    add(82, With(sLas, 94, std::uint16_t{0}));
    add(83, With(sLas, 96, std::uint32_t{5000}));
    add(84, With(sLas, 96, std::uint32_t{100}));
    add(85, With(sLas, 104, std::uint8_t{11}));
    add(86, With(sLas, 104, std::uint8_t{0x80}));
    CLasFile file = LasOf(0, 2);
    file.vecNamed = {{"laszip encoded", 22204, std::string(10, '\0')}};
    add(89, file.GetBytes());
    return vecRefused;
}

#ifdef ZOR4DATA_TEST_LAZ
std::vector<CRefused> RefusedLaz()
{
    const std::string sLaz = LazBytes(LasOf(0, 20), 8);
    const std::size_t nRecord = sLaz.find("laszip encoded") - 2;
    const std::size_t nData = nRecord + 54;
    std::uint32_t nPnts = 0;
    std::memcpy(&nPnts, sLaz.data() + 96, sizeof nPnts);
    std::vector<CRefused> vecRefused;
    const auto add = [&](int nCause, const std::string& sBytes) {
        vecRefused.push_back({nCause, {PntCldFile_Las, sBytes}});
    };
    add(87, With(sLaz, 104, std::uint8_t{0}));
    const std::size_t nRecordSize = nPnts - nRecord;
    std::string sTwice = sLaz.substr(0, nPnts) + sLaz.substr(nRecord);
    std::int64_t nPosTable = 0;
    std::memcpy(&nPosTable, sLaz.data() + nPnts, sizeof nPosTable);
    sTwice = With(sTwice, 96, static_cast<std::uint32_t>(nPnts + nRecordSize));
    sTwice = With(sTwice, 100, std::uint32_t{2});
    sTwice = With(sTwice, nPnts + nRecordSize, nPosTable + static_cast<std::int64_t>(nRecordSize));
    add(88, sTwice);
    add(90, With(sLaz, nData, std::uint16_t{9}));
    add(91, With(sLaz, nData + 34, std::uint16_t{99}));
    add(92, With(sLaz, nPnts + 8 + 20, std::uint32_t{0xffffffffU}));
    add(93, With(With(sLaz, nData + 12, std::uint32_t{0xffffffffU}), nPnts, std::int64_t{0}));
    return vecRefused;
}
#endif

std::vector<CRefused> AllRefused()
{
    std::vector<CRefused> vecAll = RefusedNative();
    const auto append = [&](const std::vector<CRefused>& vecMore)
    { vecAll.insert(vecAll.end(), vecMore.begin(), vecMore.end()); };
    append(RefusedPly());
    append(RefusedGrid());
    if (IsLasRead())
        append(RefusedLas());
#ifdef ZOR4DATA_TEST_LAZ
    append(RefusedLaz());
#endif
    return vecAll;
}

bool IsOneLine(const std::string& sText)
{
    return !sText.empty() && sText.find('\n') == std::string::npos && sText.back() != '.';
}

/// Every cause that no file can have in this test, or that only paths have.
const std::set<int> c_otherCauses = {0, 1, 2, 3, 4, 5, 6, 7, 94};

TEST(CFileFacts, EachCause_HasAFileThatIsNotLoaded)
{
    for (const CRefused& refused : AllRefused())
    {
        SCOPED_TRACE(refused.nCause);
        const CMemFile file(refused.file.sBytes);
        const CFileFacts facts = FindFileFacts(file.GetPath(), refused.file.eType);
        EXPECT_EQ(facts.eCause, refused.nCause) << facts.sCause;
        EXPECT_EQ(facts.eType, refused.file.eType);
        EXPECT_TRUE(IsOneLine(facts.sCause)) << facts.sCause;
        EXPECT_FALSE(CPntCld(nullptr).ReadFromFile(nullptr, refused.file.eType, file.GetPath()));
        EXPECT_TRUE(FindFileLosses(file.GetPath(), refused.file.eType).empty());
    }
}

// A new cause gets a file above, and the numbers stay.
TEST(CFileFacts, EachCauseOfTheHeader_IsTested)
{
#ifndef ZOR4DATA_TEST_LAZ
    GTEST_SKIP() << "files for the causes of LAZ are written by LASzip";
#endif
    std::set<int> tested = c_otherCauses;
    for (const CRefused& refused : AllRefused())
        tested.insert(refused.nCause);
    std::ifstream header(GetSourceFolder() / "include/zor4data/enumFileCause.h");
    std::set<int> declared;
    for (std::string sName, sSign, sNumber; header >> sName;) // NAME = NUMBER,
    {
        const bool bCause = sName.rfind("FileCause_", 0) == 0 && header >> sSign >> sNumber && sSign == "=";
        EXPECT_TRUE(!bCause || declared.insert(std::stoi(sNumber)).second)
            << sName << " is a number given twice";
    }
    declared.erase(declared.lower_bound(FileCause_NotCreated), declared.end()); // of saving
    EXPECT_EQ(declared, tested);
}

TEST(CFileFacts, Path_CauseOfItsOwn)
{
    const fs::path folder = fs::temp_directory_path() / ("zor4data-facts-" + std::to_string(getpid()));
    fs::create_directory(folder);
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const CMemFile empty;
    const CMemFile text("hello");
    const auto find = [](const std::string& sPath) { return FindFileFacts(zor::String(sPath.c_str())); };
    EXPECT_EQ(find("/no/such/file").eCause, FileCause_NotFound);
    EXPECT_EQ(find(std::string(5000, 'a')).eCause, FileCause_NotOpened);
    EXPECT_EQ(find(folder.string()).eCause, FileCause_Directory);
    EXPECT_EQ(find(pipe.string()).eCause, FileCause_NotRegular);
    EXPECT_EQ(find(empty.GetPath()).eCause, FileCause_Empty);
    EXPECT_EQ(find(text.GetPath()).eCause, FileCause_UnknownKind);
    EXPECT_EQ(find(text.GetPath()).eType, -1);
    EXPECT_EQ(FindFileFacts(text.GetPath(), static_cast<enumPntCldFile>(9)).eCause, FileCause_UnknownKind);
    EXPECT_TRUE(IsOneLine(find(std::string(5000, 'a')).sCause));
    EXPECT_EQ(FileCause_NoReader, 7);
    EXPECT_EQ(FileCause_LasUnsafe, 94);
    fs::remove_all(folder);
}

TEST(CFileFacts, Kind_IsToldByContent)
{
    std::vector<CSmallFile> vecFiles = SmallForeignFiles();
    vecFiles.push_back({PntCldFile_Native, SmallNative(PntCldType_Pnt)});
    for (const CSmallFile& file : vecFiles)
    {
        const CMemFile memFile(file.sBytes);
        const CFileFacts facts = FindFileFacts(memFile.GetPath());
        EXPECT_EQ(facts.eType, file.eType);
        EXPECT_EQ(facts.eCause, FileCause_None) << facts.sCause;
        EXPECT_EQ(facts.sCause, "");
    }
}

TEST(CFileFacts, Announced_AsTheFileSays)
{
    const auto find = [](const std::string& sBytes)
    {
        const CMemFile file(sBytes);
        return FindFileFacts(file.GetPath()).nAnnounced;
    };
    EXPECT_EQ(find(SmallPly()), 3);
    EXPECT_EQ(find(SmallGrid()), -1);
    EXPECT_EQ(find(SmallNative(PntCldType_Pnt)), 30);
    EXPECT_EQ(find(LasOf(1, 5).GetBytes()), 5);
    CLasFile file = LasOf(6, 2);
    file.nAnnounced = 5000000000;
    EXPECT_EQ(find(file.GetBytes()), 5000000000);
}

TEST(CFileFacts, AnnouncedBeyondWhatHasASign_TheLargest)
{
    if (!IsLasRead())
        GTEST_SKIP() << "LAS is not read";
    const CMemFile file(With(LasOf(6, 3).GetBytes(), 247, std::uint64_t{1} << 63U));
    EXPECT_EQ(FindFileFacts(file.GetPath()).nAnnounced, std::numeric_limits<std::int64_t>::max());
}

TEST(CFileFacts, Color_AsItWouldBeLoaded)
{
    const auto find = [](const std::string& sBytes)
    {
        const CMemFile file(sBytes);
        return FindFileFacts(file.GetPath()).bColor;
    };
    EXPECT_TRUE(find(SmallPly()));
    EXPECT_FALSE(find(SmallGrid()));
    EXPECT_FALSE(find(SmallNative(PntCldType_Pnt)));
    EXPECT_TRUE(find(SmallNative(PntCldType_PntColor)));
    EXPECT_TRUE(find(LasOf(3, 5).GetBytes()));
    EXPECT_FALSE(find(LasOf(7, 5).GetBytes())); // has them, but they are not taken
}

TEST(CFileFacts, Bounds_OfTheHead)
{
    const CMemFile native(SmallNative(PntCldType_Pnt));
    const CFileFacts facts = FindFileFacts(native.GetPath());
    ASSERT_TRUE(facts.bBounds);
    EXPECT_NEAR(facts.bounds.xmin, 0.0, 1e-3);
    EXPECT_NEAR(facts.bounds.xmax, 29.0, 1e-3);
    EXPECT_NEAR(facts.bounds.ymax, 58.0, 1e-3);
    EXPECT_NEAR(facts.bounds.zmin, 71.0, 1e-3);
    std::string sLas = LasOf(1, 5).GetBytes();
    for (std::size_t i = 0; i < 6; ++i) // x max, x min, y max and so on
        sLas = With(sLas, 179 + 8 * i, i % 2 == 0 ? 7.0 + static_cast<double>(i) : -1.0);
    const CMemFile las(sLas);
    const CFileFacts lasFacts = FindFileFacts(las.GetPath());
    ASSERT_TRUE(lasFacts.bBounds);
    EXPECT_EQ(lasFacts.bounds.xmax, 7.0);
    EXPECT_EQ(lasFacts.bounds.zmax, 11.0);
    EXPECT_EQ(lasFacts.bounds.ymin, -1.0);
    const CMemFile ply(SmallPly());
    EXPECT_FALSE(FindFileFacts(ply.GetPath()).bBounds);
    EXPECT_EQ(FindFileFacts(ply.GetPath()).bounds.xmin, 1.7e200);
    const CMemFile odd(With(sLas, 187, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(FindFileFacts(odd.GetPath()).bBounds);
}

std::vector<std::string> CodesOf(const std::string& sBytes, enumPntCldFile eType)
{
    const CMemFile file(sBytes);
    std::vector<std::string> vecCodes;
    for (const CFileLoss& loss : FindFileLosses(file.GetPath(), eType))
    {
        EXPECT_TRUE(IsOneLine(loss.sText)) << loss.sText;
        vecCodes.push_back(loss.sCode);
    }
    return vecCodes;
}

// What a terminal obeys comes from no file into a sentence; a name without end makes none.
TEST(CFileFacts, NamesFromFiles_ArePrintable)
{
    const std::string sHead = "ply\nformat binary_little_endian 1.0\nelement vertex 1\n";
    const std::string sXyz = "property float x\nproperty float y\nproperty float z\n";
    const CMemFile tab(sHead + sXyz + "property a\tb\xff c\033d\nend_header\n............");
    EXPECT_EQ(FindFileFacts(tab.GetPath()).sCause,
              "property type not supported: 'a?b?' of c?d in element vertex");
    const CMemFile wide(sHead + sXyz + "property " + std::string(200, 'f') + " w\nend_header\n............");
    EXPECT_EQ(FindFileFacts(wide.GetPath()).sCause,
              "property type not supported: '" + std::string(80, 'f') + "\u2026' of w in element vertex");
    const CMemFile more(sHead + sXyz + "property uchar a\033[31mb\nelement \033c 1\nproperty uchar i\n" +
                        "end_header\n" + std::string(14, '\1'));
    for (const CFileLoss& loss : FindFileLosses(more.GetPath(), PntCldFile_Ply))
        EXPECT_EQ(loss.sText.find('\033'), std::string::npos) << loss.sText;
}

TEST(CFileFacts, Losses_AreToldForWhatLoads)
{
    using TCodes = std::vector<std::string>;
    EXPECT_EQ(CodesOf(SmallGrid(), PntCldFile_AsciiGrid), TCodes());
    EXPECT_EQ(CodesOf(SmallNative(PntCldType_Pnt), PntCldFile_Native), TCodes());
    EXPECT_EQ(CodesOf(SmallPly(), PntCldFile_Ply), TCodes({"not-taken"})); // the faces
    EXPECT_EQ(CodesOf(SmallPly().substr(0, SmallPly().size() - 1), PntCldFile_Ply),
              TCodes({"misread", "not-taken"}));
    std::string sDouble = "ply\nformat binary_little_endian 1.0\nelement vertex 1\nproperty double x\n"
                          "property double y\nproperty double z\nend_header\n" +
                          std::string(24, '\1');
    EXPECT_EQ(CodesOf(sDouble, PntCldFile_Ply), TCodes({"ply-coordinates"}));
    std::string sOrigin = With(SmallNative(PntCldType_Pnt), 11, std::numeric_limits<float>::infinity());
    EXPECT_EQ(CodesOf(sOrigin, PntCldFile_Native)[0], "misread");
    if (!IsLasRead())
        return;
    EXPECT_EQ(CodesOf(LasOf(7, 0).GetBytes(), PntCldFile_Las)[0], "las-empty");
    const TCodes vecLas = CodesOf(LasOf(7, 3).GetBytes(), PntCldFile_Las);
    EXPECT_EQ(std::count(vecLas.begin(), vecLas.end(), "las-color"), 1);
}

} // namespace
