// A saved cloud is there whole, or what was there before still is.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CCldState.h>
#include <tests/support/FailEveryAlloc.h>
#include <zor4data/SaveCloud.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

/// A folder of the test's own, which goes away with it.
class CFolder
{
public:
    CFolder()
    {
        std::string sPath = (fs::temp_directory_path() / "zor4data-save-XXXXXX").string();
        if (mkdtemp(sPath.data()) == nullptr)
            throw std::runtime_error("no folder");
        m_path = sPath;
    }
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;
    ~CFolder()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }

    std::string GetPath(const std::string& sName) const { return (m_path / sName).string(); }

    std::string Write(const std::string& sName, const std::string& sText) const
    {
        std::ofstream(GetPath(sName)) << sText;
        return GetPath(sName);
    }

    std::ptrdiff_t CountFiles() const { return std::distance(fs::directory_iterator(m_path), {}); }

private:
    fs::path m_path;
};

std::string ReadBytes(const std::string& sPath)
{
    std::ifstream stream(sPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

mode_t FindRights(const std::string& sPath)
{
    struct stat status = {};
    return stat(sPath.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}

/// Files may not grow beyond a size as long as this lives.
class CSizeLimit
{
public:
    explicit CSizeLimit(rlim_t nMax) : m_pOld(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit limit = {nMax, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    CSizeLimit(const CSizeLimit&) = delete;
    CSizeLimit& operator=(const CSizeLimit&) = delete;
    ~CSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        static_cast<void>(std::signal(SIGXFSZ, m_pOld));
    }

private:
    void (*m_pOld)(int);
    rlimit m_limit{};
};

template <class T>
class SaveCloud_test : public ::testing::Test
{
public:
    void ExpectSaved(const std::string& sPath)
    {
        CPntCld loaded(nullptr);
        ASSERT_TRUE(loaded.ReadFromFile(nullptr, PntCldFile_Native, sPath));
        const CMemFile file;
        EXPECT_TRUE(m_cld->WriteToFile(file.GetPath(), 1));
        EXPECT_EQ(ReadBytes(sPath), ReadBytes(file.GetPath()));
        EXPECT_EQ(loaded.GetNumPnts(), m_cld->GetNumPnts());
    }

    CFolder m_folder;
    CRecipeCld<T> m_cld{{2, 30000, 3, true}};
};
TYPED_TEST_SUITE(SaveCloud_test, TBothPntTypes, CPntTypeName);

TYPED_TEST(SaveCloud_test, NewFile_IsThereWhole)
{
    const std::string sPath = this->m_folder.GetPath("new.cld");
    const CCldState before(*this->m_cld);
    EXPECT_EQ(SaveCloud(*this->m_cld, sPath), FileCause_None);
    EXPECT_TRUE(CCldState(*this->m_cld) == before);
    this->ExpectSaved(sPath);
    EXPECT_EQ(this->m_folder.CountFiles(), 1);
}

TYPED_TEST(SaveCloud_test, OldFile_IsReplacedAndKeepsItsRights)
{
    const std::string sPath = this->m_folder.Write("old.cld", std::string(5000000, 'x'));
    ASSERT_EQ(chmod(sPath.c_str(), 0640), 0);
    EXPECT_EQ(SaveCloud(*this->m_cld, sPath), FileCause_None);
    this->ExpectSaved(sPath);
    EXPECT_EQ(FindRights(sPath), 0640U);
    EXPECT_EQ(this->m_folder.CountFiles(), 1);
}

TYPED_TEST(SaveCloud_test, Mask_TakesFromNewFilesAlone)
{
    const std::string sOld = this->m_folder.Write("old.cld", "old");
    ASSERT_EQ(chmod(sOld.c_str(), 0666), 0);
    const mode_t nMask = umask(027);
    const enumFileCause eNew = SaveCloud(*this->m_cld, this->m_folder.GetPath("new.cld"));
    const enumFileCause eOld = SaveCloud(*this->m_cld, sOld);
    const mode_t nLeft = umask(nMask);
    EXPECT_EQ(nLeft, 027U); // of the whole process, and not the library's to change
    EXPECT_EQ(eNew, FileCause_None);
    EXPECT_EQ(eOld, FileCause_None);
    EXPECT_EQ(FindRights(this->m_folder.GetPath("new.cld")), 0640U);
    EXPECT_EQ(FindRights(sOld), 0666U);
}

TYPED_TEST(SaveCloud_test, Link_IsFollowedAndStays)
{
    const std::string sPath = this->m_folder.Write("old.cld", "old");
    const std::string sLink = this->m_folder.GetPath("link.cld");
    fs::create_symlink("old.cld", sLink);
    EXPECT_EQ(SaveCloud(*this->m_cld, sLink), FileCause_None);
    EXPECT_TRUE(fs::is_symlink(sLink));
    this->ExpectSaved(sPath);
}

TYPED_TEST(SaveCloud_test, NameInTheCurrentFolder)
{
    const fs::path old = fs::current_path();
    fs::current_path(this->m_folder.GetPath(""));
    EXPECT_EQ(SaveCloud(*this->m_cld, "plain"), FileCause_None);
    fs::current_path(old);
    this->ExpectSaved(this->m_folder.GetPath("plain"));
}

TYPED_TEST(SaveCloud_test, NoPlaceForIt_SaysWhy)
{
    const CFolder& folder = this->m_folder;
    fs::create_directory(folder.GetPath("folder"));
    fs::create_symlink("missing", folder.GetPath("nowhere"));
    fs::create_symlink("circle", folder.GetPath("circle"));
    fs::create_symlink("/dev/full", folder.GetPath("device"));
    CPntCld& cld = *this->m_cld;
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("missing/x.cld")), FileCause_NotCreated);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(SaveCloud(cld, ""), FileCause_NotCreated);
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("x/")), FileCause_NotCreated);
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("folder/")), FileCause_Directory);
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("folder")), FileCause_Directory);
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("nowhere")), FileCause_LinkNowhere);
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("circle")), FileCause_LinkNowhere);
    EXPECT_EQ(errno, ELOOP);
    EXPECT_EQ(SaveCloud(cld, folder.GetPath("device")), FileCause_NotRegular);
    EXPECT_EQ(folder.CountFiles(), 4);
}

