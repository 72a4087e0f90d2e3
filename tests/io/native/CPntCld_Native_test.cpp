// Saving and loading as a host sees it.

#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/CTestCld.h>
#include <tests/support/RealFiles.h>

namespace
{

using namespace NativeBytes;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

template <class T>
class CPntCld_Native : public ::testing::Test
{
public:
    static constexpr bool c_bColor = CPntTrait<T>::c_bColor;
    static constexpr int c_nType = c_bColor ? 1 : 0;

    /// A file of five points in one leaf.
    static std::string FileOfFive(int nVersion = 7)
    {
        return Start(c_nType, nVersion) + Count(5, {1.0F, 2.0F, 3.0F}) + SomePnts(5, c_bColor) +
               SomeTreeHeader() + Masks(1, 1) + Leaf(5, 0);
    }

    bool Load(const std::string& sBytes)
    {
        m_file.Set(sBytes);
        return m_cld.ReadFromFile(nullptr, PntCldFile_Native, m_file.GetPath());
    }

    std::string Save()
    {
        EXPECT_TRUE(m_cld.WriteToFile(m_out.GetPath(), 0));
        return ReadFileBytes(m_out.GetPath());
    }

    PNT_3D GetPnt(int i) const
    {
        PNT_3D pnt;
        m_cld.GetPnt(i, pnt);
        return pnt;
    }

