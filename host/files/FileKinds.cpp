#include <host/files/FileKinds.h>
#include <host/output/CFailure.h>
#include <host/output/GetExtension.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

/// The first bytes of a file that must be there, regular and readable.
std::string ReadFirstBytes(const std::string& sPath)
{
    std::error_code error;
    const fs::file_status status = fs::status(sPath, error);
    if (status.type() == fs::file_type::not_found)
        throw CFailure(sPath, "not found");
    if (error)
        throw CFailure(sPath, error.message());
    if (fs::is_directory(status))
        throw CFailure(sPath, "is a directory");
    if (!fs::is_regular_file(status)) // a pipe could be read once only
        throw CFailure(sPath, "is not a regular file");

    std::FILE* pFile = std::fopen(sPath.c_str(), "rb");
    if (pFile == nullptr)
        throw CFailure(sPath, std::string("cannot be opened: ") + std::strerror(errno));
    std::array<char, 16> bytes{};
    const std::size_t nBytes = std::fread(bytes.data(), 1, bytes.size(), pFile);
    std::fclose(pFile);
    if (nBytes == 0)
        throw CFailure(sPath, "is empty");
    return {bytes.data(), nBytes};
}

} // namespace

const std::vector<const CFileKind*>& GetFileKinds()
{
    static const std::vector<const CFileKind*> c_kinds = {&c_kindNative, &c_kindPly, &c_kindLas, &c_kindGrid};
    return c_kinds;
}

const CFileKind& FindFileKind(const std::string& sPath, const std::string& sType)
{
    const std::string sFirstBytes = ReadFirstBytes(sPath);
    std::string sExtension = GetExtension(sPath);
    sExtension.erase(0, 1); // the dot
    for (const CFileKind* pKind : GetFileKinds())
        if (!sType.empty() ? sType == pKind->pName : pKind->pIsContent(sFirstBytes))
            return *pKind;
    for (const CFileKind* pKind : GetFileKinds())
        if (std::count(pKind->vecExtensions.begin(), pKind->vecExtensions.end(), sExtension) != 0)
            return *pKind;
    throw CFailure(sPath,
                   "its first bytes and its extension belong to no known type of file (--type tells it)");
}

} // namespace zorcld