TYPED_TEST(SaveCloud_test, NothingToSave_LeavesTheOldFile)
{
    const std::string sPath = this->m_folder.Write("old.cld", "old");
    CPntCld none(nullptr);
    EXPECT_EQ(SaveCloud(none, sPath), FileCause_NothingToSave);
    CRecipeCld<TypeParam> unbuilt({2, 10, 3, true}, false);
    EXPECT_EQ(SaveCloud(*unbuilt, sPath), FileCause_NothingToSave);
    EXPECT_EQ(ReadBytes(sPath), "old");
    EXPECT_EQ(this->m_folder.CountFiles(), 1);
}

TYPED_TEST(SaveCloud_test, Deleted_AreNotSaved)
{
    const std::string sPath = this->m_folder.GetPath("new.cld");
    this->m_cld->SelPnt(5, false);
    this->m_cld->DelSelPnts();
    EXPECT_EQ(SaveCloud(*this->m_cld, sPath), FileCause_None);
    this->ExpectSaved(sPath);
    for (int i = 0; i < this->m_cld->GetNumPnts(); ++i)
        this->m_cld->SelPnt(i, false);
    this->m_cld->DelSelPnts();
    EXPECT_EQ(SaveCloud(*this->m_cld, sPath), FileCause_None);
    this->ExpectSaved(sPath);
}

TYPED_TEST(SaveCloud_test, WhateverFails_TheCloudStays)
{
    CPntCld& cld = *this->m_cld;
    const auto nNumPnts = cld.GetNumPnts();
    cld.SelPnt(5, false);
    cld.DelSelPnts();
    const CCldState before(cld);
    EXPECT_EQ(SaveCloud(cld, this->m_folder.GetPath("missing/x.cld")), FileCause_NotCreated);
    EXPECT_EQ(SaveCloud(cld, this->m_folder.GetPath("")), FileCause_Directory);
    EXPECT_EQ(SaveCloud(cld, "/dev/null"), FileCause_NotRegular);
    EXPECT_TRUE(CCldState(cld) == before);
    {
        const CSizeLimit limit(1);
        EXPECT_EQ(SaveCloud(cld, this->m_folder.GetPath("x.cld")), FileCause_NotWritten);
    }
    EXPECT_TRUE(CCldState(cld) == before);
    EXPECT_EQ(cld.GetNumPnts(), nNumPnts - 1);
}

