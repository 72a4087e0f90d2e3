// A native file loads with progress, and a host stops it at any call: the cloud is then as it was.

#include <tests/companions/CRecipeCld.h>
#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/CCldState.h>
#include <tests/support/CStopper.h>
#include <zor4data/LoadNative.h>

#include <algorithm>

namespace
{

class CRecProgress final : public IDlgProgress
{
public:
    void Start() override { ADD_FAILURE(); }
    void Stop() override { ADD_FAILURE(); }
    bool SetPos(int nPos) override
    {
        m_vecPos.push_back(nPos);
        return false; // not looked at
    }

    std::vector<int> m_vecPos;
};

/// A native file of very many points, most of it a hole: an array of zeros and no octree.
class CLargeFile : public CMemFile
{
public:
    explicit CLargeFile(std::size_t nNumBytes, bool bColor)
    {
        const int nNumPnts = static_cast<int>(nNumBytes / (bColor ? 15 : 12));
        Set(NativeBytes::Start(bColor ? 1 : 0) + NativeBytes::Count(nNumPnts));
        Resize(nNumBytes);
    }
};

template <class T>
class LoadNative_test : public ::testing::Test
{
public:
    static constexpr bool c_bColor = CPntTrait<T>::c_bColor;

    LoadNative_test()
    {
        CRecipeCld<T> cld({2, 3000, 3, true});
        EXPECT_TRUE(cld->WriteToFile(m_file.GetPath(), 0));
    }

    CStopHost m_host;
    CMemFile m_file;
};
TYPED_TEST_SUITE(LoadNative_test, TBothPntTypes, CPntTypeName);

TYPED_TEST(LoadNative_test, LoadsAsReadFromFileDoes)
{
    CPntCld read(nullptr);
    ASSERT_TRUE(read.ReadFromFile(nullptr, PntCldFile_Native, this->m_file.GetPath()));
    CRecProgress progress;
    for (IDlgProgress* const pProgress :
         {static_cast<IDlgProgress*>(nullptr), static_cast<IDlgProgress*>(&progress)})
    {
        CPntCld cld(nullptr);
        ASSERT_TRUE(LoadNative(cld, pProgress, this->m_file.GetPath()));
        EXPECT_TRUE(CCldState(cld).HasSame(CCldState(read)));
        EXPECT_EQ(cld.GetFileType(), PntCldFile_Native);
        EXPECT_EQ(cld.GetNumPnts(), 3000);
    }
    EXPECT_EQ(progress.m_vecPos, std::vector<int>{0});
}

// 40 MiB: were there a call every 64 MiB only, there would be none but the first.
TYPED_TEST(LoadNative_test, Progress_EverySomeMegabytes)
{
    const CLargeFile file(std::size_t{40} << 20, TestFixture::c_bColor);
    CRecProgress progress;
    CPntCld cld(nullptr);
    EXPECT_TRUE(LoadNative(cld, &progress, file.GetPath()));
    EXPECT_GE(progress.m_vecPos.size(), 5U);
    EXPECT_TRUE(std::is_sorted(progress.m_vecPos.begin(), progress.m_vecPos.end()));
    EXPECT_EQ(progress.m_vecPos.front(), 0);
    EXPECT_LE(progress.m_vecPos.back(), 100);
    for (std::size_t i = 1; i < progress.m_vecPos.size(); ++i)
        EXPECT_LE(progress.m_vecPos[i] - progress.m_vecPos[i - 1], 21);
    EXPECT_GE(progress.m_vecPos.back(), 79);
}

TYPED_TEST(LoadNative_test, NotThere_NoCallAndTheFileIsRecorded)
{
    CRecProgress progress;
    CPntCld cld(nullptr);
    EXPECT_FALSE(LoadNative(cld, &progress, "/nowhere/at all.cld"));
    EXPECT_TRUE(progress.m_vecPos.empty());
    EXPECT_STREQ(cld.GetFilePath().c_str(), "/nowhere/at all.cld");
    EXPECT_EQ(cld.GetFileType(), PntCldFile_Native);
}

TYPED_TEST(LoadNative_test, Stopped_TheCloudIsAsItWas)
{
    const CLargeFile file(std::size_t{20} << 20, TestFixture::c_bColor);
    const auto attempt = [&](const auto& run)
    {
        CPntCld cld(nullptr);
        if (run([&] { LoadNative(cld, &this->m_host, file.GetPath()); }))
            return;
        EXPECT_EQ(cld.GetVersion(), -1); // no type
        EXPECT_EQ(GetPntArrays(cld).nNumPnts, 0);
        EXPECT_STREQ(cld.GetFilePath().c_str(), file.GetPath());
        cld.Clear();
        EXPECT_TRUE(LoadNative(cld, nullptr, this->m_file.GetPath()));
        EXPECT_EQ(cld.GetNumPnts(), 3000);
    };
    EXPECT_GT(StopEverywhere(this->m_host, Slot_SetPos, 1, attempt), 2);
}

TYPED_TEST(LoadNative_test, Stopped_ACloudWithPointsKeepsThem)
{
    CRecipeCld<TypeParam> cld({2, 500, 3, true});
    const CCldState before(*cld);
    cld->SelPnt(3, false);
    this->m_host.SetStop(Slot_SetPos, 0);
    EXPECT_THROW(LoadNative(*cld, &this->m_host, this->m_file.GetPath()), CStop);
    cld->UnSelPnts();
    EXPECT_EQ(cld->GetNumPnts(), 500);
    CPntCld copy(*cld);
    copy.ReadFromFile(nullptr, static_cast<enumPntCldFile>(-1), "");
    EXPECT_TRUE(CCldState(copy).HasSame(before));
}

} // namespace