    CRecColorListener m_color;
    CPntCld m_cld{&m_color};
    CMemFile m_file;
    CMemFile m_out;
};
TYPED_TEST_SUITE(CPntCld_Native, TBothPntTypes, CPntTypeName);

TYPED_TEST(CPntCld_Native, WriteToFile_SizeOfTwoPoints)
{
    this->m_cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    this->m_cld.Init(2);
    this->m_cld.AddPnt(0.0, 0.0, 0.0);
    this->m_cld.AddPnt(1.0, 1.0, 1.0);
    this->m_cld.ComputeTree();
    const std::size_t nRecord = this->c_bColor ? 15 : 12;
    const std::size_t nNodes = 2 + 2 * 8;
    EXPECT_EQ(5 + 4 + 2 + 12 + 4 + 2 * nRecord + 28 + nNodes, this->Save().size());
}

TYPED_TEST(CPntCld_Native, ReadFromFile_RestoresPointsBoxVersionAndType)
{
    EXPECT_TRUE(this->Load(this->FileOfFive(41)));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
    EXPECT_EQ(41, this->m_cld.GetVersion());
    EXPECT_EQ(this->c_bColor, this->m_cld.IsWithColor());
    EXPECT_EQ(1.3, this->GetPnt(3).x);
    EXPECT_EQ(2.003, this->GetPnt(3).y);
    EXPECT_EQ(2.9997, this->GetPnt(3).z);
    unsigned char r = 9;
    unsigned char g = 9;
    unsigned char b = 9;
    EXPECT_EQ(this->c_bColor, this->m_cld.GetPntColor(3, r, g, b));
    EXPECT_EQ(this->c_bColor ? 3 : 9, r);
    EXPECT_EQ(this->c_bColor ? 2 : 9, g);
    EXPECT_EQ(this->c_bColor ? 3 : 9, b);
    RECT_3D rect;
    EXPECT_TRUE(this->m_cld.GetBdry(rect));
    EXPECT_EQ(1.0, rect.xmin);
    EXPECT_EQ(1.1, rect.xmax);
    EXPECT_EQ(PntCldFile_Native, this->m_cld.GetFileType());
    EXPECT_STREQ(this->m_file.GetPath(), this->m_cld.GetFilePath().c_str());
}

TYPED_TEST(CPntCld_Native, ReadFromFile_AnyPrologue)
{
    for (const char* sPrologue : {"hello", "     ", "\xff\xff\xff\xff\xff"})
    {
        this->m_cld.Clear();
        EXPECT_TRUE(this->Load(sPrologue + this->FileOfFive().substr(5)));
        EXPECT_EQ(5, this->m_cld.GetNumPnts());
        EXPECT_EQ(this->FileOfFive(), this->Save());
    }
}

TYPED_TEST(CPntCld_Native, ReadFromFile_MissingOrShort_ChangesNothing)
{
    this->m_cld.OnReadType(PntCldType_PntColor);
    this->m_cld.SetVersion(3);
    EXPECT_FALSE(this->m_cld.ReadFromFile(nullptr, PntCldFile_Native, "/no/such/file"));
    for (std::size_t n = 0; n < 5; ++n)
        EXPECT_FALSE(this->Load(this->FileOfFive().substr(0, n)));
    EXPECT_TRUE(this->m_cld.IsWithColor());
    EXPECT_EQ(3, this->m_cld.GetVersion());
    EXPECT_EQ(0, this->m_cld.GetNumPnts());
    EXPECT_EQ(PntCldFile_Native, this->m_cld.GetFileType()); // but for the kind and the path
}

// The type of a file stays, even one that there is not: the cloud is then inert.
TYPED_TEST(CPntCld_Native, ReadFromFile_UnknownTypeStays_Kept)
{
    for (const int nType : {2, -1, 255, 256, -32768, 32767})
    {
        CPntCld cld(nullptr);
        cld.OnReadType(CPntTrait<TypeParam>::c_eType);
        cld.SetVersion(3);
        this->m_file.Set(Start(nType, 9) + this->FileOfFive().substr(11));
        EXPECT_FALSE(cld.ReadFromFile(nullptr, PntCldFile_Native, this->m_file.GetPath()));
        EXPECT_EQ(-1, cld.GetVersion());
        EXPECT_FALSE(cld.Init(1));
        EXPECT_FALSE(cld.WriteToFile(this->m_out.GetPath(), 0)); // writes the low half of the type back
        EXPECT_EQ(Start(nType, -1), ReadFileBytes(this->m_out.GetPath()));
        cld.OnReadType(CPntTrait<TypeParam>::c_eType);
        EXPECT_EQ(3, cld.GetVersion()); // no store was touched
    }
}

// A store that has points or an octree is not overwritten, and the result does not tell.
TYPED_TEST(CPntCld_Native, ReadFromFile_IntoALoadedStore_Kept)
{
    EXPECT_TRUE(this->Load(this->FileOfFive(1)));
    const std::string sOther = Start(this->c_nType, 99) + Count(7, {9.0F, 9.0F, 9.0F}) +
                               SomePnts(7, this->c_bColor) + SomeTreeHeader() + Masks(1, 1) + Leaf(7, 0);
    EXPECT_TRUE(this->Load(sOther));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
    EXPECT_EQ(99, this->m_cld.GetVersion()); // it comes before the points
    EXPECT_EQ(1.1, this->GetPnt(1).x);
    EXPECT_EQ(this->FileOfFive(99), this->Save());
}

TYPED_TEST(CPntCld_Native, ReadFromFile_IntoAStoreBeingFilled_Kept)
{
    this->m_cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    this->m_cld.Init(2);
    this->m_cld.AddPnt(50.0, 0.0, 0.0);
    EXPECT_TRUE(this->Load(this->FileOfFive())); // more points than the array has slots
    EXPECT_EQ(2, this->m_cld.GetNumPnts());
    EXPECT_EQ(50.0, this->GetPnt(0).x);
    EXPECT_TRUE(this->m_cld.AddPnt(51.0, 0.0, 0.0));
    EXPECT_TRUE(this->m_cld.ComputeTree());
    EXPECT_EQ(51.0, this->GetPnt(1).x);
}

TYPED_TEST(CPntCld_Native, ReadFromFile_IntoAnEmptyStoreWithATree_Kept)
{
    this->m_cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    this->m_cld.ComputeTree();
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    EXPECT_EQ(0, this->m_cld.GetNumPnts());
    this->m_cld.Clear();
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
}

TYPED_TEST(CPntCld_Native, ReadFromFile_LeavesTheOtherStoreAlone)
{
    const enumPntCldType eOther = this->c_bColor ? PntCldType_Pnt : PntCldType_PntColor;
    this->m_cld.OnReadType(eOther);
    this->m_cld.Init(1);
    this->m_cld.AddPnt(8.0, 8.0, 8.0);
    this->m_cld.SetVersion(4);
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
    this->m_cld.OnReadType(eOther);
    EXPECT_EQ(1, this->m_cld.GetNumPnts());
    EXPECT_EQ(4, this->m_cld.GetVersion());
}

TYPED_TEST(CPntCld_Native, ReadFromFile_NoPoints_LeavesTheStoreEmpty)
{
    EXPECT_TRUE(this->Load(Start(this->c_nType, 6) + Count(0)));
    EXPECT_EQ(0, this->m_cld.GetNumPnts());
    EXPECT_EQ(6, this->m_cld.GetVersion());
    RECT_3D rect;
    EXPECT_FALSE(this->m_cld.GetBdry(rect));
    EXPECT_TRUE(this->Load(this->FileOfFive())); // it can be loaded into
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
}

// No slot counts as filled after loading: the next point given to the cloud takes the first one, and
// becomes the origin.
TYPED_TEST(CPntCld_Native, AddPnt_AfterLoadingOverwritesTheFirst_Kept)
{
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    EXPECT_TRUE(this->m_cld.AddPnt(100.0, 100.0, 100.0));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
    EXPECT_EQ(100.0, this->GetPnt(0).x);
    EXPECT_EQ(100.1, this->GetPnt(1).x); // its offset from the new origin
    for (int i = 1; i < 5; ++i)
        EXPECT_TRUE(this->m_cld.AddPnt(i, 0.0, 0.0));
    EXPECT_FALSE(this->m_cld.AddPnt(6.0, 0.0, 0.0));
}

TYPED_TEST(CPntCld_Native, ReadFromFile_KeepsTheModifiedFlag)
{
    this->m_cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    this->m_cld.SetModified(true);
    EXPECT_TRUE(this->Load(this->FileOfFive(20)));
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_EQ(20, this->m_cld.GetVersion());
    this->Save();
    EXPECT_TRUE(this->m_cld.IsModified());
}

TYPED_TEST(CPntCld_Native, ReadFromFile_ClearsMarks)
{
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    this->m_cld.SelPnt(2, false);
    this->m_cld.Clear();
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    CRecListener rec;
    this->m_cld.GetPnts(&rec);
    for (const CCldCadPnt& pnt : rec.GetPnts())
        EXPECT_FALSE(pnt.m_bSel);
}

// Deleted points do not come back.
TYPED_TEST(CPntCld_Native, WriteToFile_WithoutDeletedPoints)
{
    EXPECT_TRUE(this->Load(this->FileOfFive(7)));
    this->m_cld.SelPnt(1, false);
    this->m_cld.SelPnt(4, false);
    this->m_cld.DelSelPnts();
    const std::string sBytes = this->Save();
    CPntCld cld(nullptr);
    this->m_file.Set(sBytes);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, this->m_file.GetPath()));
    EXPECT_EQ(3, cld.GetNumPnts());
    EXPECT_EQ(8, cld.GetVersion());
    EXPECT_FALSE(cld.IsModified());
    CRecListener rec;
    cld.GetPnts_Clip(&rec, {});
    EXPECT_EQ(3, rec.GetNumPnts());
}

