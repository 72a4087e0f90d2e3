#include <formats/OpenRegularFile.h>

#include <formats/FindPathCause.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace
{

std::string TextOf(int nError)
{
    return std::generic_category().message(nError);
}

} // namespace

CFilePtr OpenRegularFile(const char* pPath, CFileCause& cause)
{
    cause = FindPathCause(pPath);
    if (cause.IsRefusal())
        return nullptr;
    CFilePtr pFile(std::fopen(pPath, "rb"));
    if (pFile == nullptr)
        cause = {FileCause_NotOpened, "cannot be opened: " + TextOf(errno)};
    else if (fseeko(pFile.get(), 0, SEEK_END) == 0 && ftello(pFile.get()) == 0)
        cause = {FileCause_Empty, "is empty"};
    else if (fseeko(pFile.get(), 0, SEEK_SET) != 0)
        cause = {FileCause_NotOpened, "cannot be read: " + TextOf(errno)};
    return cause.IsRefusal() ? nullptr : std::move(pFile);
}
