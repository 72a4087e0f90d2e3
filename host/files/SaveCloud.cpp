#include <host/files/SaveCloud.h>

#include <formats/NativeFacts.h>
#include <host/files/OpenByteReader.h>
#include <host/output/CFailure.h>
#include <host/output/CTempFile.h>
#include <zor4data/CPntCld.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

/// @return errno of an attempt to write more to the file; 0: it succeeds.
int FindWriteError(const std::string& sPath)
{
    const int nFile = open(sPath.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (nFile < 0)
        return errno;
    const std::vector<char> vecBytes(1 << 20);
    errno = 0;
    const bool bWritten =
        write(nFile, vecBytes.data(), vecBytes.size()) == static_cast<ssize_t>(vecBytes.size()) &&
        fsync(nFile) == 0;
    const int nError = bWritten ? 0 : errno == 0 ? ENOSPC : errno;
    close(nFile);
    return nError;
}

[[noreturn]] void Fail(const std::string& sPath, int nError)
{
    throw CFailure(sPath, std::string("could not be written: ") +
                              (nError != 0 ? std::strerror(nError) : "not every byte arrived"));
}

} // namespace

void SaveCloud(CPntCld& cloud, const std::string& sPath)
{
    std::error_code error;
    const fs::file_status status = fs::status(sPath, error);
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status))
        throw CFailure(sPath, "is not a regular file: what is written there cannot be checked");
    CTempFile temp(sPath);
    errno = 0;
    if (!cloud.WriteToFile(zor::String(temp.GetPath()), 1))
        Fail(sPath, errno);
    // The library does not notice a full disk.
    CByteReader reader = OpenByteReader(temp.GetPath());
    const CNativeFacts facts = FindNativeFacts(reader);
    if (!facts.IsWhole() || facts.header.nNumPnts != cloud.GetNumPnts())
        Fail(sPath, FindWriteError(temp.GetPath()));
    if (!temp.Place())
        Fail(sPath, errno);
}

} // namespace zorcld
