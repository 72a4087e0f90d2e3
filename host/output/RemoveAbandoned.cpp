#include <host/output/RemoveAbandoned.h>

#include <formats/CPlacedFile.h>

#include <algorithm>
#include <cctype>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zorcld
{

namespace
{

constexpr std::time_t c_nDay = 24 * 60 * 60;

bool HasTempName(std::string_view sName)
{
    constexpr std::string_view c_sTempSuffix = CPlacedFile::c_sSuffix;
    const std::size_t nFixed = c_sTempSuffix.find('X');
    if (sName.size() <= c_sTempSuffix.size())
        return false;
    const std::string_view sEnd = sName.substr(sName.size() - c_sTempSuffix.size());
    return sEnd.substr(0, nFixed) == c_sTempSuffix.substr(0, nFixed) &&
           std::all_of(sEnd.begin() + static_cast<std::ptrdiff_t>(nFixed), sEnd.end(),
                       [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; });
}

bool IsOurs(const struct stat& status)
{
    return S_ISREG(status.st_mode) && status.st_uid == geteuid();
}

bool IsOld(const struct stat& status)
{
    return std::time(nullptr) - status.st_mtime > c_nDay;
}

/// Another run may take long over a file that it has written to before: it then holds it.
bool IsHeld(int nFolder, const char* pName)
{
    const int nFile = openat(nFolder, pName, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (nFile < 0)
        return true;
    const bool bHeld = flock(nFile, LOCK_EX | LOCK_NB) != 0;
    close(nFile);
    return bHeld;
}

/// @param isWanted  gets the name and what is known of a file that has a temporary one.
void RemoveChosen(const std::string& sFolder,
                  const std::function<bool(std::string_view, const struct stat&)>& isWanted)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir(sFolder.empty() ? "." : sFolder.c_str()),
                                                      closedir);
    if (pFolder == nullptr)
        return;
    const int nFolder = dirfd(pFolder.get());
    while (const dirent* const pEntry = readdir(pFolder.get()))
    {
        struct stat status = {};
        if (HasTempName(pEntry->d_name) &&
            fstatat(nFolder, pEntry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && IsOurs(status) &&
            isWanted(pEntry->d_name, status) && !IsHeld(nFolder, pEntry->d_name))
            unlinkat(nFolder, pEntry->d_name, 0);
    }
}

} // namespace

void RemoveAbandoned(const std::string& sFolder)
{
    RemoveChosen(sFolder, [](std::string_view, const struct stat& status) { return IsOld(status); });
}

void RemoveAbandonedOf(const std::string& sFolder, const std::function<bool(std::string_view)>& isTarget)
{
    RemoveChosen(sFolder, [&](std::string_view sName, const struct stat&)
                 { return isTarget(sName.substr(0, sName.size() - CPlacedFile::c_sSuffix.size())); });
}

void RemoveAbandonedBeside(const std::string& sTarget)
{
    std::string sPath;
    if (CPlacedFile::FollowLink(sTarget, sPath) == 0)
        RemoveAbandoned(std::filesystem::path(sPath).parent_path().string());
}

} // namespace zorcld