// At every kind of place: within the first block, between blocks, at the last byte.
TYPED_TEST(SaveCloud_test, FileTooLarge_LeavesTheOldFile)
{
    const std::string sWhole = this->m_folder.GetPath("whole.cld");
    ASSERT_EQ(SaveCloud(*this->m_cld, sWhole), FileCause_None);
    const auto nSize = static_cast<rlim_t>(fs::file_size(sWhole));
    const std::string sPath = this->m_folder.Write("old.cld", "old");
    for (const rlim_t nMax : {rlim_t{0}, rlim_t{1}, rlim_t{1} << 18, (rlim_t{1} << 18) + 1, nSize - 1})
    {
        SCOPED_TRACE(nMax);
        enumFileCause eCause = FileCause_None;
        int nError = 0;
        {
            const CSizeLimit limit(nMax);
            eCause = SaveCloud(*this->m_cld, sPath);
            nError = errno;
        }
        EXPECT_EQ(eCause, FileCause_NotWritten);
        EXPECT_EQ(nError, EFBIG);
        EXPECT_EQ(ReadBytes(sPath), "old");
        EXPECT_EQ(this->m_folder.CountFiles(), 2);
    }
    const CSizeLimit limit(nSize);
    EXPECT_EQ(SaveCloud(*this->m_cld, sPath), FileCause_None);
}

TYPED_TEST(SaveCloud_test, FullDisk_LeavesTheOldFile)
{
    const std::string sDisk = this->m_folder.GetPath("disk");
    fs::create_directory(sDisk);
    if (mount("tmpfs", sDisk.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no small disk may be mounted here";
    std::ofstream(sDisk + "/old.cld") << "old";
    EXPECT_EQ(SaveCloud(*this->m_cld, sDisk + "/old.cld"), FileCause_NotWritten);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(ReadBytes(sDisk + "/old.cld"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(sDisk), {}), 1);
    umount(sDisk.c_str());
}

TYPED_TEST(SaveCloud_test, PlaceTakenMeanwhile_IsNotRenamed)
{
    const std::string sPath = this->m_folder.GetPath("new.cld");
    std::vector<std::string> vecTold;
    const TOnTempFile onTempFile = [&](const zor::String& sTemp)
    {
        if (vecTold.empty())
            fs::create_directory(sPath);
        vecTold.push_back(sTemp.c_str());
    };
    EXPECT_EQ(SaveCloud(*this->m_cld, sPath, onTempFile), FileCause_NotRenamed);
    EXPECT_EQ(errno, EISDIR);
    ASSERT_EQ(vecTold.size(), 2U);
    EXPECT_EQ(vecTold[0].substr(0, vecTold[0].size() - 12), sPath + ".zorcld-");
    EXPECT_EQ(vecTold[1], "");
    EXPECT_EQ(this->m_folder.CountFiles(), 1);
}

TYPED_TEST(SaveCloud_test, Stopped_LeavesTheOldFile)
{
    const std::string sPath = this->m_folder.Write("old.cld", "old");
    const CCldState before(*this->m_cld);
    EXPECT_THROW(SaveCloud(*this->m_cld, sPath, [](const zor::String&) { throw std::runtime_error("stop"); }),
                 std::runtime_error);
    EXPECT_EQ(ReadBytes(sPath), "old");
    EXPECT_EQ(this->m_folder.CountFiles(), 1);
    EXPECT_TRUE(CCldState(*this->m_cld) == before);
}

TYPED_TEST(SaveCloud_test, WithoutMemory_LeavesTheOldFile)
{
    const auto attempt = [&](CAllocPlan& plan)
    {
        const std::string sPath = this->m_folder.Write("old.cld", "old");
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        enumFileCause eCause = FileCause_None;
        const bool bThrough = plan.Run([&] { eCause = SaveCloud(*this->m_cld, sPath.c_str()); });
        EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive);
        EXPECT_EQ(ReadBytes(sPath) == "old", !bThrough || eCause != FileCause_None);
        EXPECT_EQ(this->m_folder.CountFiles(), 1);
    };
    EXPECT_GT(FailEveryAlloc(attempt), 0);
}

} // namespace