TYPED_TEST(CPntCld_Native, WriteToFile_AllPointsDeleted)
{
    EXPECT_TRUE(this->Load(this->FileOfFive(7)));
    for (int i = 0; i < 5; ++i)
        this->m_cld.SelPnt(i, false);
    this->m_cld.DelSelPnts();
    // An octree without a root: a root without children.
    EXPECT_EQ(Start(this->c_nType, 8) + Count(0, {1.0F, 2.0F, 3.0F}) + std::string(28 + 2, '\0'),
              this->Save());
}

// A cloud that was never built leaves a file of 11 bytes, and success.
TYPED_TEST(CPntCld_Native, WriteToFile_WithoutATree_Kept)
{
    this->m_cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    EXPECT_EQ(Start(this->c_nType, 0), this->Save()); // neither array nor tree
    this->m_cld.Init(3);
    this->m_cld.SetVersion(-5);
    EXPECT_EQ(Start(this->c_nType, -5), this->Save()); // no tree
    this->m_cld.Clear();
    this->m_cld.ComputeTree();
    EXPECT_EQ(Start(this->c_nType, -5), this->Save()); // no array
    CPntCld cld(nullptr);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, this->m_out.GetPath()));
    EXPECT_EQ(0, cld.GetNumPnts());
    EXPECT_EQ(-5, cld.GetVersion());
}

