#include <tests/io/ply/PlyBytes.h>
#include <tests/io/ply/ReadPly.h>

#include <dirent.h>
#include <gtest/gtest.h>

#include <new>

namespace
{

using TCall = CReadCall;

const CReading c_noCall = {false, {}};

/// A vertex element of one point, and its bytes.
const std::string c_sVertex = "element vertex 1\n" + c_sPlyXyz;

int CountOpenFiles()
{
    int nNum = 0;
    DIR* const pDir = opendir("/proc/self/fd");
    while (readdir(pDir) != nullptr)
        ++nNum;
    closedir(pDir);
    return nNum;
}

/// Has no room for points; or fails at a later call.
class CFullListener final : public IPntCldReadListener
{
public:
    explicit CFullListener(int nNumCallsBefore = 1) : m_nNumCallsBefore(nNumCallsBefore) {}

    void OnReadType(enumPntCldType) override { Count(); }
    void OnReadNumPnts(int) override { Count(); }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override { Count(); }
    void OnReadPnt(double, double, double) override { Count(); }
    void OnReadEnd() override { Count(); }

private:
    void Count()
    {
        if (m_nNumCallsBefore-- == 0)
            throw std::bad_alloc();
    }

    int m_nNumCallsBefore;
};

/// @return true or false as the reader does; nothing when it lets the lack of memory through.
enum enumOutcome
{
    Outcome_False,
    Outcome_True,
    Outcome_NoMemory,
};

enumOutcome ReadWithoutRoom(const std::string& sFile, int nNumCallsBefore = 1)
{
    const CMemFile file(sFile);
    CFullListener listener(nNumCallsBefore);
    try
    {
        return ReadForeign(listener, nullptr, PntCldFile_Ply, file.GetPath()) ? Outcome_True : Outcome_False;
    }
    catch (const std::bad_alloc&)
    {
        return Outcome_NoMemory;
    }
}

TEST(CPlyReader_malformed, Empty_IsRefused)
{
    EXPECT_EQ(c_noCall, ReadPly("", true));
}

TEST(CPlyReader_malformed, OtherMagic_IsRefused)
{
    EXPECT_EQ(c_noCall, ReadPly("LASF" + std::string(1000, '\0'), true));
    EXPECT_EQ(c_noCall, ReadPly(std::string(100000, 'p'), true));
}

TEST(CPlyReader_malformed, Ascii_IsRefused)
{
    EXPECT_EQ(c_noCall, ReadPly("ply\nformat ascii 1.0\n" + c_sVertex + "end_header\n1 2 3\n", true));
}

TEST(CPlyReader_malformed, BigEndian_IsRefused)
{
    EXPECT_EQ(c_noCall,
              ReadPly("ply\nformat binary_big_endian 1.0\n" + c_sVertex + "end_header\n" + Floats({1, 2, 3}),
                      true));
}

TEST(CPlyReader_malformed, NoElementWithItems_IsRefused)
{
    EXPECT_EQ(c_noCall, ReadPly(c_sPlyMagic + "end_header\n", true));
    EXPECT_EQ(c_noCall, ReadPly(c_sPlyMagic, true));
    EXPECT_EQ(c_noCall, ReadPly(c_sPlyMagic + "element vertex 0\n" + c_sPlyXyz + "end_header\n", true));
    EXPECT_EQ(c_noCall, ReadPly(c_sPlyMagic + "element vertex -5\n" + c_sPlyXyz + "end_header\n", true));
    EXPECT_EQ(c_noCall, ReadPly(c_sPlyMagic + "property char p\nend_header\n1", true));
}

TEST(CPlyReader_malformed, NegativeCount_DropsTheElement)
{
    const std::string sFile = c_sPlyMagic + "element face -1\nproperty list uchar int l\n" + c_sVertex +
                              "end_header\n" + Floats({1, 2, 3});
    EXPECT_EQ((CReading{true, {TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(1, 2, 3), TCall::End()}}),
              ReadPly(sFile));
}

// The element behind a vertex element without items is taken for the vertices, and has no x, y and z.
TEST(CPlyReader_malformed, FacesBehindNoVertices_Fail_Kept)
{
    const std::string sFile = c_sPlyMagic + "element vertex 0\n" + c_sPlyXyz +
                              "element face 1\nproperty list uchar int l\nend_header\n" + Bytes({0});
    EXPECT_EQ(c_noCall, ReadPly(sFile, true));
}

TEST(CPlyReader_malformed, HeaderCutOff_NothingIsRead)
{
    const std::string sFile = PlyOfXyz(2);
    const std::size_t nEnd = sFile.find("end_header\n") + std::string("end_header\n").size();
    for (std::size_t n = 0; n < nEnd; ++n)
        EXPECT_EQ(c_noCall, ReadPly(sFile.substr(0, n), true)) << n << " bytes";
}

TEST(CPlyReader_malformed, NoXyz_FailsBeforeAnyCall)
{
    for (const char* sName : {"x", "y", "z"})
    {
        std::string sFile = PlyOfXyz(1);
        sFile.replace(sFile.find("float " + std::string(sName)) + 6, 1, "w");
        EXPECT_EQ(c_noCall, ReadPly(sFile, true)) << sName;
    }
}

TEST(CPlyReader_malformed, NoXyz_FailsAfterTheElementsBefore)
{
    const std::string sFile =
        c_sPlyMagic + "element face 1\nproperty char a\nelement vertex 1\nproperty float x\nend_header\n" +
        Bytes({1}) + Floats({1});
    EXPECT_EQ((CReading{false, {TCall::Progress(0)}}), ReadPly(sFile, true));
}

TEST(CPlyReader_malformed, UnknownType_FailsAtTheFirstItem)
{
    const std::string sFile =
        c_sPlyMagic + c_sVertex + "property bool b\nend_header\n" + Floats({1, 2, 3}) + Bytes({1});
    EXPECT_EQ((CReading{false, {TCall::Type(0), TCall::NumPnts(1), TCall::Progress(0)}}),
              ReadPly(sFile, true));
}

TEST(CPlyReader_malformed, UnknownType_BehindTheVerticesFailsAfterThem)
{
    const std::string sFile = c_sPlyMagic + c_sVertex +
                              "element face 1\nproperty list int int l\nend_header\n" + Floats({1, 2, 3}) +
                              std::string(8, '\0');
    EXPECT_EQ((CReading{false,
                        {TCall::Type(0), TCall::NumPnts(1), TCall::Progress(0), TCall::Pnt(1, 2, 3),
                         TCall::Progress(50)}}),
              ReadPly(sFile, true));
}

TEST(CPlyReader_malformed, VertexCutOff_FailsAfterThePointsBefore)
{
    const std::string sFile = PlyOfXyz(3);
    for (std::size_t nMissing = 4; nMissing <= 12; ++nMissing) // with less missing z is cut off, but there
    {
        const CReading reading = ReadPly(sFile.substr(0, sFile.size() - nMissing));
        EXPECT_EQ((CReading{false,
                            {TCall::Type(0), TCall::NumPnts(3), TCall::Pnt(0, 0.25, 0.5),
                             TCall::Pnt(1, 1.25, 1.5)}}),
                  reading)
            << nMissing;
    }
}

TEST(CPlyReader_malformed, ListCutOff_FailsAtTheNextValue)
{
    const std::string sFile = c_sPlyMagic + c_sVertex +
                              "element face 2\nproperty list uchar double l\nend_header\n" +
                              Floats({1, 2, 3}) + Bytes({255, 1, 2, 3});
    const TReadCalls vecCalls = {TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(1, 2, 3)};
    EXPECT_EQ((CReading{false, vecCalls}), ReadPly(sFile));
}

TEST(CPlyReader_malformed, ListBeforeVertexWithHugeCount_EndsWithTheFile)
{
    const std::string sFile = c_sPlyMagic + "element face 2147483647\nproperty list uchar double l\n" +
                              c_sVertex + "end_header\n" + std::string(100, '\0');
    EXPECT_EQ(c_noCall, ReadPly(sFile));
}

TEST(CPlyReader_malformed, HugeCount_EndsWithTheFile)
{
    for (const char* sCount : {"2147483647", "4294967296", "99999999999999999999"})
    {
        const std::string sFile =
            c_sPlyMagic + "element vertex " + sCount + "\n" + c_sPlyXyz + "end_header\n" + Floats({1, 2, 3});
        EXPECT_EQ((CReading{false, {TCall::Type(0), TCall::NumPnts(2147483647), TCall::Pnt(1, 2, 3)}}),
                  ReadPly(sFile));
    }
}

TEST(CPlyReader_malformed, NoRoomForMoreThanTheFileHolds_IsFalse)
{
    std::string sFile = PlyOfXyz(10);
    EXPECT_EQ(Outcome_NoMemory, ReadWithoutRoom(sFile));
    EXPECT_EQ(Outcome_NoMemory, ReadWithoutRoom(sFile + "more"));
    EXPECT_EQ(Outcome_NoMemory, ReadWithoutRoom(sFile.substr(0, sFile.size() - 3))); // z cut off: is read
    EXPECT_EQ(Outcome_False, ReadWithoutRoom(sFile.substr(0, sFile.size() - 4)));
    sFile.replace(sFile.find("vertex 10"), 9, "vertex 2147483647");
    EXPECT_EQ(Outcome_False, ReadWithoutRoom(sFile));
}

TEST(CPlyReader_malformed, NoRoomForUnreadableVertices_IsFalse)
{
    EXPECT_EQ(Outcome_False, ReadWithoutRoom(c_sPlyMagic + c_sVertex + "property bool b\nend_header\n" +
                                             std::string(100, 'x')));
}

TEST(CPlyReader_malformed, NoRoom_CountsTheRestOfTheFileOnly)
{
    const std::string sHeader = c_sPlyMagic + "element face 1000\nproperty double d\nelement vertex 100\n" +
                                c_sPlyXyz + "property list uchar double l\nend_header\n" +
                                std::string(8000, 'f');
    const std::string sItems(100 * 13, '\0');
    EXPECT_EQ(Outcome_NoMemory, ReadWithoutRoom(sHeader + sItems));
    EXPECT_EQ(Outcome_False, ReadWithoutRoom(sHeader + sItems.substr(1)));
    EXPECT_EQ(Outcome_False, ReadWithoutRoom(sHeader));
}

TEST(CPlyReader_malformed, LackOfMemoryElsewhere_PassesThrough)
{
    const std::string sFile = PlyOfXyz(2);
    for (const int nNumCallsBefore : {0, 2, 3, 4})
        EXPECT_EQ(Outcome_NoMemory, ReadWithoutRoom(sFile, nNumCallsBefore)) << nNumCallsBefore;
    EXPECT_EQ(Outcome_True, ReadWithoutRoom(sFile, 5));
}

TEST(CPlyReader_malformed, Files_AreClosedWhateverHappens)
{
    const std::string sFile = PlyOfXyz(2);
    const int nNumBefore = CountOpenFiles();
    ReadPly(sFile);
    ReadPly(sFile.substr(0, sFile.size() - 5));
    ReadPly("ply\n");
    ReadPly(c_sPlyMagic + "end_header\n");
    for (int i = 0; i < 6; ++i)
        ReadWithoutRoom(sFile, i);
    ReadWithoutRoom(sFile.substr(0, sFile.size() - 5));
    EXPECT_EQ(nNumBefore, CountOpenFiles());
}

} // namespace
