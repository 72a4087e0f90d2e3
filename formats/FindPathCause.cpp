#include <formats/FindPathCause.h>

#include <filesystem>
#include <system_error>

CFileCause FindPathCause(const char* pPath)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(pPath, error);
    if (status.type() == fs::file_type::not_found)
        return {FileCause_NotFound, "not found"};
    if (error)
        return {FileCause_NotOpened, error.message()};
    if (fs::is_directory(status))
        return {FileCause_Directory, "is a directory"};
    if (!fs::is_regular_file(status))
        return {FileCause_NotRegular, "is not a regular file"};
    return {};
}