TYPED_TEST(CPntCld_Native, WriteToFile_LeavesTheCloudAsItIs)
{
    EXPECT_TRUE(this->Load(this->FileOfFive(7)));
    this->m_cld.SelPnt(1, false);
    const std::string sBytes = this->Save();
    EXPECT_EQ(sBytes, this->Save());
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
    EXPECT_EQ(7, this->m_cld.GetVersion());
    CRecListener rec;
    this->m_cld.GetPnts(&rec);
    EXPECT_TRUE(rec.GetPnts()[1].m_bSel);
    EXPECT_EQ(PntCldFile_Native, this->m_cld.GetFileType());
    EXPECT_STREQ(this->m_file.GetPath(), this->m_cld.GetFilePath().c_str()); // of the file last read
}

TYPED_TEST(CPntCld_Native, WriteToFile_WhereNothingCanBeWritten)
{
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    for (const char* sPath : {"", "/no/such/directory/file.cld", "/", "."})
        EXPECT_FALSE(this->m_cld.WriteToFile(sPath, 0)) << sPath;
    EXPECT_FALSE(std::filesystem::exists("/no/such/directory"));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
}

// A full disk is not noticed.
TYPED_TEST(CPntCld_Native, WriteToFile_FullDisk_Kept)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    EXPECT_TRUE(this->m_cld.WriteToFile("/dev/full", 0));
    EXPECT_EQ(5, this->m_cld.GetNumPnts());
}

// Copies are independent of what is loaded into one of them.
TYPED_TEST(CPntCld_Native, ReadFromFile_IntoACopy)
{
    CPntCld copy(this->m_cld);
    EXPECT_TRUE(this->Load(this->FileOfFive()));
    EXPECT_EQ(0, copy.GetNumPnts());
    copy = this->m_cld;
    this->m_cld.Clear();
    EXPECT_EQ(5, copy.GetNumPnts());
    EXPECT_TRUE(copy.WriteToFile(this->m_out.GetPath(), 0));
    EXPECT_EQ(this->FileOfFive(), ReadFileBytes(this->m_out.GetPath()));
}

class CNoCalls final : public IDlgProgress
{
public:
    void Start() override { ADD_FAILURE(); }
    void Stop() override { ADD_FAILURE(); }
    bool SetPos(int) override
    {
        ADD_FAILURE();
        return true;
    }
};

TYPED_TEST(CPntCld_Native, ReadFromFile_OfANativeFileTellsNoProgress_Kept)
{
    this->m_file.Set(this->FileOfFive());
    CNoCalls progress;
    EXPECT_TRUE(this->m_cld.ReadFromFile(&progress, PntCldFile_Native, this->m_file.GetPath()));
    EXPECT_EQ(this->m_cld.GetNumPnts(), 5);
}

} // namespace
