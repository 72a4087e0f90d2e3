#ifndef HOST_OUTPUT_GETFILENAME_H
#define HOST_OUTPUT_GETFILENAME_H

#include <filesystem>
#include <string>

namespace zorcld
{

/// The last part of a path: how a file is called on progress bars and in pictures.
inline std::string GetFileName(const std::string& sPath)
{
    return std::filesystem::path(sPath).filename().string();
}

} // namespace zorcld

#endif
